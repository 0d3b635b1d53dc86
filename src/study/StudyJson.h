#pragma once

#include "study/StudySchema.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// What the parts of the writer of study files share. A place is where a value will stand, as in
/// `variants[2].points`; all refuse a value that the reader would.
namespace corvanta::studyfile {

using Json = nlohmann::ordered_json;

/// Throws Failure with the place and the words.
[[noreturn]] void RefuseToWrite(const std::string& place, const std::string& why);

[[nodiscard]] std::string Key(std::string_view key);

[[nodiscard]] Json Number(double value, const std::string& place);

/// Only texts that a reader takes; a JSON text is UTF-8.
[[nodiscard]] Json Text(const std::string& text, const std::string& place);

template <typename Whole>
[[nodiscard]] Json WholeNumber(Whole value, std::int64_t lowest, std::int64_t highest,
                               const std::string& place) {
    if (std::cmp_less(value, lowest) || std::cmp_greater(value, highest)) {
        RefuseToWrite(place, RangeWords(lowest, highest));
    }
    return value;
}

template <typename Value, std::size_t Count>
[[nodiscard]] std::string WordFor(const std::array<Word<Value>, Count>& words, Value meaning) {
    return Key(std::ranges::find(words, meaning, &Word<Value>::Meaning)->Text);
}

/// Adds a channel that makes a curve to the value at a place: its number, and its title for the
/// reader.
void AddChannel(Json& owner, int channel, const std::string& place);

} // namespace corvanta::studyfile
