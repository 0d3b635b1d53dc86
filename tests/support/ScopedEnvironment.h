#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace corvanta::test {

/// An environment variable with another value, or with none, for the life of the object.
class ScopedEnvironment {
  public:
    ScopedEnvironment(std::string name, const std::optional<std::string>& value)
        : m_name(std::move(name)) {
        if (const char* const former = std::getenv(m_name.c_str())) {
            m_former = former;
        }
        Set(value);
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ScopedEnvironment(ScopedEnvironment&&) = delete;
    ScopedEnvironment& operator=(ScopedEnvironment&&) = delete;
    ~ScopedEnvironment() { Set(m_former); }

  private:
    void Set(const std::optional<std::string>& value) {
        if (value) {
            setenv(m_name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(m_name.c_str());
        }
    }

    std::string m_name;
    std::optional<std::string> m_former;
};

} // namespace corvanta::test
