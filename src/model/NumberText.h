#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// The characters that the machine writes in numbers, UTF-8. Read once at start and passed on; no
/// text is ever parsed or written by the process's own locale.
struct Separators {
    std::string Decimal = ".";
    std::string Thousands = ",";
};

/// A double as plain text: up to 15 significant digits, "E" notation where the number needs it
/// (1E+20, 1.5E-05), in the machine's decimal separator. Throws Failure "Overflow" for a value that
/// is no number.
[[nodiscard]] std::string NumberToText(double value, const Separators& separators);

/// A number that is the whole of a text, blanks and line ends around it apart. Nothing for any
/// other text, and for a number beyond the range of a double.
[[nodiscard]] std::optional<double> WholeNumberText(std::string_view text,
                                                    std::string_view decimalSeparator);

/// The number that stands at the head of a text, always with "." as the decimal point; 0 for a text
/// that does not begin with one. Throws Failure "Overflow" beyond the range of a double.
[[nodiscard]] double LeadingNumber(std::string_view text);

/// A number rounded to a 32-bit integer, halves to even. Throws Failure "Overflow" out of range.
[[nodiscard]] std::int32_t ToInteger32(double value);

/// Writes a value in the number format language: "0" a digit that is always written, "#" a digit
/// written only if significant, "." the decimal separator, "," between "#"s thousands grouping. The
/// number of "0" behind the "." is the number of decimals. Rounding is that of the value's decimal
/// text with 15 significant digits, halves away from zero, so 100.005 shows as 100.01; a negative
/// value keeps its minus sign when it rounds to zero. Throws Failure "Overflow" for a value that is
/// no number.
[[nodiscard]] std::string FormatNumber(double value, std::string_view format,
                                       const Separators& separators);

/// The text without the blanks at its ends.
[[nodiscard]] std::string_view TrimBlanks(std::string_view text);

/// Every occurrence of `old` replaced, left to right, what was inserted not looked at again. An
/// empty `old` leaves the text unchanged.
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view old,
                                     std::string_view replacement);

/// ASCII letters in upper case, every other byte unchanged.
[[nodiscard]] std::string UpperCase(std::string_view text);

} // namespace corvanta
