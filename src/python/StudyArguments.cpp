#include "python/StudyArguments.h"

#include "automation/Variants.h"
#include "model/Failure.h"
#include "model/NumberText.h"
#include "study/StudySchema.h"

#include <algorithm>

namespace corvanta {

namespace {

std::int32_t TravelIn(bool alongRack) {
    return alongRack ? vvAlongRackTravel : vvAlongWheelTravel;
}

/// What `convert` makes of each.
template <typename Argument, typename Convert>
auto ListIn(const std::vector<Argument>& arguments, Convert convert) {
    std::vector<decltype(convert(arguments.front()))> list;
    std::ranges::transform(arguments, std::back_inserter(list), convert);
    return list;
}

template <typename Words>
auto MeaningIn(const std::string& text, const Words& words, std::string_view what) {
    std::string offered;
    for (const auto& word : words) {
        if (word.Text == text) {
            return word.Meaning;
        }
        offered += (offered.empty() ? "" : ", ") + std::string(word.Text);
    }
    throw Failure(fnInvalidCall,
                  "\"" + text + "\" is no " + std::string(what) + ", which is one of " + offered);
}

template <typename Words, typename Meaning>
std::string WordOf(Meaning meaning, const Words& words) {
    return std::string(
        std::ranges::find(words, meaning, [](const auto& word) { return word.Meaning; })->Text);
}

} // namespace

DesignVariable VariableIn(const std::string& name) {
    const std::optional<DesignVariable> variable = VariableOf(name);
    if (!variable) {
        throw Failure(fnInvalidCall, "There is no coordinate or value \"" + name + "\"");
    }
    return *variable;
}

Target TargetIn(const TargetArgument& target, const StoredUnits& stored) {
    const auto& [channel, alongRack, band, weight] = target;
    return {ChannelOfText(channel, stored.Channels), TravelIn(alongRack),
            ListIn(band,
                   [](const std::array<double, 3>& corner) {
                       return BandCorner{corner[0], corner[1], corner[2]};
                   }),
            weight};
}

std::vector<Target> TargetsIn(const std::vector<TargetArgument>& targets,
                              const StoredUnits& stored) {
    return ListIn(targets, [&](const TargetArgument& target) { return TargetIn(target, stored); });
}

StudyNumber NumberIn(const NumberArgument& number, const StoredUnits& stored) {
    if (const auto* const target = std::get_if<TargetArgument>(&number)) {
        return TargetIn(*target, stored);
    }
    return FigureOfText(std::get<std::string>(number), stored.Channels, stored.Units);
}

std::vector<Figure> FiguresIn(const std::vector<std::string>& figures, const StoredUnits& stored) {
    return ListIn(figures, [&](const std::string& figure) {
        return FigureOfText(figure, stored.Channels, stored.Units);
    });
}

std::vector<StudyChart> ChartsIn(const std::vector<CurveArgument>& curves,
                                 const StoredUnits& stored) {
    return ListIn(curves, [&](const CurveArgument& curve) {
        return StudyChart{ChannelOfText(curve.first, stored.Channels),
                          curve.second ? ChartKind::AlongRackTravel : ChartKind::AlongWheelTravel};
    });
}

std::vector<SweepAxis>
AxesIn(const std::vector<std::pair<std::string, std::vector<double>>>& axes) {
    return ListIn(axes, [](const auto& axis) {
        return SweepAxis{SweptOfText(axis.first), axis.second};
    });
}

std::vector<Tolerance> TolerancesIn(const std::vector<ToleranceArgument>& tolerances) {
    return ListIn(tolerances, [](const ToleranceArgument& tolerance) {
        const auto& [variable, halfWidth, uniform] = tolerance;
        return Tolerance{VariableIn(variable), halfWidth,
                         uniform ? Spread::Uniform : Spread::Normal};
    });
}

Adjuster AdjusterIn(const AdjusterArgument& argument) {
    const auto& [name, kind, link, place, pitch, part] = argument;
    Adjuster adjuster{name, MeaningIn(kind, studyfile::AdjusterWords, "kind of adjuster")};
    if (adjuster.Kind == AdjusterKind::LinkLength) {
        adjuster.Link = MeaningIn(link, studyfile::LinkWords, "link");
    } else if (adjuster.Kind == AdjusterKind::Shim) {
        const DesignVariable variable = VariableIn(place);
        const auto* const coordinate = std::get_if<PointCoordinate>(&variable);
        if (coordinate == nullptr) {
            throw Failure(fnInvalidCall, "A shim moves a coordinate, not " + place);
        }
        adjuster.Place = *coordinate;
    }
    adjuster.Pitch = pitch;
    adjuster.Part = part;
    return adjuster;
}

AdjusterArgument ArgumentOf(const Adjuster& adjuster) {
    const bool isLink = adjuster.Kind == AdjusterKind::LinkLength;
    const bool isShim = adjuster.Kind == AdjusterKind::Shim;
    return {adjuster.Name,
            WordOf(adjuster.Kind, studyfile::AdjusterWords),
            isLink ? WordOf(adjuster.Link, studyfile::LinkWords) : "",
            isShim ? KeyOf(adjuster.Place) : "",
            adjuster.Pitch,
            adjuster.Part};
}

SheetFigure SheetFigureIn(const std::string& figure, const StoredUnits& stored) {
    if (figure == RideHeightName) {
        return {true};
    }
    return {false, FigureOfText(figure, stored.Channels, stored.Units)};
}

std::string NameOf(const SheetFigure& figure, const StoredUnits& stored) {
    return figure.RideHeight ? std::string(RideHeightName)
                             : std::string(TrimBlanks(stored.Channels[figure.Of.Channel].Title));
}

} // namespace corvanta
