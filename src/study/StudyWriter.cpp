#include "model/Failure.h"
#include "study/DesignFields.h"
#include "study/StudyFile.h"
#include "study/StudyJson.h"
#include "study/StudyQuestionsJson.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta {

namespace {

using namespace studyfile;

// --- Designs ------------------------------------------------------------------------------------

/// The value of a setting.
struct SettingJson {
    const SuspensionData& Data;
    std::string Place;

    Json operator()(const MechanismPlace& place) const {
        const std::int32_t number = Data.*place.Member;
        if (number < 0 || number > place.Highest) {
            RefuseToWrite(Place, "there is no mechanism " + std::to_string(number));
        }
        return {{Key(NumberKey), number}, {Key(WordsKey), place.Words(number)}};
    }
    Json operator()(const NumberPlace& place) const { return Number(Data.*place.Member, Place); }
    Json operator()(const FlagPlace& place) const { return Data.*place.Member; }
    Json operator()(const TextPlace& place) const { return Text(Data.*place.Member, Place); }
};

/// A coordinate of minus zero is away from the origin: it would not read back as it was.
bool AtOrigin(const SuspPoint& point) {
    return std::ranges::all_of(PointAxes(), [&](const PointAxis& axis) {
        return point.*axis.Member == 0 && !std::signbit(point.*axis.Member);
    });
}

Json PointsJson(const Design& design, const std::string& place) {
    const PointCatalogue catalogue = CatalogueOf(design.Data);
    Json points = Json::object();
    for (const PointNumber number : AllPoints) {
        const SuspPoint& point = design.Points[number];
        if (!catalogue[number].Enabled && AtOrigin(point)) {
            continue;
        }
        Json coordinates = Json::array();
        for (const PointAxis& axis : PointAxes()) {
            coordinates.push_back(
                Number(point.*axis.Member, Member(place, PointShortName(number))));
        }
        points[Key(PointShortName(number))] = std::move(coordinates);
    }
    return points;
}

void AddDesign(Json& owner, const Design& design, const std::string& place) {
    Json data = Json::object();
    for (const DesignField& field : DesignFields()) {
        data[Key(field.Key)] = std::visit(
            SettingJson{design.Data, Member(Member(place, DataKey), field.Key)}, field.Place);
    }
    owner[Key(DataKey)] = std::move(data);
    owner[Key(PointsKey)] = PointsJson(design, Member(place, PointsKey));
}

// --- Lists --------------------------------------------------------------------------------------

std::string ColourText(const Colour& colour) {
    std::string text = "#";
    for (const std::uint8_t part : {colour.Red, colour.Green, colour.Blue}) {
        constexpr std::string_view digits = "0123456789ABCDEF";
        text += digits[part / 16U];
        text += digits[part % 16U];
    }
    return text;
}

Json VariantsJson(const std::vector<Variant>& variants) {
    Json list = Json::array();
    for (std::size_t i = 0; i < variants.size(); ++i) {
        const Variant& variant = variants[i];
        const std::string place = Element(VariantsKey, i);
        const std::string fault = FaultOfVariantName(std::span(variants).first(i), variant.Name);
        if (!fault.empty()) {
            RefuseToWrite(Member(place, NameKey), fault);
        }
        Json json = Json::object();
        json[Key(NameKey)] = Text(variant.Name, Member(place, NameKey));
        json[Key(NoteKey)] = Text(variant.Note, Member(place, NoteKey));
        json[Key(ColourKey)] = ColourText(variant.Drawn);
        json[Key(TickedKey)] = variant.Ticked;
        AddDesign(json, variant.Design, place);
        list.push_back(std::move(json));
    }
    return list;
}

Json TargetsJson(const std::vector<Target>& targets) {
    Json list = Json::array();
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const Target& target = targets[i];
        const std::string fault = FaultOfTarget(target);
        if (!fault.empty()) {
            RefuseToWrite(Element(TargetsKey, i), fault);
        }
        Json band = Json::array();
        for (const BandCorner& corner : target.Band) {
            band.push_back({corner.Travel, corner.Low, corner.High});
        }
        Json json = Json::object();
        AddChannel(json, target.Channel, Element(TargetsKey, i));
        json[Key(AlongKey)] = WordFor(VariableWords, target.Variable);
        json[Key(BandKey)] = std::move(band);
        json[Key(WeightKey)] = target.Weight;
        list.push_back(std::move(json));
    }
    return list;
}

Json ChartsJson(const std::vector<StudyChart>& charts) {
    Json list = Json::array();
    for (std::size_t i = 0; i < charts.size(); ++i) {
        const StudyChart& chart = charts[i];
        Json json = Json::object();
        AddChannel(json, chart.Channel, Element(ChartsKey, i));
        json[Key(KindKey)] = WordFor(KindWords, chart.Kind);
        json[Key(DifferenceKey)] = chart.Difference;
        list.push_back(std::move(json));
    }
    return list;
}

// --- The text -----------------------------------------------------------------------------------

bool IsSimple(const Json& json) {
    return !json.is_structured() || json.empty();
}

/// A list of plain values, a point say, and a pair of them read best on one line.
bool FitsInOneLine(const Json& json) {
    return std::ranges::all_of(json, IsSimple) && (json.is_array() || json.size() <= 2);
}

/// Writes a value, a member or element on each line unless it fits in one.
void Print(std::string& text, const Json& json, const std::string& indent) {
    if (IsSimple(json)) {
        text += json.dump();
        return;
    }
    const bool inOneLine = FitsInOneLine(json);
    const std::string inner = indent + "  ";
    text += json.is_array() ? "[" : "{";
    bool first = true;
    for (const auto& item : json.items()) {
        text += first ? "" : ",";
        text += inOneLine ? (first ? "" : " ") : "\n" + inner;
        text += json.is_array() ? "" : Json(item.key()).dump() + ": ";
        Print(text, item.value(), inner);
        first = false;
    }
    text += inOneLine ? "" : "\n" + indent;
    text += json.is_array() ? "]" : "}";
}

} // namespace

std::string WriteStudy(const StudyData& study) {
    Json json = Json::object();
    json[Key(SchemaKey)] = SchemaName;
    json[Key(VersionKey)] = StudyVersion;
    json[Key(DocumentKey)] = Text(study.Document, Key(DocumentKey));
    if (study.Baseline) {
        Json baseline = Json::object();
        AddDesign(baseline, *study.Baseline, Key(BaselineKey));
        json[Key(BaselineKey)] = std::move(baseline);
    }
    json[Key(VariantsKey)] = VariantsJson(study.Variants);
    json[Key(TargetsKey)] = TargetsJson(study.Targets);
    json[Key(ChartsKey)] = ChartsJson(study.Charts);
    AddQuestions(json, study.Questions);
    for (const UnknownMember& member : study.Unknown) {
        Json value = Json::parse(member.Json, nullptr, false);
        if (value.is_discarded() || json.contains(member.Name)) {
            RefuseToWrite(member.Name, "it is no member of a study file");
        }
        json[member.Name] = std::move(value);
    }
    std::string text;
    Print(text, json, "");
    return text + "\n";
}

} // namespace corvanta
