#include "shell/TypedNumber.h"

#include "model/Failure.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

namespace corvanta {

namespace {

/// No one types a longer number; what is longer came by mistake, from the clipboard.
constexpr std::size_t LongestNumber = 200;

/// No quantity of a car comes near; beyond it units and single precision could overflow.
constexpr double LargestNumber = 1e30;

/// How much of a text a message shows.
constexpr std::size_t LongestQuote = 40;

constexpr std::string_view Blanks = " \t\r\n";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// True for a comma that may be a decimal point as well as part thousands.
bool HasUnclearComma(std::string_view text, const Separators& separators) {
    if (separators.Decimal != ".") {
        return false;
    }
    for (std::size_t comma = text.find(','); comma != std::string_view::npos;
         comma = text.find(',', comma + 1)) {
        const std::string_view behind = text.substr(comma + 1);
        const auto digits =
            std::find_if_not(behind.begin(), behind.end(), IsDigit) - behind.begin();
        if (digits == 3) {
            return true;
        }
    }
    return false;
}

/// Works out a sum, "." the decimal point. Every rule gives nothing for a text that is none; an
/// infinity or what is not a number runs through to the end and is refused there.
class SumReader {
  public:
    explicit SumReader(std::string_view text) : m_rest(text) {}

    /// The value of the whole text.
    std::optional<double> Read() {
        const std::optional<double> value = Sum();
        SkipBlanks();
        if (!value || !m_rest.empty() || !std::isfinite(*value)) {
            return std::nullopt;
        }
        return value;
    }

  private:
    std::optional<double> Sum() {
        std::optional<double> value = Product();
        while (value) {
            const char sign = TakeOneOf("+-");
            if (sign == 0) {
                break;
            }
            const std::optional<double> next = Product();
            value =
                next ? std::optional(sign == '+' ? *value + *next : *value - *next) : std::nullopt;
        }
        return value;
    }

    std::optional<double> Product() {
        std::optional<double> value = Factor();
        while (value) {
            const char sign = TakeOneOf("*/");
            if (sign == 0) {
                break;
            }
            const std::optional<double> next = Factor();
            value =
                next ? std::optional(sign == '*' ? *value * *next : *value / *next) : std::nullopt;
        }
        return value;
    }

    /// A number or a sum in parentheses, with at most one sign.
    std::optional<double> Factor() {
        const bool negative = TakeOneOf("+-") == '-';
        std::optional<double> value;
        if (TakeOneOf("(") != 0) {
            value = Sum(); // as deep as the text is long, and that is bounded
            if (TakeOneOf(")") == 0) {
                return std::nullopt;
            }
        } else {
            value = Number();
        }
        return value && negative ? -*value : value;
    }

    std::optional<double> Number() {
        SkipBlanks();
        // std::from_chars would take a sign, "inf" and "nan" as well
        if (m_rest.empty() || (m_rest[0] != '.' && (m_rest[0] < '0' || m_rest[0] > '9'))) {
            return std::nullopt;
        }
        double value = 0;
        const auto result = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value);
        if (result.ec != std::errc{}) {
            return std::nullopt;
        }
        m_rest.remove_prefix(static_cast<std::size_t>(result.ptr - m_rest.data()));
        return value;
    }

    /// The next character if it is one of those, 0 if not.
    char TakeOneOf(std::string_view characters) {
        SkipBlanks();
        if (m_rest.empty() || characters.find(m_rest[0]) == std::string_view::npos) {
            return 0;
        }
        const char taken = m_rest[0];
        m_rest.remove_prefix(1);
        return taken;
    }

    void SkipBlanks() {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(Blanks), m_rest.size()));
    }

    std::string_view m_rest;
};

} // namespace

std::optional<TypedNumber> ReadTypedNumber(std::string_view text, const Separators& separators,
                                           std::string_view unit) {
    text = Trimmed(text);
    if (text.empty()) {
        return TypedNumber{"0"};
    }
    if (text.size() > LongestNumber) {
        return std::nullopt;
    }
    TypedNumber typed;
    if (!unit.empty() && text.ends_with(unit)) {
        text = Trimmed(text.substr(0, text.size() - unit.size()));
        typed.Plain = false;
    }
    if (HasUnclearComma(text, separators)) {
        return std::nullopt;
    }
    typed.Text = ReplaceAll(text, separators.Decimal, ".");
    if (separators.Decimal == ".") {
        typed.Text = ReplaceAll(typed.Text, ",", ".");
    }
    std::optional<double> value = WholeNumberText(typed.Text, ".");
    if (!value) {
        value = SumReader(typed.Text).Read();
        if (value) {
            typed = {NumberToText(*value, {}), false};
        }
    }
    return value && std::abs(*value) <= LargestNumber ? std::optional(typed) : std::nullopt;
}

std::string CommittedText(std::string_view text, const Separators& separators,
                          std::string_view unit) {
    const std::optional<TypedNumber> typed = ReadTypedNumber(text, separators, unit);
    return typed && !typed->Plain ? ReplaceAll(typed->Text, ".", separators.Decimal)
                                  : std::string(text);
}

void RaiseNoNumber(std::string_view place, std::string_view text, const Separators& separators) {
    std::string quote(text.substr(0, LongestQuote));
    if (quote.size() < text.size()) {
        while (!quote.empty() &&
               (static_cast<unsigned char>(text[quote.size()]) & 0xC0U) == 0x80U) {
            quote.pop_back(); // not in the middle of a character
        }
        quote += "...";
    }
    const char* const reason =
        HasUnclearComma(text, separators)
            ? "which is unclear: type a point before decimals and nothing between thousands."
            : "which is no number.";
    throw Failure(fnTypeMismatch,
                  "Type mismatch: " + std::string(place) + " is \"" + quote + "\", " + reason);
}

} // namespace corvanta
