#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvanta {

/// One character of a UTF-8 text.
struct Utf8Character {
    char32_t Code = 0;
    std::size_t Length = 0; ///< bytes that it takes; 0 when no character begins here
};

/// The character that begins at the head of a text. Overlong forms, surrogates and codes beyond
/// U+10FFFF are no characters.
[[nodiscard]] Utf8Character FirstUtf8Character(std::string_view text);

/// Appends a character to a UTF-8 text. A code that is no character is left out.
void AppendUtf8(std::string& text, char32_t code);

/// A wide text of the machine, UTF-16 or UTF-32 by the width of its characters, as UTF-8.
[[nodiscard]] std::string Utf8FromWide(std::wstring_view wide);

} // namespace corvanta
