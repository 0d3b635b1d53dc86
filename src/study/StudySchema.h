#pragma once

#include "model/Views.h"
#include "study/StudyFile.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
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

inline constexpr std::string_view SweepKey = "sweep";
inline constexpr std::string_view ToleranceKey = "tolerance"; ///< also of a figure that is wanted
inline constexpr std::string_view OptimiseKey = "optimise";
inline constexpr std::string_view FitKey = "fit";
inline constexpr std::string_view RegionKey = "region";
inline constexpr std::string_view SetupKey = "setup";
inline constexpr std::array QuestionKeys{SweepKey, ToleranceKey, OptimiseKey,
                                         FitKey,   RegionKey,    SetupKey};

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

inline constexpr std::string_view AxesKey = "axes";
inline constexpr std::string_view VariableKey = "variable";
inline constexpr std::string_view ValuesKey = "values";
inline constexpr std::string_view SamplesKey = "samples";
inline constexpr std::string_view SeedKey = "seed";
inline constexpr std::string_view TolerancesKey = "tolerances";
inline constexpr std::string_view HalfWidthKey = "halfWidth";
inline constexpr std::string_view SpreadKey = "spread";
inline constexpr std::string_view StartsKey = "starts";
inline constexpr std::string_view FreeKey = "free";
inline constexpr std::string_view LowKey = "low";
inline constexpr std::string_view HighKey = "high";
inline constexpr std::string_view ReadingsKey = "readings";
inline constexpr std::string_view WheelTravelKey = "wheelTravel";
inline constexpr std::string_view RackTravelKey = "rackTravel";
inline constexpr std::string_view ValueKey = "value";
inline constexpr std::string_view UncertaintyKey = "uncertainty";
inline constexpr std::string_view PointKey = "point";
inline constexpr std::string_view BoxKey = "box";
inline constexpr std::string_view NodesKey = "nodes";
inline constexpr std::string_view WholeGridKey = "wholeGrid";
inline constexpr std::string_view RideHeightKey = "rideHeight";
inline constexpr std::string_view AdjustersKey = "adjusters";
inline constexpr std::string_view LinkKey = "link";
inline constexpr std::string_view PlaceKey = "place";
inline constexpr std::string_view PitchKey = "pitch";
inline constexpr std::string_view PartKey = "part";
inline constexpr std::string_view FiguresKey = "figures";
inline constexpr std::string_view FigureKey = "figure";
inline constexpr std::string_view TravelKey = "travel";
inline constexpr std::string_view ChangeKey = "change";

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

inline constexpr std::array<Word<Spread>, 2> SpreadWords{
    {{"normal", Spread::Normal}, {"uniform", Spread::Uniform}}};

inline constexpr std::array<Word<AdjusterKind>, 3> AdjusterWords{{
    {"link length", AdjusterKind::LinkLength},
    {"shim", AdjusterKind::Shim},
    {"spring platform", AdjusterKind::SpringPlatform},
}};

inline constexpr std::array<Word<CornerLink>, CornerLinkCount> LinkWords{{
    {"lower front leg", CornerLink::LowerFront},
    {"lower rear leg", CornerLink::LowerRear},
    {"upper front leg", CornerLink::UpperFront},
    {"upper rear leg", CornerLink::UpperRear},
    {"trackrod", CornerLink::TrackRod},
    {"spring rod", CornerLink::SpringRod},
    {"link between the rockers", CornerLink::Interconnect},
    {"ARB drop link", CornerLink::BarDropLink},
    {"T-bar drop link", CornerLink::TBarDropLink},
}};

/// The ride height has no kind.
inline constexpr std::array<Word<std::optional<FigureKind>>, 6> FigureWords{{
    {"ride height", std::nullopt},
    {"at static", FigureKind::AtStatic},
    {"gain at static", FigureKind::GainAtStatic},
    {"change over travel", FigureKind::ChangeOverTravel},
    {"range over travel", FigureKind::RangeOverTravel},
    {"at travel", FigureKind::AtTravel},
}};

// --- Limits -------------------------------------------------------------------------------------

inline constexpr std::size_t MostAxes = 2;
inline constexpr std::string_view AxesWords = "a sweep has two axes at most";

/// Places in words, as in `variants[2].points`.
[[nodiscard]] inline std::string Member(const std::string& owner, std::string_view name) {
    return (owner.empty() ? "" : owner + ".") + std::string(name);
}
[[nodiscard]] inline std::string Element(std::string_view list, std::size_t index) {
    return std::string(list) + "[" + std::to_string(index) + "]";
}

[[nodiscard]] inline std::string RangeWords(std::int64_t lowest, std::int64_t highest) {
    return "must be " + std::to_string(lowest) + " to " + std::to_string(highest);
}

[[nodiscard]] constexpr bool IsAxisLength(std::size_t values) {
    return values >= 1 && values <= MostSweptDesigns;
}

[[nodiscard]] inline std::string AxisLengthWords() {
    return "must hold 1 to " + std::to_string(MostSweptDesigns) + " numbers";
}

} // namespace corvanta::studyfile
