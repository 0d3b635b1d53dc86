#include "study/StudyFile.h"

#include "platform/PathText.h"

#include <array>
#include <filesystem>

namespace corvanta {

namespace {

std::string WithSlashes(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

} // namespace

std::string StudyPathOfDocument(const std::string& studyPath, const std::string& documentPath) {
    const std::filesystem::path document = PathOf(documentPath);
    const std::filesystem::path relative =
        document.lexically_relative(PathOf(studyPath).parent_path());
    return WithSlashes(relative.empty() ? document : relative);
}

std::optional<std::string> FindDocument(const std::string& studyPath, const std::string& document,
                                        const FileServices& files) {
    const std::filesystem::path folder = PathOf(studyPath).parent_path();
    const std::filesystem::path said = PathOf(document);
    if (!said.has_filename()) {
        return std::nullopt;
    }
    for (const std::filesystem::path& place : std::array{folder / said, folder / said.filename()}) {
        const std::string path = PathText(place.lexically_normal().make_preferred());
        if (files.FileExists(path)) {
            return path;
        }
    }
    return std::nullopt;
}

} // namespace corvanta
