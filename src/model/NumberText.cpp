#include "model/NumberText.h"

#include "model/Failure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace corvanta {

namespace {

constexpr int SignificantDigits = 15;

/// The decimal digits of a magnitude, 15 of them, and the place of the point: 0.d1d2d3... x
/// 10^Point.
struct DecimalText {
    std::array<char, SignificantDigits + 1> Digits{};
    int Count = SignificantDigits;
    int Point = 0;
};

DecimalText ToDecimalText(double magnitude) {
    std::array<char, 32> buffer{};
    const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                          std::chars_format::scientific, SignificantDigits - 1)
                                .ptr;
    DecimalText text;
    const char* exponent = std::find<const char*>(buffer.data(), end, 'e') + 1;
    int slot = 0;
    for (const char* digit = buffer.data(); digit != exponent - 1; ++digit) {
        if (*digit != '.') {
            text.Digits[static_cast<std::size_t>(slot++)] = *digit;
        }
    }
    int power = 0;
    std::from_chars(*exponent == '+' ? exponent + 1 : exponent, end, power);
    text.Point = power + 1;
    return text;
}

/// Digit `place` behind the head of the text (0 the first); '0' outside the digits held.
char DigitAt(const DecimalText& text, int place) {
    return place >= 0 && place < text.Count ? text.Digits[static_cast<std::size_t>(place)] : '0';
}

/// Cuts the text to `keep` digits, halves away from zero. `keep` may be 0 or negative.
void RoundToDigits(DecimalText& text, int keep) {
    if (keep >= text.Count) {
        return;
    }
    const bool up = keep >= 0 && DigitAt(text, keep) >= '5';
    text.Count = std::max(keep, 0);
    if (!up) {
        return;
    }
    int place = text.Count - 1;
    while (place >= 0 && text.Digits[static_cast<std::size_t>(place)] == '9') {
        text.Digits[static_cast<std::size_t>(place)] = '0';
        --place;
    }
    if (place >= 0) {
        ++text.Digits[static_cast<std::size_t>(place)];
        return;
    }
    std::copy_backward(text.Digits.begin(), text.Digits.begin() + text.Count,
                       text.Digits.begin() + text.Count + 1);
    text.Digits.front() = '1';
    ++text.Count;
    ++text.Point;
}

struct NumberFormat {
    int Decimals = 0;
    int LeastWholeDigits = 0;
    bool Grouped = false;
};

NumberFormat ReadFormat(std::string_view format) {
    const std::size_t point = std::min(format.find('.'), format.size());
    const std::string_view whole = format.substr(0, point);
    NumberFormat result;
    result.LeastWholeDigits = static_cast<int>(std::count(whole.begin(), whole.end(), '0'));
    result.Grouped = whole.find(',') != std::string_view::npos;
    result.Decimals = static_cast<int>(
        std::count(format.begin() + static_cast<std::ptrdiff_t>(point), format.end(), '0'));
    return result;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view WithoutPlus(std::string_view text) {
    if (text.size() > 1 && text.front() == '+' && text[1] != '-' && text[1] != '+') {
        text.remove_prefix(1);
    }
    return text;
}

/// True when a number can begin here: std::from_chars would also take "inf" and "nan".
bool BeginsLikeNumber(std::string_view text) {
    if (!text.empty() && text.front() == '-') {
        text.remove_prefix(1);
    }
    return !text.empty() && (text.front() == '.' || (text.front() >= '0' && text.front() <= '9'));
}

/// No text stands for an infinity or for what is not a number.
void RequireFinite(double value) {
    if (!std::isfinite(value)) {
        throw Failure(fnOverflow, "Overflow");
    }
}

} // namespace

std::string NumberToText(double value, const Separators& separators) {
    RequireFinite(value);
    std::array<char, 40> buffer{};
    // A zero has no sign in text.
    const double number = value == 0 ? 0.0 : value;
    const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                          std::chars_format::general, SignificantDigits)
                                .ptr;
    std::string text;
    for (const char* c = buffer.data(); c != end; ++c) {
        if (*c == '.') {
            text += separators.Decimal;
        } else {
            text += *c == 'e' ? 'E' : *c;
        }
    }
    return text;
}

std::optional<double> WholeNumberText(std::string_view text, std::string_view decimalSeparator) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    std::string pointed;
    if (decimalSeparator != ".") {
        if (text.find('.') != std::string_view::npos) {
            return std::nullopt;
        }
        pointed = ReplaceAll(text, decimalSeparator, ".");
        text = pointed;
    }
    text = WithoutPlus(text);
    if (!BeginsLikeNumber(text)) {
        return std::nullopt;
    }
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc{} || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

double LeadingNumber(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    text = WithoutPlus(text);
    if (!BeginsLikeNumber(text)) {
        return 0;
    }
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        throw Failure(fnOverflow, "Overflow");
    }
    return result.ec == std::errc{} ? value : 0;
}

std::int32_t ToInteger32(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max())) {
        throw Failure(fnOverflow, "Overflow");
    }
    return static_cast<std::int32_t>(rounded);
}

std::string FormatNumber(double value, std::string_view format, const Separators& separators) {
    RequireFinite(value);
    const NumberFormat rule = ReadFormat(format);
    DecimalText text;
    if (value == 0) {
        text.Count = 0;
    } else {
        text = ToDecimalText(std::abs(value));
        RoundToDigits(text, text.Point + rule.Decimals);
    }
    std::string result;
    if (value < 0) {
        result += '-';
    }
    const int wholeDigits = std::max(text.Count == 0 ? 0 : text.Point, rule.LeastWholeDigits);
    for (int left = wholeDigits; left > 0; --left) {
        result += DigitAt(text, text.Count == 0 ? -1 : text.Point - left);
        if (rule.Grouped && left > 1 && left % 3 == 1) {
            result += separators.Thousands;
        }
    }
    if (rule.Decimals > 0) {
        result += separators.Decimal;
        for (int place = 0; place < rule.Decimals; ++place) {
            result += DigitAt(text, text.Point + place);
        }
    }
    return result;
}

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string ReplaceAll(std::string_view text, std::string_view old, std::string_view replacement) {
    std::string result;
    std::size_t from = 0;
    while (!old.empty()) {
        const std::size_t found = text.find(old, from);
        if (found == std::string_view::npos) {
            break;
        }
        result.append(text.substr(from, found - from));
        result.append(replacement);
        from = found + old.size();
    }
    result.append(text.substr(from));
    return result;
}

std::string UpperCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return result;
}

} // namespace corvanta
