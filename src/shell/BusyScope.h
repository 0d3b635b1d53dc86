#pragma once

namespace corvanta {

/// Holds a flag set for the length of a scope.
class BusyScope {
  public:
    explicit BusyScope(bool& flag) : m_flag(flag) { m_flag = true; }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;
    BusyScope(BusyScope&&) = delete;
    BusyScope& operator=(BusyScope&&) = delete;
    ~BusyScope() { m_flag = false; }

  private:
    bool& m_flag;
};

} // namespace corvanta
