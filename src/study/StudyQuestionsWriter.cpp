#include "model/Points.h"
#include "study/DesignFields.h"
#include "study/SampleRandom.h"
#include "study/StudyQuestionsJson.h"

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace corvanta::studyfile {

namespace {

/// The list of what `write` makes of each value and its place.
template <typename Value, typename Writer>
Json ListJson(const std::vector<Value>& values, const std::string& place, Writer write) {
    Json list = Json::array();
    for (std::size_t n = 0; n < values.size(); ++n) {
        list.push_back(write(values[n], Element(place, n)));
    }
    return list;
}

/// An object of members in their order.
Json Object(std::initializer_list<std::pair<std::string_view, Json>> members) {
    Json object = Json::object();
    for (const auto& [key, value] : members) {
        object[Key(key)] = value;
    }
    return object;
}

Json SweepJson(const SweepQuestion& question, const std::string& place) {
    const std::string axes = Member(place, AxesKey);
    if (question.Axes.size() > MostAxes) {
        RefuseToWrite(axes, Key(AxesWords));
    }
    const auto axisJson = [](const SweepAxis& axis, const std::string& where) {
        const std::string values = Member(where, ValuesKey);
        if (!IsAxisLength(axis.Values.size())) {
            RefuseToWrite(values, AxisLengthWords());
        }
        const auto* const link = std::get_if<CornerLink>(&axis.What);
        return Object(
            {link != nullptr
                 ? std::pair(LinkKey, Json(WordFor(LinkWords, *link)))
                 : std::pair(VariableKey, Json(KeyOf(std::get<DesignVariable>(axis.What)))),
             {ValuesKey, ListJson(axis.Values, values, Number)}});
    };
    return Object({{AxesKey, ListJson(question.Axes, axes, axisJson)}});
}

Json ToleranceJson(const Tolerance& tolerance, const std::string& place) {
    return Object({{VariableKey, KeyOf(tolerance.Variable)},
                   {HalfWidthKey, Number(tolerance.HalfWidth, Member(place, HalfWidthKey))},
                   {SpreadKey, WordFor(SpreadWords, tolerance.Distribution)}});
}

Json ToleranceQuestionJson(const ToleranceQuestion& question, const std::string& place) {
    return Object({{SamplesKey, WholeNumber(question.Samples, LeastToleranceSamples,
                                            MostToleranceSamples, Member(place, SamplesKey))},
                   {SeedKey, WholeNumber(question.Seed, 0, GreatestSeed, Member(place, SeedKey))},
                   {TolerancesKey,
                    ListJson(question.Tolerances, Member(place, TolerancesKey), ToleranceJson)}});
}

Json FreeJson(const FreeVariable& free, const std::string& place) {
    return Object({{VariableKey, KeyOf(free.Variable)},
                   {LowKey, Number(free.Low, Member(place, LowKey))},
                   {HighKey, Number(free.High, Member(place, HighKey))}});
}

Json OptimiseJson(const OptimiseQuestion& question, const std::string& place) {
    return Object(
        {{StartsKey, WholeNumber(question.Starts, 1, MostStarts, Member(place, StartsKey))},
         {SeedKey, WholeNumber(question.Seed, 0, GreatestSeed, Member(place, SeedKey))},
         {FreeKey, ListJson(question.Free, Member(place, FreeKey), FreeJson)}});
}

Json ReadingJson(const Reading& reading, const std::string& place) {
    Json json = Json::object();
    AddChannel(json, reading.Channel, place);
    json[Key(WheelTravelKey)] = Number(reading.WheelTravel, Member(place, WheelTravelKey));
    json[Key(RackTravelKey)] = Number(reading.RackTravel, Member(place, RackTravelKey));
    json[Key(ValueKey)] = Number(reading.Value, Member(place, ValueKey));
    json[Key(UncertaintyKey)] = Number(reading.Uncertainty, Member(place, UncertaintyKey));
    return json;
}

Json FitJson(const FitQuestion& question, const std::string& place) {
    return Object(
        {{FreeKey, ListJson(question.Free, Member(place, FreeKey), ToleranceJson)},
         {ReadingsKey, ListJson(question.Readings, Member(place, ReadingsKey), ReadingJson)}});
}

Json RegionJson(const RegionQuestion& question, const std::string& place) {
    Json box = Json::object();
    for (std::size_t axis = 0; axis < question.Box.size(); ++axis) {
        const RegionAxis& side = question.Box[axis];
        const std::string_view name = PointAxes()[axis].Name;
        const std::string where = Member(Member(place, BoxKey), name);
        box[Key(name)] = Object(
            {{LowKey, Number(side.Low, Member(where, LowKey))},
             {HighKey, Number(side.High, Member(where, HighKey))},
             {NodesKey, WholeNumber(side.Nodes, 1, MostNodesOfAxis, Member(where, NodesKey))}});
    }
    return Object({{PointKey, Key(PointShortName(question.Point))},
                   {BoxKey, std::move(box)},
                   {WholeGridKey, question.WholeGrid}});
}

// --- Setup --------------------------------------------------------------------------------------

Json AdjusterJson(const Adjuster& adjuster, const CountRange& range, const std::string& place) {
    Json json = Object({{NameKey, Text(adjuster.Name, Member(place, NameKey))},
                        {KindKey, WordFor(AdjusterWords, adjuster.Kind)}});
    if (adjuster.Kind == AdjusterKind::LinkLength) {
        json[Key(LinkKey)] = WordFor(LinkWords, adjuster.Link);
    } else if (adjuster.Kind == AdjusterKind::Shim) {
        json[Key(PlaceKey)] = KeyOf(adjuster.Place);
    }
    json[Key(PitchKey)] = Number(adjuster.Pitch, Member(place, PitchKey));
    json[Key(PartKey)] = Number(adjuster.Part, Member(place, PartKey));
    json[Key(LowKey)] = range.Low;
    json[Key(HighKey)] = range.High;
    return json;
}

Json FigureJson(const SheetFigure& figure, const FigureWish& wish, const std::string& place) {
    using Kind = std::optional<FigureKind>;
    const Kind kind = figure.RideHeight ? Kind() : figure.Of.Kind;
    Json json = Object({{FigureKey, WordFor(FigureWords, kind)}});
    if (kind) {
        AddChannel(json, figure.Of.Channel, place);
        json[Key(AlongKey)] = WordFor(VariableWords, figure.Of.Variable);
    }
    if (kind == FigureKind::AtTravel) {
        json[Key(TravelKey)] = Number(figure.Of.Travel, Member(place, TravelKey));
    }
    json[Key(FreeKey)] = wish.Free;
    json[Key(ChangeKey)] = Number(wish.Change, Member(place, ChangeKey));
    json[Key(ToleranceKey)] = Number(wish.Tolerance, Member(place, ToleranceKey));
    return json;
}

/// The list of what `write` makes of both that belong together.
template <typename One, typename Other, typename Writer>
Json PairsJson(const std::vector<One>& ones, const std::vector<Other>& others,
               const std::string& place, Writer write) {
    if (ones.size() != others.size()) {
        RefuseToWrite(place, "every adjuster needs a range and every figure a wish");
    }
    Json list = Json::array();
    for (std::size_t n = 0; n < ones.size(); ++n) {
        list.push_back(write(ones[n], others[n], Element(place, n)));
    }
    return list;
}

Json SetupJson(const TurnsQuestion& question, const std::string& place) {
    const SetupQuestion& sheet = question.Sheet;
    return Object({{RideHeightKey, Number(sheet.RideHeight, Member(place, RideHeightKey))},
                   {AdjustersKey, PairsJson(sheet.Adjusters, question.Ranges,
                                            Member(place, AdjustersKey), AdjusterJson)},
                   {FiguresKey, PairsJson(sheet.Figures, question.Wishes, Member(place, FiguresKey),
                                          FigureJson)}});
}

template <typename Question>
void Add(Json& root, std::string_view key, const Question& question,
         Json (*write)(const Question&, const std::string&)) {
    if (question != Question{}) {
        root[Key(key)] = write(question, Key(key));
    }
}

} // namespace

void AddQuestions(Json& root, const StudyQuestions& questions) {
    Add(root, SweepKey, questions.Sweep, SweepJson);
    Add(root, ToleranceKey, questions.Tolerance, ToleranceQuestionJson);
    Add(root, OptimiseKey, questions.Optimise, OptimiseJson);
    Add(root, FitKey, questions.Fit, FitJson);
    Add(root, RegionKey, questions.Region, RegionJson);
    Add(root, SetupKey, questions.Setup, SetupJson);
}

} // namespace corvanta::studyfile
