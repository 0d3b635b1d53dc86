#include "model/Failure.h"
#include "study/DesignFields.h"
#include "study/StudyFile.h"
#include "study/StudyNode.h"
#include "study/StudyQuestionsJson.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <set>
#include <utility>

namespace corvanta {

namespace {

using namespace studyfile;

// --- The text -----------------------------------------------------------------------------------

/// Follows the parser through the text. It refuses what the parser lets pass: a name that stands
/// twice in an object, and nesting so deep that no study needs it.
class TextWatch {
  public:
    void operator()(Json::parse_event_t event, const Json& parsed) {
        using Event = Json::parse_event_t;
        switch (event) {
        case Event::object_start:
        case Event::array_start:
            m_levels.push_back({event == Event::array_start, 0, {}, {}});
            if (m_levels.size() > DeepestLevel) {
                RefuseToRead(Place(), "nested too deeply");
            }
            break;
        case Event::key:
            m_levels.back().Name = parsed.get<std::string>();
            if (!m_levels.back().Names.insert(m_levels.back().Name).second) {
                RefuseToRead(Place(), "stands here twice");
            }
            break;
        case Event::object_end:
        case Event::array_end:
            m_levels.pop_back();
            [[fallthrough]];
        case Event::value:
            if (!m_levels.empty()) {
                ++m_levels.back().Index;
            }
            break;
        }
    }

    /// Where the parser stands.
    [[nodiscard]] std::string Place() const {
        std::string place;
        for (const Level& level : m_levels) {
            place =
                level.IsList ? Element(place, level.Index) : Member(place, ShortName(level.Name));
        }
        return place;
    }

  private:
    /// A study has six levels; members that this version does not know may have more.
    static constexpr std::size_t DeepestLevel = 64;

    struct Level {
        bool IsList = false;
        std::size_t Index = 0;
        std::string Name;
        std::set<std::string> Names;
    };
    std::vector<Level> m_levels;
};

/// `byte` counts from 1.
[[noreturn]] void RefuseSyntax(std::string_view bytes, std::size_t byte) {
    if (byte > bytes.size()) {
        RefuseToRead("", "the text ends too early");
    }
    const std::string_view before = bytes.substr(0, byte == 0 ? 0 : byte - 1);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t lineEnd = before.rfind('\n');
    const std::size_t column =
        before.size() - (lineEnd == std::string_view::npos ? 0 : lineEnd + 1);
    RefuseToRead("line " + std::to_string(line) + ", column " + std::to_string(column + 1),
                 "this is no JSON");
}

Json Parsed(std::string_view bytes) {
    TextWatch watch;
    try {
        return Json::parse(bytes, [&](int, Json::parse_event_t event, const Json& parsed) {
            watch(event, parsed);
            return true;
        });
    } catch (const Json::parse_error& error) {
        RefuseSyntax(bytes, error.byte);
    } catch (const Json::out_of_range&) {
        RefuseToRead(watch.Place(), "the number is too large");
    }
}

// --- Designs ------------------------------------------------------------------------------------

/// Reads a setting into the data of a design.
struct SettingReader {
    SuspensionData& Data;
    const Node& Setting;

    void operator()(const MechanismPlace& place) const {
        Setting.RequireMembers({NumberKey, WordsKey});
        Data.*place.Member = Setting[NumberKey].WholeNumber(0, place.Highest);
    }
    void operator()(const NumberPlace& place) const { Data.*place.Member = Setting.Number(); }
    void operator()(const FlagPlace& place) const { Data.*place.Member = Setting.Flag(); }
    void operator()(const TextPlace& place) const { Data.*place.Member = Setting.Text(); }
};

SuspensionData ReadData(const Node& node) {
    std::vector<std::string_view> keys;
    for (const DesignField& field : DesignFields()) {
        keys.push_back(field.Key);
    }
    node.RequireMembers(keys);
    SuspensionData data;
    for (const DesignField& field : DesignFields()) {
        const Node setting = node[field.Key];
        std::visit(SettingReader{data, setting}, field.Place);
    }
    return data;
}

PointSet ReadPoints(const Node& node, const SuspensionData& data) {
    std::array<std::string_view, PointCount> names;
    std::ranges::transform(AllPoints, names.begin(), PointShortName);
    node.RequireMembers(names);
    const PointCatalogue catalogue = CatalogueOf(data);
    PointSet points;
    for (const PointNumber number : AllPoints) {
        const std::string_view name = PointShortName(number);
        if (catalogue[number].Enabled || node.Find(name)) {
            const std::array<double, 3> place = node[name].Triple();
            points[number] = {place[0], place[1], place[2]};
        }
    }
    return points;
}

Design ReadDesign(const Node& node) {
    Design design;
    design.Data = ReadData(node[DataKey]);
    design.Points = ReadPoints(node[PointsKey], design.Data);
    return design;
}

// --- Lists --------------------------------------------------------------------------------------

Colour ReadColour(const Node& node) {
    const std::string text = node.Text();
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const bool isColour = text.size() == 7 && text.front() == '#' &&
                          std::from_chars(text.data() + 1, end, value, 16).ptr == end;
    node.Require(isColour, "must be a colour as in \"#0072CE\"");
    const auto part = [&](unsigned shift) {
        return static_cast<std::uint8_t>((value >> shift) & 0xFFU);
    };
    return {part(16), part(8), part(0)};
}

Variant ReadVariant(const Node& node, std::span<const Variant> before) {
    node.RequireMembers({NameKey, NoteKey, ColourKey, TickedKey, DataKey, PointsKey});
    const Node name = node[NameKey];
    const std::string fault = FaultOfVariantName(before, name.Text());
    name.Require(fault.empty(), fault);
    return {name.Text(), node[NoteKey].Text(), ReadColour(node[ColourKey]), node[TickedKey].Flag(),
            ReadDesign(node)};
}

Target ReadTarget(const Node& node) {
    node.RequireMembers({ChannelKey, TitleKey, AlongKey, BandKey, WeightKey});
    Target target{ReadChannel(node[ChannelKey]), node[AlongKey].Meaning(VariableWords), {}, 1};
    target.Weight = node[WeightKey].Number();
    for (const Node& corner : Node::Elements(node[BandKey])) {
        const std::array<double, 3> values = corner.Triple();
        target.Band.push_back({values[0], values[1], values[2]});
    }
    const std::string fault = FaultOfTarget(target);
    node.Require(fault.empty(), fault);
    return target;
}

StudyChart ReadChart(const Node& node) {
    node.RequireMembers({ChannelKey, TitleKey, KindKey, DifferenceKey});
    return {ReadChannel(node[ChannelKey]), node[KindKey].Meaning(KindWords),
            node[DifferenceKey].Flag()};
}

void RequireVersion(const Node& root) {
    root.RequireObject();
    const std::optional<Node> schema = root.Find(SchemaKey);
    root.Require(schema && schema->Value() == std::string(SchemaName), "this is no study file");
    const Node version = root[VersionKey];
    version.Require(version.Value().is_number_integer(), "must be a whole number");
    root.Require(version.Number() <= StudyVersion,
                 "a newer version of the program wrote it (schema " + version.Value().dump() +
                     ", this one reads up to " + std::to_string(StudyVersion) + ")");
    (void)version.WholeNumber(1, StudyVersion);
}

std::vector<UnknownMember> UnknownMembers(const Json& root) {
    constexpr std::array known{SchemaKey,   VersionKey, DocumentKey, BaselineKey,
                               VariantsKey, TargetsKey, ChartsKey};
    const auto isKnown = [&](const std::string& name) {
        return std::ranges::find(known, name) != known.end() ||
               std::ranges::find(QuestionKeys, name) != QuestionKeys.end();
    };
    std::vector<UnknownMember> members;
    for (const auto& member : root.items()) {
        if (!isKnown(member.key())) {
            members.push_back({member.key(), member.value().dump()});
        }
    }
    return members;
}

StudyData StudyOf(const Json& json) {
    const Node root(json, "");
    RequireVersion(root);
    StudyData study;
    study.Document = root[DocumentKey].Text();
    if (const std::optional<Node> baseline = root.Find(BaselineKey)) {
        baseline->RequireMembers({DataKey, PointsKey});
        study.Baseline = ReadDesign(*baseline);
    }
    for (const Node& variant : Node::Elements(root.Find(VariantsKey))) {
        study.Variants.push_back(ReadVariant(variant, study.Variants));
    }
    for (const Node& target : Node::Elements(root.Find(TargetsKey))) {
        study.Targets.push_back(ReadTarget(target));
    }
    for (const Node& chart : Node::Elements(root.Find(ChartsKey))) {
        study.Charts.push_back(ReadChart(chart));
    }
    study.Questions = ReadQuestions(root);
    study.Unknown = UnknownMembers(json);
    return study;
}

} // namespace

StudyData ReadStudy(std::string_view bytes, const std::string& fileName) {
    try {
        return StudyOf(Parsed(bytes));
    } catch (const Failure& failure) {
        throw Failure(failure.Number(), "The study file " + fileName +
                                            " can't be read: " + failure.Description() + ".");
    }
}

} // namespace corvanta
