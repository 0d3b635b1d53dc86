#pragma once

#include <string>
#include <vector>

namespace corvanta {

/// Readies a process without windows before its `main` does anything else, and is kept until its
/// end. Windows hands arguments over in its code page, where file names lose letters, and changes
/// line ends in what is written; this puts the arguments in UTF-8, with the program's file in
/// front, and lets bytes pass as they are. Elsewhere all is so already.
class CNativeStart {
  public:
    CNativeStart(int& argc, char**& argv);
    CNativeStart(const CNativeStart&) = delete;
    CNativeStart& operator=(const CNativeStart&) = delete;
    CNativeStart(CNativeStart&&) = delete;
    CNativeStart& operator=(CNativeStart&&) = delete;
    ~CNativeStart() = default;

  private:
    std::vector<std::string> m_texts; ///< what `argv` points to on Windows
    std::vector<char*> m_pointers;
};

} // namespace corvanta
