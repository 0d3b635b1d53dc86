#include "platform/CodePage.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <array>

namespace corvanta {

namespace {

constexpr std::size_t FirstOwnByte = 0x80;

/// The characters of the bytes 0x80 to 0x9F; every other byte is the character of its own number.
constexpr std::array<char32_t, 32> OwnCharacters{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteOf(char32_t code) {
    const bool own = code >= FirstOwnByte && code < FirstOwnByte + OwnCharacters.size();
    if (code <= 0xFF && !own) {
        return static_cast<char>(static_cast<unsigned char>(code));
    }
    const auto* const found = std::find(OwnCharacters.begin(), OwnCharacters.end(), code);
    if (found == OwnCharacters.end()) {
        return '?';
    }
    return static_cast<char>(static_cast<unsigned char>(
        FirstOwnByte + static_cast<std::size_t>(found - OwnCharacters.begin())));
}

/// The characters that both encodings write alike; nearly every text of the system is of them.
bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

std::string FromCodePage1252(std::string_view bytes) {
    if (IsAscii(bytes)) {
        return std::string(bytes);
    }
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const std::size_t byte = static_cast<unsigned char>(c);
        const bool own = byte >= FirstOwnByte && byte < FirstOwnByte + OwnCharacters.size();
        AppendUtf8(text, own ? OwnCharacters.at(byte - FirstOwnByte) : static_cast<char32_t>(byte));
    }
    return text;
}

std::string ToCodePage1252(std::string_view text) {
    if (IsAscii(text)) {
        return std::string(text);
    }
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character character = FirstUtf8Character(text);
        bytes += character.Length > 0 ? ByteOf(character.Code) : '?';
        text.remove_prefix(std::max<std::size_t>(character.Length, 1));
    }
    return bytes;
}

bool FitsCodePage1252(std::string_view text) {
    return IsAscii(text) || FromCodePage1252(ToCodePage1252(text)) == text;
}

} // namespace corvanta
