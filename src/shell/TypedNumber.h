#pragma once

#include "model/NumberText.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// A number as it was typed.
struct TypedNumber {
    std::string Text;  ///< the number alone with "." as its decimal point
    bool Plain = true; ///< false when it was worked out, or had its unit behind it
};

/// Reads what a user typed where a number is due: a number, or a sum with + - * / and parentheses,
/// with or without `unit` behind it. The machine's decimal separator and "." count as the decimal
/// point, and a comma too where the machine has a point, but there not one with exactly three
/// digits behind it, which may part thousands. An empty text is 0. Nothing for any other text, nor
/// for a sum that divides by 0, nor beyond 1E+30.
[[nodiscard]] std::optional<TypedNumber>
ReadTypedNumber(std::string_view text, const Separators& separators, std::string_view unit);

/// What stands in a box or cell once typing has ended: the result of a sum as a plain number in the
/// machine's characters, any other text as it is.
[[nodiscard]] std::string CommittedText(std::string_view text, const Separators& separators,
                                        std::string_view unit);

/// Throws Failure "Type mismatch" that names the place, shows the head of the text there and says
/// why it is no number.
[[noreturn]] void RaiseNoNumber(std::string_view place, std::string_view text,
                                const Separators& separators);

} // namespace corvanta
