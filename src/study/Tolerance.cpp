#include "study/Tolerance.h"

#include "model/Failure.h"
#include "results/GridCourse.h"
#include "study/SampleRandom.h"
#include "study/Statistics.h"
#include "study/StudySolve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

namespace corvanta {

namespace {

/// Stands in the table of samples where there is no value.
constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

/// The share of the work that the samples are; the rest is their statistics.
constexpr double SamplingShare = 0.95;

/// Half widths, mm. A bracket is welded to a frame or a tub out of a jig, an upright is machined in
/// one piece, and what carries rockers, springs and bars is machined and bolted on.
constexpr double OnChassis = 0.5;
constexpr double OnUpright = 0.2;
constexpr double InSpringTrain = 0.3;

double DefaultHalfWidth(PointNumber point) {
    switch (point) {
    case ptUWIR:
    case ptUWIF:
    case ptLWIR:
    case ptLWIF:
    case ptTRI:
    case ptDSI:
        return OnChassis;
    case ptUWO:
    case ptLWO:
    case ptTRO:
    case ptDSO:
        return OnUpright;
    case ptWC: // a wheel is placed by its upright, and the road by the wheel
    case ptWTCP:
    case ptRHM:
    case ptTBP1: // a T-bar must lie straight across the car, so that its pivots don't stray singly
    case ptTBP2:
        return 0;
    default:
        return InSpringTrain;
    }
}

/// The cells of a channel along a travel, from the lowest travel to the highest.
class Course {
  public:
    Course(const Suspension& document, std::int32_t variable)
        : m_document(document),
          m_course(CourseOf(document, variable, 0, 0)) {}

    [[nodiscard]] std::size_t Count() const { return static_cast<std::size_t>(m_course.Count); }
    [[nodiscard]] double At(std::size_t place, int channel) const {
        const int step = static_cast<int>(place) + 1;
        const int k = // wheel steps run from bump to droop
            m_course.Variable == vvAlongRackTravel ? step : m_course.Count + 1 - step;
        return m_course.State(m_document, k).Channels.Cell(channel).value_or(NoValue);
    }

  private:
    const Suspension& m_document;
    GridCourse m_course;
};

/// The samples of a study: what is drawn, what becomes of it, and one value for each sample, chart
/// and travel in one table.
class ToleranceRun {
  public:
    ToleranceRun(CSampleRunner& runner, const Design& design, const ToleranceQuestion& question,
                 const SolveSettings& settings)
        : m_runner(runner),
          m_design(design),
          m_asked(question),
          m_settings(settings) {}

    [[nodiscard]] ToleranceAnswer Find();

  private:
    [[nodiscard]] GridCut Cut() const;
    [[nodiscard]] bool SolveNominal();
    void ReadCurves(const Suspension& solved, std::span<double> row) const;
    void BeginTables(const Suspension& solved);
    void SolveSample(std::size_t sample, Suspension& scratch);
    void ReadSample(std::size_t sample, const Suspension& solved);
    void Count();
    void FindBand(std::size_t chart);
    void FindSpread(FigureSpread& spread) const;

    CSampleRunner& m_runner;
    const Design& m_design;
    const ToleranceQuestion& m_asked;
    const SolveSettings& m_settings;
    const GridCut m_cut = Cut();
    ToleranceAnswer m_answer{};
    std::vector<std::size_t> m_firstColumn{}; ///< of each chart in a row of the table, and the end
    std::vector<double> m_nominal{};          ///< the row of the design itself
    std::vector<double> m_travels{};          ///< of the columns, mm
    std::vector<double> m_rows{};             ///< of all samples
    std::vector<double> m_offsets{};          ///< drawn, a row for each sample
    std::vector<std::string> m_reasons{};     ///< why a sample can't be built, or empty
    std::vector<TargetResult> m_judged{};     ///< a row for each sample
};

GridCut ToleranceRun::Cut() const {
    GridCut cut = StaticCut();
    for (const StudyChart& chart : m_asked.Charts) {
        if (IsLine(chart)) {
            AddCurve(cut, chart.Channel, TravelOf(chart));
        }
    }
    for (const Figure& figure : m_asked.Figures) {
        AddNumber(cut, figure);
    }
    for (const Target& target : m_asked.Targets) {
        AddNumber(cut, target);
    }
    return cut;
}

void ToleranceRun::ReadCurves(const Suspension& solved, std::span<double> row) const {
    for (std::size_t n = 0; n < m_asked.Charts.size(); ++n) {
        const Course course(solved, TravelOf(m_asked.Charts[n]));
        const std::size_t first = m_firstColumn[n];
        for (std::size_t column = first; column < m_firstColumn[n + 1]; ++column) {
            row[column] = course.At(column - first, m_asked.Charts[n].Channel);
        }
    }
}

void ToleranceRun::BeginTables(const Suspension& solved) {
    m_firstColumn.assign(1, 0);
    for (const StudyChart& chart : m_asked.Charts) {
        const Course course(solved, TravelOf(chart));
        const bool alongRack = TravelOf(chart) == vvAlongRackTravel;
        for (std::size_t place = 0; IsLine(chart) && place < course.Count(); ++place) {
            m_travels.push_back(course.At(place, alongRack ? chRackTravel : chWheelTravel));
        }
        m_firstColumn.push_back(m_travels.size());
    }
    m_nominal.resize(m_travels.size());
    ReadCurves(solved, m_nominal);
    m_rows.assign(m_asked.Samples * m_travels.size(), NoValue);
    m_offsets.resize(m_asked.Samples * m_asked.Tolerances.size());
    m_reasons.resize(m_asked.Samples);
    m_judged.resize(m_asked.Samples * m_asked.Targets.size());
    m_answer.Bands.resize(m_asked.Charts.size());
    for (const Figure& figure : m_asked.Figures) {
        FigureSpread& spread = m_answer.Spreads.emplace_back();
        spread.Nominal = FigureValue(solved, figure);
        spread.Values.resize(m_asked.Samples);
    }
    for (const Target& target : m_asked.Targets) {
        m_answer.Targets.push_back(
            {0, 0, Holds(target, CurveOf(solved, target.Channel, target.Variable))});
    }
}

/// False when it was stopped.
bool ToleranceRun::SolveNominal() {
    Suspension& scratch = m_runner.Scratch();
    const SolveResult outcome = Solve(scratch, m_design, m_settings, m_cut, m_runner.Work().Stop);
    if (outcome.Solved) {
        BeginTables(scratch);
    } else if (!outcome.Stopped) {
        throw Failure(fnInvalidCall, ReasonOf(outcome.Failure));
    }
    return outcome.Solved;
}

void ToleranceRun::ReadSample(std::size_t sample, const Suspension& solved) {
    ReadCurves(solved, std::span(m_rows).subspan(sample * m_travels.size(), m_travels.size()));
    for (std::size_t n = 0; n < m_asked.Figures.size(); ++n) {
        m_answer.Spreads[n].Values[sample] = FigureValue(solved, m_asked.Figures[n]);
    }
    for (std::size_t n = 0; n < m_asked.Targets.size(); ++n) {
        const Target& target = m_asked.Targets[n];
        m_judged[sample * m_asked.Targets.size() + n] =
            JudgeTarget(target, CurveOf(solved, target.Channel, target.Variable));
    }
}

void ToleranceRun::SolveSample(std::size_t sample, Suspension& scratch) {
    const std::vector<Tolerance>& tolerances = m_asked.Tolerances;
    CSampleRandom random(m_asked.Seed, sample);
    Design built = m_design;
    for (std::size_t n = 0; n < tolerances.size(); ++n) {
        const Tolerance& tolerance = tolerances[n];
        const double share = tolerance.Distribution == Spread::Uniform
                                 ? 2 * random.Uniform() - 1
                                 : random.Normal() / NormalDeviations;
        const double offset = share * tolerance.HalfWidth;
        m_offsets[sample * tolerances.size() + n] = offset;
        SetValue(built, tolerance.Variable, ValueOf(built, tolerance.Variable) + offset);
    }
    const SolveResult outcome = Solve(scratch, built, m_settings, m_cut, m_runner.Work().Stop);
    if (outcome.Solved) {
        ReadSample(sample, scratch);
    } else if (!outcome.Stopped) {
        m_reasons[sample] = ReasonOf(outcome.Failure);
    }
}

void ToleranceRun::Count() {
    for (std::size_t sample = 0; sample < m_asked.Samples; ++sample) {
        const std::string& reason = m_reasons[sample];
        ++(reason.empty() ? m_answer.Built : m_answer.NotBuilt);
        if (m_answer.FirstReason.empty()) {
            m_answer.FirstReason = reason;
        }
        for (std::size_t n = 0; n < m_asked.Targets.size(); ++n) {
            const TargetResult& judged = m_judged[sample * m_asked.Targets.size() + n];
            m_answer.Targets[n].Judged += judged.Judged ? 1 : 0;
            m_answer.Targets[n].Leave += judged.Judged && !judged.Holds ? 1 : 0;
        }
    }
}

void ToleranceRun::FindBand(std::size_t chart) {
    ToleranceBand& band = m_answer.Bands[chart];
    std::vector<double> values;
    for (std::size_t column = m_firstColumn[chart]; column < m_firstColumn[chart + 1]; ++column) {
        values.clear();
        for (std::size_t at = column; at < m_rows.size(); at += m_travels.size()) {
            if (!std::isnan(m_rows[at])) {
                values.push_back(m_rows[at]);
            }
        }
        if (values.empty() || std::isnan(m_nominal[column])) {
            continue;
        }
        std::sort(values.begin(), values.end());
        band.Travel.push_back(m_travels[column]);
        band.Nominal.push_back(m_nominal[column]);
        band.Low.push_back(QuantileOf(values, LowProbability));
        band.High.push_back(QuantileOf(values, HighProbability));
        band.Least.push_back(values.front());
        band.Greatest.push_back(values.back());
    }
}

void ToleranceRun::FindSpread(FigureSpread& spread) const {
    const std::size_t width = m_asked.Tolerances.size();
    std::vector<double> values;
    std::vector<double> offsets;
    for (std::size_t sample = 0; sample < m_asked.Samples; ++sample) {
        if (const std::optional<double>& value = spread.Values[sample]) {
            values.push_back(*value);
            const std::span<const double> row(&m_offsets[sample * width], width);
            offsets.insert(offsets.end(), row.begin(), row.end());
        }
    }
    spread.Count = values.size();
    spread.Mean = MeanOf(values);
    spread.StandardDeviation = StandardDeviationOf(values);
    const VarianceShares found = SharesOf(values, offsets, width);
    spread.Shares = found.Shares;
    spread.Unexplained = found.Unexplained;
}

ToleranceAnswer ToleranceRun::Find() {
    const auto sample = [&](std::size_t n, Suspension& scratch) { SolveSample(n, scratch); };
    const std::size_t bands = m_asked.Charts.size();
    const auto statistic = [&](std::size_t n, Suspension&) {
        n < bands ? FindBand(n) : FindSpread(m_answer.Spreads[n - bands]);
    };
    if (!SolveNominal() || !m_runner.Run(m_asked.Samples, sample, 0, SamplingShare) ||
        !m_runner.Run(bands + m_asked.Figures.size(), statistic, SamplingShare, 1)) {
        ToleranceAnswer stopped;
        stopped.Stopped = true;
        return stopped;
    }
    Count();
    return m_answer;
}

std::string FaultOf(const ToleranceQuestion& question, const Design& design) {
    if (std::string fault = FaultOfTolerances(design, question.Tolerances); !fault.empty()) {
        return fault;
    }
    if (question.Samples < LeastToleranceSamples || question.Samples > MostToleranceSamples) {
        return "The samples must number from 2 to " + std::to_string(MostToleranceSamples);
    }
    for (const StudyChart& chart : question.Charts) {
        if (!HasCurve(chart.Channel)) {
            return "There is no such channel";
        }
    }
    for (const Figure& figure : question.Figures) {
        if (std::string fault = FaultOfFigure(figure); !fault.empty()) {
            return fault;
        }
    }
    for (const Target& target : question.Targets) {
        if (std::string fault = FaultOfTarget(target); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

} // namespace

std::vector<Tolerance> DefaultTolerances(const SuspensionData& data) {
    std::vector<Tolerance> tolerances;
    for (const PointCoordinate& coordinate : CoordinatesInPlay(data)) {
        if (const double halfWidth = DefaultHalfWidth(coordinate.Point); halfWidth > 0) {
            tolerances.push_back({coordinate, halfWidth});
        }
    }
    return tolerances;
}

std::string FaultOfTolerances(const Design& design, const std::vector<Tolerance>& tolerances) {
    if (std::string fault = FaultOfVariables(design, VariablesOf(tolerances)); !fault.empty()) {
        return fault;
    }
    for (const Tolerance& each : tolerances) {
        if (!std::isfinite(each.HalfWidth) || each.HalfWidth <= 0) {
            return "The tolerance of " + NameOf(design.Data, each.Variable) + " must be above 0";
        }
    }
    return {};
}

std::vector<Figure> DefaultFigures(const std::vector<StudyChart>& charts) {
    std::vector<Figure> figures;
    for (const StudyChart& chart : charts) {
        for (const FigureKind kind :
             {FigureKind::AtStatic, FigureKind::GainAtStatic, FigureKind::RangeOverTravel}) {
            const Figure figure{chart.Channel, kind, TravelOf(chart)};
            if (IsLine(chart) &&
                std::find(figures.begin(), figures.end(), figure) == figures.end()) {
                figures.push_back(figure);
            }
        }
    }
    return figures;
}

ToleranceAnswer FindTolerance(CSampleRunner& runner, const Design& design,
                              const ToleranceQuestion& question, const SolveSettings& settings) {
    if (const std::string fault = FaultOf(question, design); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    return ToleranceRun(runner, design, question, settings).Find();
}

} // namespace corvanta
