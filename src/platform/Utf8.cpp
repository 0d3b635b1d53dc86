#include "platform/Utf8.h"

#include <array>

namespace corvanta {

namespace {

constexpr char32_t LastCode = 0x10FFFF;

bool IsLeadSurrogate(char32_t code) {
    return code >= 0xD800 && code <= 0xDBFF;
}

bool IsTailSurrogate(char32_t code) {
    return code >= 0xDC00 && code <= 0xDFFF;
}

bool IsCharacter(char32_t code) {
    return code <= LastCode && !IsLeadSurrogate(code) && !IsTailSurrogate(code);
}

/// The form of a character of several bytes: the mark of its first byte and its least code.
struct Form {
    unsigned Mark;
    unsigned MarkBits;
    std::size_t Length;
    char32_t LeastCode;
};

constexpr std::array<Form, 3> Forms{{
    {0xC0, 0xE0, 2, 0x80},
    {0xE0, 0xF0, 3, 0x800},
    {0xF0, 0xF8, 4, 0x10000},
}};

constexpr unsigned TailBits = 0x3F;

char Byte(char32_t value) {
    return static_cast<char>(static_cast<unsigned char>(value));
}

} // namespace

Utf8Character FirstUtf8Character(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    const unsigned head = static_cast<unsigned char>(text.front());
    if (head < 0x80) {
        return {head, 1};
    }
    for (const Form& form : Forms) {
        if ((head & form.MarkBits) != form.Mark || text.size() < form.Length) {
            continue;
        }
        char32_t code = head & ~form.MarkBits & 0xFFU;
        for (std::size_t place = 1; place < form.Length; ++place) {
            const unsigned tail = static_cast<unsigned char>(text[place]);
            if ((tail & ~TailBits) != 0x80) {
                return {};
            }
            code = (code << 6U) | (tail & TailBits);
        }
        return code >= form.LeastCode && IsCharacter(code) ? Utf8Character{code, form.Length}
                                                           : Utf8Character{};
    }
    return {};
}

void AppendUtf8(std::string& text, char32_t code) {
    if (code < 0x80) {
        text += Byte(code);
        return;
    }
    if (!IsCharacter(code)) {
        return;
    }
    std::size_t form = Forms.size() - 1;
    while (code < Forms.at(form).LeastCode) {
        --form;
    }
    const std::size_t tails = Forms.at(form).Length - 1;
    text += Byte(Forms.at(form).Mark | (code >> (6U * tails)));
    for (std::size_t left = tails; left > 0; --left) {
        text += Byte(0x80U | ((code >> (6U * (left - 1))) & TailBits));
    }
}

std::string Utf8FromWide(std::wstring_view wide) {
    std::string text;
    for (std::size_t place = 0; place < wide.size(); ++place) {
        auto code = static_cast<char32_t>(wide[place]);
        if (IsLeadSurrogate(code) && place + 1 < wide.size()) {
            const auto tail = static_cast<char32_t>(wide[place + 1]);
            if (IsTailSurrogate(tail)) {
                code = 0x10000 + ((code - 0xD800) << 10U) + (tail - 0xDC00);
                ++place;
            }
        }
        AppendUtf8(text, code);
    }
    return text;
}

} // namespace corvanta
