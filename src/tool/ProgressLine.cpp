#include "tool/ProgressLine.h"

#include <iostream>
#include <string>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace corvanta {

namespace {

constexpr int Width = 40;

bool IsTerminal() {
    constexpr int standardError = 2;
#ifdef _WIN32
    return _isatty(standardError) != 0;
#else
    return isatty(standardError) != 0;
#endif
}

} // namespace

CProgressLine::CProgressLine() : m_shows(IsTerminal()) {}

CProgressLine::~CProgressLine() {
    if (m_shown >= 0) {
        std::cerr << '\r' << std::string(Width + 8, ' ') << '\r' << std::flush;
    }
}

void CProgressLine::Show(double share) {
    const int percent = static_cast<int>(share * 100);
    if (m_shows && percent != m_shown) {
        m_shown = percent;
        const auto done = static_cast<std::size_t>(percent * Width / 100);
        std::cerr << "\r[" << std::string(done, '#') << std::string(Width - done, '.') << "] "
                  << percent << " %" << std::flush;
    }
}

} // namespace corvanta
