#include "study/SetupSheet.h"

#include "model/Failure.h"
#include "study/StudyNumber.h"
#include "study/StudySolve.h"

#include <array>
#include <utility>

namespace corvanta {

namespace {

/// In the order of a sheet; 0 stands for the ride height.
constexpr std::array<int, 11> SheetChannels{
    chCamberAngle,        chSteerAngle,     chCasterAngle,        0,
    chKingpinInclination, chCasterOffset,   chKingpinOffset,      chRollCentreToGround,
    chHalfTrack,          chWheelRateTotal, chSpringVelocityRatio};

bool HasFigure(const SuspensionData& data, int channel) {
    return channel == chWheelRateTotal ? data.SpringMechanism != smNone : HasChannel(data, channel);
}

/// The cut of the grid that figures need: the static position, or its row or column as well.
GridCut CutFor(std::span<const SheetFigure> figures) {
    GridCut cut = StaticCut();
    for (const SheetFigure& figure : figures) {
        if (figure.RideHeight) {
            continue;
        }
        cut.BarRotation = cut.BarRotation || figure.Of.Channel == chARBRotation;
        if (figure.Of.Kind == FigureKind::AtStatic) {
            continue;
        }
        AddCurve(cut, figure.Of.Channel, figure.Of.Variable);
    }
    return cut;
}

/// The counts of a sample of the sheet: the base, then one more and one less of each adjuster.
std::vector<double> CountsOfSample(std::size_t sample, std::size_t adjusters) {
    std::vector<double> counts(adjusters);
    if (sample > 0) {
        counts[(sample - 1) / 2] = sample % 2 == 1 ? 1 : -1;
    }
    return counts;
}

SheetStep StepBetween(const SheetState& base, const SheetState& moved) {
    SheetStep step;
    step.Fault = moved.Fault;
    step.Changes.resize(base.Values.size());
    for (std::size_t n = 0; n < base.Values.size() && moved.Fault.empty(); ++n) {
        if (base.Values[n] && moved.Values[n]) {
            step.Changes[n] = *moved.Values[n] - *base.Values[n];
        }
    }
    return step;
}

std::string StepText(const Adjuster& adjuster, int count, const FundamentalUnits& units) {
    const UnitRecord& length = UsableUnit(units, ucDisplacement);
    const Separators& separators = units.NumberSeparators;
    const double moved = count * StepOf(adjuster) * static_cast<double>(length.Factor);
    const std::string sign = count > 0 ? "+" : "";
    std::string by = sign + FormatNumber(moved, "0.000", separators) + " " + length.Label;
    if (adjuster.Kind == AdjusterKind::Shim) {
        return by;
    }
    return sign + NumberToText(count * adjuster.Part, separators) + " turn, " + by;
}

SheetTable::Line LineOf(const std::string& name, const std::string& step,
                        std::span<const std::optional<double>> values, const std::string& fault,
                        std::span<const FigureDisplay> displays, const Separators& separators) {
    SheetTable::Line line{name, step, {}, fault};
    for (std::size_t n = 0; n < displays.size(); ++n) {
        const bool told = fault.empty() && n < values.size() && values[n];
        line.Texts.push_back(told ? FormatUnsignedZero(*values[n] * displays[n].Factor,
                                                       displays[n].Format, separators)
                                  : "-");
    }
    return line;
}

std::optional<double> ValueOf(const SheetFigure& figure, const CornerStance& stance,
                              const Suspension& solved) {
    if (figure.RideHeight) {
        return stance.Corner.Points[ptRHM].Z - stance.Corner.Points[ptWTCP].Z;
    }
    if (figure.Of.Kind == FigureKind::AtStatic && figure.Of.Channel == chSteerAngle) {
        return stance.Steer;
    }
    return FigureValue(solved, figure.Of);
}

} // namespace

std::vector<SheetFigure> SheetFiguresOf(const SuspensionData& data) {
    std::vector<SheetFigure> figures;
    for (const int channel : SheetChannels) {
        if (channel == 0) {
            figures.push_back({true, {}});
        } else if (HasFigure(data, channel)) {
            figures.push_back({false, {channel}});
        }
    }
    return figures;
}

FigureDisplay DisplayOf(const SheetFigure& figure, const ChannelCatalogue& channels,
                        const FundamentalUnits& units) {
    if (!figure.RideHeight) {
        return DisplayOf(figure.Of, channels, units);
    }
    const UnitRecord& length = UsableUnit(units, ucDisplacement);
    return {"Ride height", length.Label, static_cast<double>(length.Factor), length.Format};
}

std::string FaultOf(const SetupQuestion& question, const Design& design) {
    if (question.Adjusters.empty() || question.Adjusters.size() > MostAdjusters) {
        return "Choose at least one adjuster, and " + std::to_string(MostAdjusters) + " at most";
    }
    for (const Adjuster& adjuster : question.Adjusters) {
        if (std::string fault = FaultOf(design.Data, adjuster); !fault.empty()) {
            return fault;
        }
    }
    if (question.Figures.empty()) {
        return "Choose at least one figure";
    }
    for (const SheetFigure& figure : question.Figures) {
        std::string fault = figure.RideHeight ? "" : FaultOfFigure(figure.Of);
        if (!fault.empty()) {
            return fault;
        }
    }
    return CRigidCorner(design).AtTravel(question.RideHeight).Fault;
}

CSetupBench::CSetupBench(const Design& design, const SetupQuestion& question,
                         const SolveSettings& settings)
    : m_question(question),
      m_settings(settings),
      m_corner(design),
      m_base(m_corner.AtTravel(question.RideHeight)),
      m_cut(CutFor(question.Figures)) {}

SheetState CSetupBench::StateAt(std::span<const double> counts, Suspension& scratch,
                                const std::stop_token& stop) const {
    const CornerStance stance = m_corner.OnSpring(m_base, ChangeOf(m_question.Adjusters, counts));
    SheetState state{stance.Fault, stance.Corner, {}};
    if (!stance.Closed) {
        return state;
    }
    const SolveResult result = Solve(scratch, stance.Corner, m_settings, m_cut, stop);
    if (!result.Solved) {
        state.Fault = result.Stopped ? "Stopped" : ReasonOf(result.Failure);
        return state;
    }
    for (const SheetFigure& figure : m_question.Figures) {
        state.Values.push_back(ValueOf(figure, stance, scratch));
    }
    return state;
}

SetupSheet MakeSetupSheet(CSampleRunner& runner, const Design& design,
                          const SetupQuestion& question, const SolveSettings& settings) {
    if (const std::string fault = FaultOf(question, design); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    const CSetupBench bench(design, question, settings);
    const std::size_t adjusters = question.Adjusters.size();
    std::vector<SheetState> states(1 + 2 * adjusters);
    SetupSheet sheet;
    sheet.Stopped = !runner.Run(states.size(), [&](std::size_t sample, Suspension& scratch) {
        states[sample] =
            bench.StateAt(CountsOfSample(sample, adjusters), scratch, runner.Work().Stop);
    });
    sheet.Base = states.front();
    if (sheet.Stopped) {
        return sheet;
    }
    if (!sheet.Base.Fault.empty()) {
        throw Failure(fnInvalidCall, sheet.Base.Fault);
    }
    for (std::size_t n = 0; n < adjusters; ++n) {
        sheet.Rows.push_back({StepBetween(sheet.Base, states[1 + 2 * n]),
                              StepBetween(sheet.Base, states[2 + 2 * n])});
    }
    return sheet;
}

SheetTable TableOf(const SetupSheet& sheet, const SetupQuestion& question,
                   const ChannelCatalogue& channels, const FundamentalUnits& units) {
    SheetTable table;
    std::vector<FigureDisplay> displays;
    for (const SheetFigure& figure : question.Figures) {
        displays.push_back(DisplayOf(figure, channels, units));
        table.Titles.push_back(displays.back().Title);
        table.Units.push_back(displays.back().UnitLabel);
    }
    const Separators& separators = units.NumberSeparators;
    table.Lines.push_back(
        LineOf("As it stands", {}, sheet.Base.Values, sheet.Base.Fault, displays, separators));
    for (std::size_t n = 0; n < sheet.Rows.size(); ++n) {
        const Adjuster& adjuster = question.Adjusters[n];
        for (const auto& [step, count] :
             {std::pair(&sheet.Rows[n].More, 1), std::pair(&sheet.Rows[n].Less, -1)}) {
            table.Lines.push_back(LineOf(adjuster.Name, StepText(adjuster, count, units),
                                         step->Changes, step->Fault, displays, separators));
        }
    }
    return table;
}

} // namespace corvanta
