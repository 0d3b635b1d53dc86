#pragma once

namespace corvanta {

/// A line on standard error that tells how far a work is, where that is a terminal. It is taken
/// away in the end.
class CProgressLine {
  public:
    CProgressLine();
    CProgressLine(const CProgressLine&) = delete;
    CProgressLine& operator=(const CProgressLine&) = delete;
    CProgressLine(CProgressLine&&) = delete;
    CProgressLine& operator=(CProgressLine&&) = delete;
    ~CProgressLine();

    /// `share` from 0 to 1.
    void Show(double share);

  private:
    bool m_shows;
    int m_shown = -1; ///< per cent
};

} // namespace corvanta
