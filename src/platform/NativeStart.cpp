#include "platform/NativeStart.h"

#ifdef _WIN32

#include "platform/PathText.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace corvanta {

CNativeStart::CNativeStart(int& argc, char**& argv) {
    constexpr int Streams = 3; // input, output, errors
    for (int stream = 0; stream < Streams; ++stream) {
        _setmode(stream, _O_BINARY);
    }
    SetConsoleOutputCP(CP_UTF8);
    constexpr DWORD LongestPath = 32768;
    std::wstring program(LongestPath, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), LongestPath));
    m_texts.push_back(PathText(program));
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int n = 1; n < count; ++n) {
        m_texts.push_back(PathText(arguments[n]));
    }
    LocalFree(arguments);
    for (std::string& text : m_texts) {
        m_pointers.push_back(text.data());
    }
    argc = static_cast<int>(m_pointers.size());
    m_pointers.push_back(nullptr);
    argv = m_pointers.data();
}

} // namespace corvanta

#else

namespace corvanta {

CNativeStart::CNativeStart(int& /*argc*/, char**& /*argv*/) {}

} // namespace corvanta

#endif
