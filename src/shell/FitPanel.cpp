#include "shell/FitPanel.h"

#include "model/Failure.h"
#include "shell/AxisRange.h"
#include "shell/StudyFigures.h"
#include "shell/VariableRows.h"
#include "study/DesignResults.h"

#include <algorithm>
#include <array>

namespace corvanta {

namespace {

enum Table : std::size_t { TabReadings, TabFree };
enum ReadingColumn { ColWheel, ColRack, ColChannel, ColValue, ColUncertainty };
enum FreeColumn { ColVariable, ColTolerance, ColShape };

constexpr double FirstTolerance = 2; ///< mm
constexpr const char* RatioFormat = "0.00";

} // namespace

FitPanel::FitPanel(Desk& desk, StudyHost& host)
    : CStudyPanel(desk, host),
      grdReadings{"grdReadings", "Readings", {}, {}},
      grdFree{"grdFitted", "Free", {}, {}},
      grdFound{"grdBuilt", "Coordinates", {}, {}},
      grdResiduals{"grdResiduals", "Residuals", {}, {}},
      grdCorrelations{"grdCorrelations", "Correlations", {}, {}} {
    Page.Caption = "Fit";
    Page.ToolTip = "Which pickups were really built, as readings of a measured car tell?";
    HelpTopicNumber = htFit;
    cmdAdd.Caption = "&Add";
    cmdAdd.ToolTip = "A reading of the chart in hand at the travel of the cursor, or the "
                     "coordinates whose cells are selected among the points";
    cmdFill.Caption = "Paste &Readings";
    cmdFill.ToolTip = "Columns of a sheet: wheel travel, rack travel, channel, value, uncertainty";
    Asked = {&grdReadings, &grdFree};
    Answers = {&grdFound, &grdResiduals, &grdCorrelations};
}

// --- What is asked -----------------------------------------------------------------------------

void FitPanel::ShowQuestion() {
    ShowReadings();
    std::vector<VariableRow> rows;
    for (const Tolerance& free : Questions().Fit.Free) {
        rows.push_back({free.Variable, {free.HalfWidth}, {SpreadWord(free.Distribution)}});
    }
    ShowVariables(grdFree.Grid, m_desk.Program.Document.Data, Units(),
                  std::array<std::string, 3>{"Free", "Plus or minus", "Spread"}, rows);
    grdFree.Grid.Editable = true;
    OfferSpreads(grdFree.Grid, ColShape);
}

void FitPanel::ShowReadings() {
    const std::vector<Reading>& readings = Questions().Fit.Readings;
    const std::string& length = Units()[ucDisplacement].Label;
    DataGrid& grid = grdReadings.Grid;
    LayOutTable(grid,
                std::array<std::string, 5>{"Wheel", "Rack", "Channel", "Value", "Uncertainty"},
                std::array<std::string, 5>{length, length, "", "", ""}, readings.size());
    grid.SetSize(grid.Rows(), grid.Columns(), grid.FixedRows(), 0); // its travel is typed too
    grid.Editable = true;
    int row = grid.FixedRows();
    for (const Reading& reading : readings) {
        const ChannelRecord& record = m_desk.Program.Channels[reading.Channel];
        grid.SetCell(row, ColWheel,
                     FormatChannelValue(Units(), reading.WheelTravel, ucDisplacement));
        grid.SetCell(row, ColRack, FormatChannelValue(Units(), reading.RackTravel, ucDisplacement));
        grid.SetCell(row, ColChannel, std::string(TrimBlanks(record.Title)));
        grid.SetCell(row, ColValue, FormatChannelValue(Units(), reading.Value, record.Class));
        grid.SetCell(row++, ColUncertainty,
                     NumberToText(reading.Uncertainty * static_cast<double>(record.Factor),
                                  Units().NumberSeparators));
    }
}

/// The value of the chart in hand where the cursor stands, sure to its last digit.
Reading FitPanel::ReadingNow() const {
    const StudyChart& chart = Charts().at(m_host.ChartInHand());
    const Program& program = m_desk.Program;
    const TravelPlace place{program.Settings.ViewWheel < 2
                                ? 0
                                : WheelTravelAtStep(program.Document, program.Settings.ViewWheel),
                            program.Settings.ViewRack < 2
                                ? 0
                                : RackTravelAtStep(program.Document, program.Settings.ViewRack)};
    Reading reading{place.Wheel, place.Rack, chart.Channel, 0, 0};
    const auto scratch = std::make_unique<Suspension>();
    const auto curve = CurveOfDesign(*scratch, DesignNow(), m_desk.Current.Settings(),
                                     chart.Channel, vvAlongWheelTravel, place);
    const std::optional<double> value =
        curve ? ValueAt(*curve, place.Wheel) : std::optional<double>();
    if (!value) {
        throw Failure(fnInvalidCall, "The corner has no value of " + ChartTitle() + " there");
    }
    reading.Value = *value;
    const ChannelRecord& record = program.Channels[chart.Channel];
    reading.Uncertainty =
        CAxisRange(record.Format).LastDigit() / static_cast<double>(record.Factor);
    return reading;
}

void FitPanel::AddRows(std::size_t table) {
    const auto added = table == TabReadings ? std::optional(ReadingNow()) : std::nullopt;
    Change([&](StudyQuestions& questions) {
        if (added) {
            questions.Fit.Readings.push_back(*added);
            return;
        }
        std::vector<Tolerance>& free = questions.Fit.Free;
        for (const PointCoordinate& coordinate : NewAmong(m_host.SelectedCoordinates(), free)) {
            free.push_back({coordinate, FirstTolerance, Spread::Normal});
        }
    });
}

void FitPanel::RemoveRow(std::size_t table, std::size_t row) {
    Change([&](StudyQuestions& questions) {
        table == TabReadings ? EraseRow(questions.Fit.Readings, row)
                             : EraseRow(questions.Fit.Free, row);
    });
}

void FitPanel::Fill(std::size_t /*table*/) {
    const std::vector<Reading> readings =
        ParseReadings(m_desk.Windows.Board.Text(), m_desk.Program.Channels, Units());
    if (readings.empty()) {
        throw Failure(fnInvalidCall, "The clipboard holds no readings");
    }
    Change([&](StudyQuestions& questions) {
        std::vector<Reading>& all = questions.Fit.Readings; // those that are there stay
        all.insert(all.end(), readings.begin(), readings.end());
    });
}

void FitPanel::EditCell(std::size_t table, int row, int column, const std::string& text) {
    if (table == TabReadings) {
        EditReading(static_cast<std::size_t>(row - grdReadings.Grid.FixedRows()), column, text);
        return;
    }
    const auto n = static_cast<std::size_t>(row - grdFree.Grid.FixedRows());
    Tolerance free = Questions().Fit.Free.at(n);
    if (column == ColTolerance) {
        free.HalfWidth = TypedNumberOf(free.Variable, text, Units());
    } else {
        free.Distribution = SpreadOf(text);
    }
    Change([&](StudyQuestions& questions) { questions.Fit.Free[n] = free; });
}

/// A reading is read as it would be pasted, one cell of it another.
void FitPanel::EditReading(std::size_t n, int column, const std::string& text) {
    const DataGrid& grid = grdReadings.Grid;
    const int row = grid.FixedRows() + static_cast<int>(n);
    std::string line;
    for (int k = 0; k < grid.Columns(); ++k) {
        line += (k == 0 ? "" : "\t") + (k == column ? text : grid.Cell(row, k));
    }
    const std::vector<Reading> typed = ParseReadings(line, m_desk.Program.Channels, Units());
    if (typed.size() != 1) {
        throw Failure(fnInvalidCall, "This is no reading: " + text);
    }
    Reading reading = Questions().Fit.Readings.at(n);
    const Reading& cell = typed.front(); // the other cells keep the digits that they don't show
    switch (column) {
    case ColWheel:
        reading.WheelTravel = cell.WheelTravel;
        break;
    case ColRack:
        reading.RackTravel = cell.RackTravel;
        break;
    case ColValue:
        reading.Value = cell.Value;
        break;
    case ColUncertainty:
        reading.Uncertainty = cell.Uncertainty;
        break;
    default:
        reading = cell; // its value is one in other units
    }
    Change([&](StudyQuestions& questions) { questions.Fit.Readings[n] = reading; });
}

CStudyJob::Work FitPanel::Prepare(const Design& design,
                                  std::shared_ptr<const StudySettings> settings) {
    const FitQuestion question = Questions().Fit;
    if (question.Free.empty()) {
        throw Failure(fnInvalidCall, "No coordinate is free: select cells among the points and "
                                     "press Add on the page Free");
    }
    return
        [this, design, settings, question, charts = Charts()](const StudyWork& work, const auto&) {
            CSampleRunner runner(work);
            FitAnswer answer = Fit(runner, design, question, settings->Settings());
            auto curves = CurvesOf(answer.Fitted, "As built", charts, settings->Settings());
            return [this, question, answer = std::move(answer), curves = std::move(curves)] {
                Overlay = {};
                Overlay.Curves = curves;
                ShowAnswer(question, answer);
            };
        };
}

// --- What came out -----------------------------------------------------------------------------

void FitPanel::ShowAnswer(const FitQuestion& question, const FitAnswer& answer) {
    m_fitted = answer.Fitted;
    ShowFound(answer);
    ShowResiduals(question, answer);
    ShowCorrelations(answer);
    std::string found = answer.Stopped     ? "Stopped"
                        : answer.Converged ? "Fitted"
                                           : "Not settled: " + answer.Words;
    if (answer.DegreesOfFreedom > 0) {
        found += ", chi squared per degree of freedom " +
                 FormatNumber(answer.ChiSquared / answer.DegreesOfFreedom, RatioFormat,
                              Units().NumberSeparators);
    }
    if (!answer.Stopped &&
        std::any_of(answer.Variables.begin(), answer.Variables.end(),
                    [](const FittedVariable& variable) { return !variable.Deviation; })) {
        found += ", standard deviations can't be told";
    }
    if (answer.Outliers > 0) {
        found += ", " + std::to_string(answer.Outliers) +
                 (answer.Outliers == 1 ? " gross error" : " gross errors") + " among the readings";
    }
    m_words = {Page.Caption, {std::to_string(question.Readings.size()) + " readings"}, {found}};
    if (!answer.Exact) {
        m_words.Found.emplace_back("Some readings lie between the steps of every grid and are "
                                   "compared with a cubic through the four around them.");
    }
    AnswerCame(found);
}

void FitPanel::ShowFound(const FitAnswer& answer) {
    const std::string& length = Units()[ucDisplacement].Label;
    DataGrid& grid = grdFound.Grid;
    LayOutTable(grid,
                std::array<std::string, 6>{"Coordinate", "Designed", "Built", "Difference",
                                           "Standard deviation", ""},
                std::array<std::string, 6>{"", length, length, length, length, ""},
                answer.Variables.size());
    int row = grid.FixedRows();
    for (const FittedVariable& found : answer.Variables) {
        const DesignVariable& variable = found.Variable;
        grid.SetCell(row, 0, RowName(AskedOf().Data, variable, Units()));
        grid.SetCell(row, 1, TextOf(variable, found.Before, Units()));
        grid.SetCell(row, 2, TextOf(variable, found.After, Units()));
        grid.SetCell(row, 3, TextOf(variable, found.After - found.Before, Units()));
        grid.SetCell(row, 4, found.Deviation ? TextOf(variable, *found.Deviation, Units()) : "-");
        grid.SetCell(row++, 5, found.Told || !found.Deviation ? "" : "the readings can't tell");
    }
}

void FitPanel::ShowResiduals(const FitQuestion& question, const FitAnswer& answer) {
    const std::string& length = Units()[ucDisplacement].Label;
    DataGrid& grid = grdResiduals.Grid;
    LayOutTable(grid,
                std::array<std::string, 8>{"Channel", "Wheel travel", "Rack travel", "Reading",
                                           "Designed", "Fitted", "In uncertainties", ""},
                std::array<std::string, 8>{"", length, length, "", "", "", "", ""},
                answer.Readings.size());
    int row = grid.FixedRows();
    for (std::size_t n = 0; n < answer.Readings.size(); ++n, ++row) {
        const Reading& reading = question.Readings[n];
        const FittedReading& fitted = answer.Readings[n];
        const ChannelRecord& record = m_desk.Program.Channels[reading.Channel];
        const auto value = [&](int column, double stored, std::int32_t unitClass) {
            grid.SetCell(row, column, FormatChannelValue(Units(), stored, unitClass));
        };
        grid.SetCell(row, 0, std::string(TrimBlanks(record.Title)) + " [" + record.UnitLabel + "]");
        value(1, reading.WheelTravel, ucDisplacement);
        value(2, reading.RackTravel, ucDisplacement);
        value(3, reading.Value, record.Class);
        value(4, fitted.Before, record.Class);
        value(5, fitted.After, record.Class);
        grid.SetCell(
            row, 6,
            FormatUnsignedZero(fitted.InUncertainties, RatioFormat, Units().NumberSeparators));
        if (fitted.Outlier) {
            grid.SetCell(row, 7, "gross error, not followed");
            grid.SetNote(row, 6, "It has no say in the fit");
        }
    }
}

void FitPanel::ShowCorrelations(const FitAnswer& answer) {
    const std::size_t count = answer.Variables.size();
    DataGrid& grid = grdCorrelations.Grid;
    grid.Reset();
    if (answer.Correlations.size() != count * count) {
        return;
    }
    std::vector<std::string> heads{"Correlation"};
    for (const FittedVariable& variable : answer.Variables) {
        heads.push_back(RowName(AskedOf().Data, variable.Variable));
    }
    LayOutTable(grid, heads, {}, count);
    for (std::size_t a = 0; a < count; ++a) {
        const int row = grid.FixedRows() + static_cast<int>(a);
        grid.SetCell(row, 0, RowName(AskedOf().Data, answer.Variables[a].Variable));
        for (std::size_t b = 0; b < count; ++b) {
            const double correlation = answer.Correlations[a * count + b];
            grid.SetCell(row, static_cast<int>(b) + 1,
                         FormatUnsignedZero(correlation, RatioFormat, Units().NumberSeparators));
            if (a != b) {
                grid.SetBar(row, static_cast<int>(b) + 1, correlation);
            }
        }
    }
}

void FitPanel::cmdKeep_Click() {
    Keep("As built", m_fitted);
}

} // namespace corvanta
