#include "model/Points.h"
#include "study/DesignFields.h"
#include "study/SampleRandom.h"
#include "study/StudyQuestionsJson.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvanta::studyfile {

namespace {

template <typename Reader>
auto ReadList(const Node& list, Reader read) {
    std::vector<decltype(read(list))> values;
    for (const Node& element : Node::Elements(list)) {
        values.push_back(read(element));
    }
    return values;
}

DesignVariable ReadVariable(const Node& node) {
    const std::optional<DesignVariable> variable = VariableOf(node.Text());
    node.Require(variable.has_value(), "there is no such coordinate or value");
    return *variable;
}

PointCoordinate ReadCoordinate(const Node& node) {
    const DesignVariable variable = ReadVariable(node);
    const auto* const coordinate = std::get_if<PointCoordinate>(&variable);
    node.Require(coordinate != nullptr, "must be a coordinate of a point");
    return *coordinate;
}

PointNumber ReadPoint(const Node& node) {
    const auto found = std::ranges::find(AllPoints, node.Text(), PointShortName);
    node.Require(found != AllPoints.end(), "there is no such point");
    return *found;
}

double ReadNumber(const Node& node) {
    return node.Number();
}

/// A link that becomes longer, or a variable.
SweepAxis ReadAxis(const Node& node) {
    const std::optional<Node> link = node.Find(LinkKey);
    node.RequireMembers({link ? LinkKey : VariableKey, ValuesKey});
    const Node values = node[ValuesKey];
    SweepAxis axis{{}, ReadList(values, ReadNumber)};
    axis.What = link ? SweptValue(link->Meaning(LinkWords)) : ReadVariable(node[VariableKey]);
    values.Require(IsAxisLength(axis.Values.size()), AxisLengthWords());
    return axis;
}

SweepQuestion ReadSweep(const Node& node) {
    node.RequireMembers({AxesKey});
    SweepQuestion question;
    const Node axes = node[AxesKey];
    question.Axes = ReadList(axes, ReadAxis);
    axes.Require(question.Axes.size() <= MostAxes, std::string(AxesWords));
    return question;
}

Tolerance ReadTolerance(const Node& node) {
    node.RequireMembers({VariableKey, HalfWidthKey, SpreadKey});
    return {ReadVariable(node[VariableKey]), node[HalfWidthKey].Number(),
            node[SpreadKey].Meaning(SpreadWords)};
}

ToleranceQuestion ReadToleranceQuestion(const Node& node) {
    node.RequireMembers({SamplesKey, SeedKey, TolerancesKey});
    ToleranceQuestion question;
    question.Samples =
        node[SamplesKey].WholeNumber<std::size_t>(LeastToleranceSamples, MostToleranceSamples);
    question.Seed = node[SeedKey].WholeNumber<std::uint64_t>(0, GreatestSeed);
    question.Tolerances = ReadList(node[TolerancesKey], ReadTolerance);
    return question;
}

FreeVariable ReadFree(const Node& node) {
    node.RequireMembers({VariableKey, LowKey, HighKey});
    return {ReadVariable(node[VariableKey]), node[LowKey].Number(), node[HighKey].Number()};
}

OptimiseQuestion ReadOptimise(const Node& node) {
    node.RequireMembers({StartsKey, SeedKey, FreeKey});
    OptimiseQuestion question;
    question.Starts = node[StartsKey].WholeNumber(1, MostStarts);
    question.Seed = node[SeedKey].WholeNumber<std::uint64_t>(0, GreatestSeed);
    question.Free = ReadList(node[FreeKey], ReadFree);
    return question;
}

Reading ReadReading(const Node& node) {
    node.RequireMembers(
        {ChannelKey, TitleKey, WheelTravelKey, RackTravelKey, ValueKey, UncertaintyKey});
    return {node[WheelTravelKey].Number(), node[RackTravelKey].Number(),
            ReadChannel(node[ChannelKey]), node[ValueKey].Number(), node[UncertaintyKey].Number()};
}

FitQuestion ReadFit(const Node& node) {
    node.RequireMembers({FreeKey, ReadingsKey});
    return {ReadList(node[FreeKey], ReadTolerance), ReadList(node[ReadingsKey], ReadReading)};
}

RegionQuestion ReadRegion(const Node& node) {
    node.RequireMembers({PointKey, BoxKey, WholeGridKey});
    RegionQuestion question;
    question.Point = ReadPoint(node[PointKey]);
    const Node box = node[BoxKey];
    box.RequireMembers({PointAxes()[0].Name, PointAxes()[1].Name, PointAxes()[2].Name});
    for (std::size_t axis = 0; axis < question.Box.size(); ++axis) {
        const Node side = box[PointAxes()[axis].Name];
        side.RequireMembers({LowKey, HighKey, NodesKey});
        question.Box[axis] = {side[LowKey].Number(), side[HighKey].Number(),
                              side[NodesKey].WholeNumber(1, MostNodesOfAxis)};
    }
    question.WholeGrid = node[WholeGridKey].Flag();
    return question;
}

// --- Setup --------------------------------------------------------------------------------------

/// Further members say what an adjuster turns.
Adjuster ReadAdjuster(const Node& node) {
    std::vector<std::string_view> known{NameKey, KindKey, PitchKey, PartKey, LowKey, HighKey};
    Adjuster adjuster;
    adjuster.Kind = node[KindKey].Meaning(AdjusterWords);
    if (adjuster.Kind == AdjusterKind::LinkLength) {
        known.push_back(LinkKey);
        adjuster.Link = node[LinkKey].Meaning(LinkWords);
    } else if (adjuster.Kind == AdjusterKind::Shim) {
        known.push_back(PlaceKey);
        adjuster.Place = ReadCoordinate(node[PlaceKey]);
    }
    node.RequireMembers(known);
    adjuster.Name = node[NameKey].Text();
    adjuster.Pitch = node[PitchKey].Number();
    adjuster.Part = node[PartKey].Number();
    return adjuster;
}

CountRange ReadRange(const Node& node) {
    const auto count = [](const Node& end) { return end.WholeNumber(-MostCount, MostCount); };
    return {count(node[LowKey]), count(node[HighKey])};
}

/// The ride height is of no channel; a figure at a travel tells which.
SheetFigure ReadFigure(const Node& node) {
    std::vector<std::string_view> known{FigureKey, FreeKey, ChangeKey, ToleranceKey};
    const std::optional<FigureKind> kind = node[FigureKey].Meaning(FigureWords);
    SheetFigure figure{!kind.has_value(), {}};
    if (kind) {
        known.insert(known.end(), {ChannelKey, TitleKey, AlongKey});
        figure.Of = {ReadChannel(node[ChannelKey]), *kind, node[AlongKey].Meaning(VariableWords)};
    }
    if (kind == FigureKind::AtTravel) {
        known.push_back(TravelKey);
        figure.Of.Travel = node[TravelKey].Number();
    }
    node.RequireMembers(known);
    return figure;
}

FigureWish ReadWish(const Node& node) {
    return {node[FreeKey].Flag(), node[ChangeKey].Number(), node[ToleranceKey].Number()};
}

TurnsQuestion ReadSetup(const Node& node) {
    node.RequireMembers({RideHeightKey, AdjustersKey, FiguresKey});
    const Node adjusters = node[AdjustersKey];
    const Node figures = node[FiguresKey];
    return {{ReadList(adjusters, ReadAdjuster), ReadList(figures, ReadFigure),
             node[RideHeightKey].Number()},
            ReadList(figures, ReadWish),
            ReadList(adjusters, ReadRange)};
}

template <typename Question>
void Read(Question& question, const std::optional<Node>& node, Question (*read)(const Node&)) {
    if (node) {
        question = read(*node);
    }
}

} // namespace

StudyQuestions ReadQuestions(const Node& root) {
    StudyQuestions questions;
    Read(questions.Sweep, root.Find(SweepKey), ReadSweep);
    Read(questions.Tolerance, root.Find(ToleranceKey), ReadToleranceQuestion);
    Read(questions.Optimise, root.Find(OptimiseKey), ReadOptimise);
    Read(questions.Fit, root.Find(FitKey), ReadFit);
    Read(questions.Region, root.Find(RegionKey), ReadRegion);
    Read(questions.Setup, root.Find(SetupKey), ReadSetup);
    return questions;
}

} // namespace corvanta::studyfile
