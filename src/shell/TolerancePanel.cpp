#include "shell/TolerancePanel.h"

#include "model/Failure.h"
#include "shell/StudyFigures.h"
#include "shell/VariableRows.h"
#include "study/SampleRandom.h"
#include "study/Statistics.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace corvanta {

namespace {

enum Column { ColVariable, ColHalfWidth, ColSpread };

constexpr double FirstHalfWidth = 0.5;    ///< mm
constexpr std::size_t SamplesAtOnce = 50; ///< which are on the screen before all are done
constexpr const char* PerCentFormat = "0.0";

/// The share in the first of the figures that anything spreads.
double FirstShare(const ToleranceAnswer& answer, std::size_t tolerance) {
    for (const FigureSpread& spread : answer.Spreads) {
        if (tolerance < spread.Shares.size() && spread.StandardDeviation > 0) {
            return spread.Shares[tolerance];
        }
    }
    return 0;
}

} // namespace

TolerancePanel::TolerancePanel(Desk& desk, StudyHost& host)
    : CStudyPanel(desk, host),
      grdTolerances{"grdTolerances", "Tolerances", {}, {}},
      grdShares{"grdShares", "What spreads it", {}, {}},
      grdSpread{"grdSpread", "Spread", {}, {}},
      grdTargets{"grdTargets", "Targets", {}, {}} {
    Page.Caption = "Tolerance";
    Page.ToolTip = "How much do build tolerances spread the curves?";
    HelpTopicNumber = htTolerance;
    txtSamples.Caption = "&Samples:";
    txtSeed.Caption = "S&eed:";
    txtSeed.ToolTip = "The same seed draws the same samples";
    chkFollow.Caption = "&Follow changes";
    chkFollow.ToolTip = "Every change of the design begins the study anew";
    cmdFill.Caption = "&Defaults";
    cmdFill.ToolTip = "Tolerances of all pickups, by their kind";
    Fields = {{"txtSamples", &txtSamples}, {"txtSeed", &txtSeed}, {"chkFollow", &chkFollow}};
    Asked = {&grdTolerances};
    Answers = {&grdShares, &grdSpread, &grdTargets};
    cmdKeep.Visible = false;
}

// --- What is asked -----------------------------------------------------------------------------

void TolerancePanel::ShowQuestion() {
    const ToleranceQuestion& question = Questions().Tolerance;
    const Separators& separators = Units().NumberSeparators;
    txtSamples.Text = NumberToText(static_cast<double>(question.Samples), separators);
    txtSeed.Text = NumberToText(static_cast<double>(question.Seed), separators);
    std::vector<VariableRow> rows;
    for (const Tolerance& tolerance : question.Tolerances) {
        rows.push_back(
            {tolerance.Variable, {tolerance.HalfWidth}, {SpreadWord(tolerance.Distribution)}});
    }
    ShowVariables(grdTolerances.Grid, m_desk.Program.Document.Data, Units(),
                  std::array<std::string, 3>{"Built to", "Plus or minus", "Spread"}, rows);
    grdTolerances.Grid.Editable = true;
    OfferSpreads(grdTolerances.Grid, ColSpread);
}

void TolerancePanel::TakeFields() {
    const Separators& separators = Units().NumberSeparators;
    const std::int64_t samples =
        TypedCount(txtSamples, LeastToleranceSamples, MostToleranceSamples, separators);
    const std::int64_t seed = TypedCount(txtSeed, 0, GreatestSeed, separators);
    Change([&](StudyQuestions& questions) {
        questions.Tolerance.Samples = static_cast<std::size_t>(samples);
        questions.Tolerance.Seed = static_cast<std::uint64_t>(seed);
    });
}

void TolerancePanel::EditCell(std::size_t /*table*/, int row, int column, const std::string& text) {
    const auto n = static_cast<std::size_t>(row - grdTolerances.Grid.FixedRows());
    Tolerance tolerance = Questions().Tolerance.Tolerances.at(n);
    if (column == ColHalfWidth) {
        tolerance.HalfWidth = TypedNumberOf(tolerance.Variable, text, Units());
    } else {
        tolerance.Distribution = SpreadOf(text);
    }
    Change([&](StudyQuestions& questions) { questions.Tolerance.Tolerances[n] = tolerance; });
}

void TolerancePanel::AddRows(std::size_t /*table*/) {
    Change([&](StudyQuestions& questions) {
        std::vector<Tolerance>& tolerances = questions.Tolerance.Tolerances;
        for (const PointCoordinate& added : NewAmong(m_host.SelectedCoordinates(), tolerances)) {
            tolerances.push_back({added, FirstHalfWidth, Spread::Normal});
        }
    });
}

void TolerancePanel::RemoveRow(std::size_t /*table*/, std::size_t row) {
    Change([&](StudyQuestions& questions) { EraseRow(questions.Tolerance.Tolerances, row); });
}

void TolerancePanel::Fill(std::size_t /*table*/) {
    Change([&](StudyQuestions& questions) {
        questions.Tolerance.Tolerances = DefaultTolerances(m_desk.Program.Document.Data);
    });
}

CStudyJob::Work TolerancePanel::Prepare(const Design& design,
                                        std::shared_ptr<const StudySettings> settings) {
    ToleranceQuestion question = Questions().Tolerance;
    if (question.Tolerances.empty()) {
        throw Failure(fnInvalidCall, "Nothing has a tolerance: press Defaults, or select cells "
                                     "among the points and press Add Selected");
    }
    question.Charts = Charts();
    if (const std::size_t inHand = m_host.ChartInHand(); inHand < question.Charts.size()) {
        std::rotate(question.Charts.begin(),
                    question.Charts.begin() + static_cast<std::ptrdiff_t>(inHand),
                    question.Charts.begin() + static_cast<std::ptrdiff_t>(inHand) + 1);
    }
    question.Figures = DefaultFigures(question.Charts); // those of the chart in hand first
    question.Targets = m_desk.Current.Study().Targets;
    return [this, design, settings, question](const StudyWork& work,
                                              const CStudyJob::Interim& interim) {
        const double atOnce =
            question.Samples > 2 * SamplesAtOnce
                ? static_cast<double>(SamplesAtOnce) / static_cast<double>(question.Samples)
                : 0; // of the work
        const auto ask = [&](const ToleranceQuestion& asked, double from,
                             double to) -> CStudyJob::Show {
            CSampleRunner runner(PartOf(work, from, to));
            ToleranceAnswer answer = FindTolerance(runner, design, asked, settings->Settings());
            return [this, asked, answer = std::move(answer)] { ShowAnswer(asked, answer); };
        };
        if (atOnce > 0) {
            ToleranceQuestion first = question;
            first.Samples = SamplesAtOnce;
            interim(ask(first, 0, atOnce));
        }
        return ask(question, atOnce, 1);
    };
}

// --- What came out -----------------------------------------------------------------------------

void TolerancePanel::ShowAnswer(const ToleranceQuestion& question, const ToleranceAnswer& answer) {
    if (answer.Stopped) {
        StoppedWithoutAnswer();
        return;
    }
    ShowBands(question, answer);
    ShowShares(question, answer);
    ShowSpread(question, answer);
    ShowTargets(question, answer);
    std::string found = std::to_string(answer.Built) + " samples";
    if (answer.NotBuilt > 0) {
        found += ", " + std::to_string(answer.NotBuilt) + " can't be built: " + answer.FirstReason;
    }
    m_words = {
        Page.Caption,
        {std::to_string(question.Samples) + " samples, seed " + std::to_string(question.Seed),
         "Bands hold 5 to 95 % of the samples; the paler ones reach to the extremes."},
        {found}};
    AnswerCame(found);
}

void TolerancePanel::ShowBands(const ToleranceQuestion& question, const ToleranceAnswer& answer) {
    Overlay = {};
    for (std::size_t n = 0; n < answer.Bands.size(); ++n) {
        const ToleranceBand& band = answer.Bands[n];
        if (!band.Travel.empty()) {
            Overlay.Bands.push_back(
                {question.Charts[n], "Extremes", band.Travel, band.Least, band.Greatest});
            Overlay.Bands.push_back(
                {question.Charts[n], "5 to 95 %", band.Travel, band.Low, band.High});
        }
    }
}

void TolerancePanel::ShowShares(const ToleranceQuestion& question, const ToleranceAnswer& answer) {
    std::vector<std::size_t> order(question.Tolerances.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return FirstShare(answer, a) > FirstShare(answer, b);
    });
    std::vector<std::string> heads{"Coordinate"};
    std::vector<std::string> units{""};
    std::vector<const FigureSpread*> shown; // what nothing spreads has no shares
    for (std::size_t figure = 0; figure < answer.Spreads.size(); ++figure) {
        if (answer.Spreads[figure].StandardDeviation > 0) {
            heads.push_back(
                DisplayOf(question.Figures[figure], m_desk.Program.Channels, Units()).Title);
            units.emplace_back("% of the variance");
            shown.push_back(&answer.Spreads[figure]);
        }
    }
    DataGrid& grid = grdShares.Grid;
    LayOutTable(grid, heads, units, order.size() + 1);
    const auto show = [&](int row, int column, double share, bool bar) {
        constexpr double PerCent = 100;
        grid.SetCell(row, column,
                     FormatUnsignedZero(share * PerCent, PerCentFormat, Units().NumberSeparators));
        if (bar) {
            grid.SetBar(row, column, share);
        }
    };
    m_rows.clear();
    int row = grid.FixedRows();
    for (const std::size_t n : order) {
        m_rows.push_back(question.Tolerances[n].Variable);
        grid.SetCell(row, 0, RowName(AskedOf().Data, m_rows.back()));
        int column = 1;
        for (const FigureSpread* const spread : shown) {
            if (spread->Shares.empty()) {
                grid.SetCell(row, column++, "-");
            } else {
                show(row, column++, spread->Shares[n], true);
            }
        }
        ++row;
    }
    grid.SetCell(row, 0, "Not explained by straight lines");
    int column = 1;
    for (const FigureSpread* const spread : shown) {
        if (spread->Shares.empty()) {
            grid.SetCell(row, column++, "-");
        } else {
            show(row, column++, spread->Unexplained, false);
        }
    }
}

void TolerancePanel::ShowSpread(const ToleranceQuestion& question, const ToleranceAnswer& answer) {
    DataGrid& grid = grdSpread.Grid;
    LayOutTable(grid,
                std::array<std::string, 9>{"Figure", "Unit", "Nominal", "Mean",
                                           "Standard deviation", "Least", "5 %", "95 %",
                                           "Greatest"},
                {}, answer.Spreads.size());
    int row = grid.FixedRows();
    for (std::size_t n = 0; n < answer.Spreads.size(); ++n, ++row) {
        const FigureSpread& spread = answer.Spreads[n];
        FigureDisplay display = DisplayOf(question.Figures[n], m_desk.Program.Channels, Units());
        display.Format += display.Format.find('.') == std::string::npos ? ".00" : "00";
        const auto show = [&](int column, std::optional<double> value) {
            grid.SetCell(row, column, NumberText(display, value, Units().NumberSeparators));
        };
        grid.SetCell(row, 0, display.Title);
        grid.SetCell(row, 1, display.UnitLabel);
        show(2, spread.Nominal);
        if (spread.Count == 0) {
            continue;
        }
        std::vector<double> values;
        for (const std::optional<double>& value : spread.Values) {
            if (value) {
                values.push_back(*value);
            }
        }
        std::sort(values.begin(), values.end());
        show(3, spread.Mean);
        show(4, spread.StandardDeviation);
        show(5, values.front());
        show(6, QuantileOf(values, LowProbability));
        show(7, QuantileOf(values, HighProbability));
        show(8, values.back());
    }
}

void TolerancePanel::ShowTargets(const ToleranceQuestion& question, const ToleranceAnswer& answer) {
    DataGrid& grid = grdTargets.Grid;
    LayOutTable(grid,
                std::array<std::string, 4>{"Target", "Samples judged", "Outside", "Design holds"},
                {}, answer.Targets.size());
    int row = grid.FixedRows();
    for (std::size_t n = 0; n < answer.Targets.size(); ++n, ++row) {
        const TargetCount& count = answer.Targets[n];
        grid.SetCell(row, 0, NameOf(question.Targets[n], m_desk.Program.Channels));
        grid.SetCell(row, 1, std::to_string(count.Judged));
        grid.SetCell(row, 2, std::to_string(count.Leave));
        grid.SetCell(row, 3, count.NominalHolds ? "yes" : "no");
    }
}

void TolerancePanel::Answer_Clicked(std::size_t table, int row) {
    const auto n = static_cast<std::size_t>(row - grdShares.Grid.FixedRows());
    if (table != 0 || n >= m_rows.size()) {
        return;
    }
    if (const auto* const coordinate = std::get_if<PointCoordinate>(&m_rows[n])) {
        m_host.SelectCoordinate(*coordinate);
    }
}

} // namespace corvanta
