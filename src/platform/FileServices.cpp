#include "platform/FileServices.h"

#include "platform/CodePage.h"

#include <algorithm>

namespace corvanta {

namespace {

#ifdef _WIN32
constexpr std::string_view FolderMarks = "\\/:";
#else
constexpr std::string_view FolderMarks = "/";
#endif

/// Where the file name begins in a path.
std::size_t NameStart(std::string_view path) {
    const std::size_t mark = path.find_last_of(FolderMarks);
    return mark == std::string_view::npos ? 0 : mark + 1;
}

} // namespace

#ifdef _WIN32
const char FileServices::Separator = '\\';
#else
const char FileServices::Separator = '/';
#endif

std::string FileServices::ReadText(const std::string& path) {
    return FromCodePage1252(ReadBytes(path));
}

void FileServices::WriteText(const std::string& path, std::string_view text) {
    WriteBytes(path, ToCodePage1252(text));
}

void FileServices::WriteTextSoon(const std::string& path, std::string_view text) {
    WriteBytesSoon(path, ToCodePage1252(text));
}

void FileServices::AppendText(const std::string& path, std::string_view text) {
    AppendBytes(path, ToCodePage1252(text));
}

std::string FileServices::ParentFolder(const std::string& path) {
    return path.substr(0, NameStart(path));
}

std::string FileServices::FileName(const std::string& path) {
    return path.substr(NameStart(path));
}

std::string FileServices::BaseName(const std::string& path) {
    std::string name = FileName(path);
    if (name == "." || name == "..") {
        return {};
    }
    return name.substr(0, name.rfind('.'));
}

std::string NativePath(std::string_view path) {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', FileServices::Separator);
    return native;
}

} // namespace corvanta
