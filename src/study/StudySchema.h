#pragma once

#include "model/Views.h"
#include "study/StudyFile.h"

#include <array>
#include <cstdint>
#include <string_view>

/// The names and words of study files, for their reader and their writer.
namespace corvanta::studyfile {

inline constexpr std::string_view SchemaKey = "schema";
inline constexpr std::string_view SchemaName = "corvanta-study";
inline constexpr std::string_view VersionKey = "version";
inline constexpr std::string_view DocumentKey = "document";
inline constexpr std::string_view BaselineKey = "baseline";
inline constexpr std::string_view VariantsKey = "variants";
inline constexpr std::string_view TargetsKey = "targets";
inline constexpr std::string_view ChartsKey = "charts";

inline constexpr std::string_view NameKey = "name";
inline constexpr std::string_view NoteKey = "note";
inline constexpr std::string_view ColourKey = "colour";
inline constexpr std::string_view TickedKey = "ticked";
inline constexpr std::string_view DataKey = "data";
inline constexpr std::string_view PointsKey = "points";
inline constexpr std::string_view NumberKey = "number";
inline constexpr std::string_view WordsKey = "words";

inline constexpr std::string_view ChannelKey = "channel";
inline constexpr std::string_view TitleKey = "title";
inline constexpr std::string_view AlongKey = "along";
inline constexpr std::string_view BandKey = "band";
inline constexpr std::string_view WeightKey = "weight";
inline constexpr std::string_view KindKey = "kind";
inline constexpr std::string_view DifferenceKey = "difference";

/// A value and its word.
template <typename Value>
struct Word {
    std::string_view Text;
    Value Meaning;
};

inline constexpr std::array<Word<std::int32_t>, 2> VariableWords{
    {{"wheel travel", vvAlongWheelTravel}, {"rack travel", vvAlongRackTravel}}};

inline constexpr std::array<Word<ChartKind>, 3> KindWords{{
    {"wheel travel", ChartKind::AlongWheelTravel},
    {"rack travel", ChartKind::AlongRackTravel},
    {"map", ChartKind::Map},
}};

} // namespace corvanta::studyfile
