#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace corvanta {

/// A path from its UTF-8 text, on every platform.
[[nodiscard]] inline std::filesystem::path PathOf(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

/// The UTF-8 text of a path.
[[nodiscard]] inline std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace corvanta
