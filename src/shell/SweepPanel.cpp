#include "shell/SweepPanel.h"

#include "model/Failure.h"
#include "platform/ColourScale.h"
#include "shell/AxisRange.h"
#include "shell/PointWords.h"
#include "shell/StudyFigures.h"
#include "shell/VariableRows.h"
#include "study/DesignFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <sstream>

namespace corvanta {

namespace {

enum Column { ColVariable, ColFrom, ColTo, ColCount };

constexpr std::size_t FirstCount = 11; ///< values of an axis
constexpr double FirstWay = 5;         ///< to either side of a coordinate, mm
constexpr double FirstShare = 0.2;     ///< to either side of any other number
constexpr std::size_t MostDrawn = 60;  ///< lines of a fan that an eye can part
constexpr std::size_t MostNamed = 9;   ///< lines of a fan that a legend has room for

/// The places of values by their size, of equal ones the first.
std::vector<std::size_t> InOrder(const std::vector<double>& values) {
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
    const auto isSame = [&](std::size_t a, std::size_t b) { return values[a] == values[b]; };
    order.erase(std::unique(order.begin(), order.end(), isSame), order.end());
    return order;
}

} // namespace

SweepPanel::SweepPanel(Desk& desk, StudyHost& host)
    : CStudyPanel(desk, host),
      grdAxes{"grdAxes", "What runs", {}, {}},
      grdDesigns{"grdDesigns", "Designs", {}, {}} {
    Page.Caption = "Sweep";
    Page.ToolTip = "What if one or two values run from a to b?";
    HelpTopicNumber = htSweep;
    cboFigure.Caption = "&Figure of the chart:";
    ListFigures(cboFigure);
    cboValue.Caption = "&Value:";
    cmdFill.Caption = "Add &Value";
    cmdFill.ToolTip = "Add the value that is chosen above";
    Fields = {{"cboFigure", &cboFigure}, {"cboValue", &cboValue}};
    Asked = {&grdAxes};
    Answers = {&grdDesigns};
    cmdKeep.Visible = false;
}

void SweepPanel::ListValues() {
    const int chosen = std::max(0, cboValue.Index());
    const SuspensionData& data = m_desk.Program.Document.Data;
    m_values.clear();
    cboValue.Clear();
    const auto add = [this](const std::string& text, const SweptValue& value) {
        cboValue.Add(text);
        m_values.push_back(value);
    };
    for (std::size_t n = 0; n < CornerLinkCount; ++n) {
        const auto link = static_cast<CornerLink>(n);
        if (HasLink(data, link)) {
            add(SweptName(data, link), link);
        }
    }
    for (const DesignField& field : DesignFields()) {
        const auto* const place = std::get_if<NumberPlace>(&field.Place);
        if (place == nullptr) {
            continue;
        }
        if (const DesignVariable number = DataNumber{place->Member}; !IsTravel(number)) {
            add(std::string(field.Caption), number);
        }
    }
    cboValue.Select(std::min(chosen, cboValue.Count() - 1));
}

void SweepPanel::ShowQuestion() {
    cboFigure.Caption = "&Figure of " + ChartTitle() + ":";
    ListValues();
    const std::vector<SweepAxis>& axes = Questions().Sweep.Axes;
    DataGrid& grid = grdAxes.Grid;
    LayOutTable(grid, std::array<std::string, 4>{"Runs", "From", "To", "Values"}, {}, axes.size());
    grid.Editable = true;
    int row = grid.FixedRows();
    for (const SweepAxis& axis : axes) {
        const std::vector<double>& values = axis.Values;
        const bool isEven = values == EvenlySpaced(values.front(), values.back(), values.size());
        grid.SetCell(row, ColVariable, NameOfAxis(m_desk.Program.Document.Data, axis));
        grid.SetCell(row, ColFrom, Text(axis, values.front()));
        grid.SetCell(row, ColTo, Text(axis, values.back()));
        grid.SetCell(row++, ColCount, std::to_string(values.size()) + (isEven ? "" : " in a list"));
    }
}

std::string SweepPanel::Text(const SweepAxis& axis, double stored) const {
    return TextOf(SweptDisplay(axis.What, Units()), stored, Units().NumberSeparators);
}

std::string SweepPanel::NameOfAxis(const SuspensionData& data, const SweepAxis& axis) const {
    const std::string unit = SweptDisplay(axis.What, Units()).UnitLabel;
    return ShortenedName(SweptName(data, axis.What)) + (unit.empty() ? "" : " [" + unit + "]");
}

void SweepPanel::AddAxis(const SweptValue& what) {
    if (Questions().Sweep.Axes.size() >= 2) {
        throw Failure(fnInvalidCall, "Two values can run at once: remove one first");
    }
    const double now = ValueNow(DesignNow(), what);
    const auto* const variable = std::get_if<DesignVariable>(&what);
    const bool isNumber = variable != nullptr && std::holds_alternative<DataNumber>(*variable);
    const double way = isNumber ? std::max(std::abs(now) * FirstShare, 1.0) : FirstWay;
    Change([&](StudyQuestions& questions) {
        questions.Sweep.Axes.push_back({what, EvenlySpaced(now - way, now + way, FirstCount)});
    });
}

void SweepPanel::AddRows(std::size_t /*table*/) {
    for (const PointCoordinate& coordinate : m_host.SelectedCoordinates()) {
        AddAxis(DesignVariable(coordinate));
    }
}

void SweepPanel::Fill(std::size_t /*table*/) {
    AddAxis(m_values.at(static_cast<std::size_t>(cboValue.Index())));
}

void SweepPanel::RemoveRow(std::size_t /*table*/, std::size_t row) {
    Change([&](StudyQuestions& questions) { EraseRow(questions.Sweep.Axes, row); });
}

std::size_t SweepPanel::RowOf(int row) const {
    return static_cast<std::size_t>(row - grdAxes.Grid.FixedRows());
}

/// "190; 197.5; 205" is a list of values, a whole number how many there are from one end to the
/// other.
void SweepPanel::EditCell(std::size_t /*table*/, int row, int column, const std::string& text) {
    SweepAxis axis = Questions().Sweep.Axes.at(RowOf(row));
    const VariableDisplay display = SweptDisplay(axis.What, Units());
    const auto typed = [&](const std::string& number) {
        return NumberOfText(number, "The value", display.UnitLabel, Units().NumberSeparators) /
               display.Factor;
    };
    double from = axis.Values.front();
    double to = axis.Values.back();
    std::size_t count = axis.Values.size();
    if (column == ColCount && text.find(';') != std::string::npos) {
        axis.Values.clear();
        std::istringstream numbers(text);
        for (std::string number; std::getline(numbers, number, ';');) {
            axis.Values.push_back(typed(number));
        }
    } else {
        if (column == ColCount) {
            count = static_cast<std::size_t>(TypedCount(
                "The number of values", text, 1, MostSweptDesigns, Units().NumberSeparators));
        } else {
            (column == ColFrom ? from : to) = typed(text);
        }
        axis.Values = EvenlySpaced(from, to, count);
    }
    Change([&](StudyQuestions& questions) { questions.Sweep.Axes[RowOf(row)] = axis; });
}

CStudyJob::Work SweepPanel::Prepare(const Design& design,
                                    std::shared_ptr<const StudySettings> settings) {
    SweepQuestion question = Questions().Sweep;
    if (question.Axes.empty()) {
        throw Failure(fnInvalidCall, "Nothing runs: select a cell among the points and press Add "
                                     "Selected, or add a value");
    }
    question.Charts = Charts();
    question.Number = NumberToAsk();
    return [this, design, settings, question](const StudyWork& work, const auto&) {
        CSampleRunner runner(work);
        SweepAnswer answer = RunSweep(runner, design, question, settings->Settings());
        return [this, question, answer = std::move(answer)] { ShowAnswer(question, answer); };
    };
}

void SweepPanel::ShowAnswer(const SweepQuestion& question, const SweepAnswer& answer) {
    ShowDesigns(question, answer);
    Overlay = {};
    Sheets.clear();
    question.Axes.size() == 1 ? ShowFan(question, answer) : ShowMap(question, answer);
    const auto done = std::count_if(answer.Designs.begin(), answer.Designs.end(),
                                    [](const SweptDesign& design) { return design.Solved; });
    std::string found = std::to_string(done) + " designs";
    if (answer.FailedDesigns > 0) {
        found += ", " + std::to_string(answer.FailedDesigns) + " can't be solved";
    }
    m_words = {Page.Caption, {}, {found + (answer.Stopped ? ", stopped" : "")}};
    for (const SweepAxis& axis : question.Axes) {
        m_words.Asked.push_back(NameOfAxis(AskedOf().Data, axis) + " from " +
                                Text(axis, axis.Values.front()) + " to " +
                                Text(axis, axis.Values.back()) + " in " +
                                std::to_string(axis.Values.size()) + " values");
    }
    AnswerCame(m_words.Found.front());
}

void SweepPanel::ShowDesigns(const SweepQuestion& question, const SweepAnswer& answer) {
    const FigureDisplay display = DisplayOf(*question.Number, m_desk.Program);
    std::vector<std::string> heads;
    std::vector<std::string> units;
    for (const SweepAxis& axis : question.Axes) {
        heads.push_back(ShortenedName(SweptName(AskedOf().Data, axis.What)));
        units.push_back(SweptDisplay(axis.What, Units()).UnitLabel);
    }
    heads.insert(heads.end(), {display.Title, "Remark"});
    units.insert(units.end(), {display.UnitLabel, ""});
    DataGrid& grid = grdDesigns.Grid;
    LayOutTable(grid, heads, units, answer.Designs.size());
    int row = grid.FixedRows();
    for (const SweptDesign& design : answer.Designs) {
        int column = 0;
        for (const SweepAxis& axis : question.Axes) {
            grid.SetCell(row, column,
                         Text(axis, design.Values.at(static_cast<std::size_t>(column))));
            ++column;
        }
        grid.SetCell(row, column, NumberText(display, design.Number, Units().NumberSeparators));
        grid.SetCell(row++, column + 1, design.Failure);
    }
}

/// The curves on the charts, and the figure over the value in a chart of its own.
void SweepPanel::ShowFan(const SweepQuestion& question, const SweepAnswer& answer) {
    const SweepAxis& axis = question.Axes.front();
    const FigureDisplay display = DisplayOf(*question.Number, m_desk.Program);
    const VariableDisplay across = SweptDisplay(axis.What, Units());
    const std::vector<Colour> colours = SequentialColours(static_cast<int>(answer.Designs.size()));
    SheetCurve line{display.Title, CurveStyle::Solid, StudyColour, false, {}};
    for (std::size_t n = 0; n < answer.Designs.size(); ++n) {
        const SweptDesign& design = answer.Designs[n];
        const bool isNamed =
            answer.Designs.size() <= MostNamed || n == 0 || n + 1 == answer.Designs.size();
        const std::string name =
            isNamed ? Text(axis, design.Values[0]) + " " + across.UnitLabel : "";
        const bool isDrawn = isNamed || n % ((answer.Designs.size() - 1) / MostDrawn + 1) == 0;
        for (std::size_t chart = 0; isDrawn && chart < design.Curves.size(); ++chart) {
            if (const std::optional<Curve>& curve = design.Curves[chart]) {
                Overlay.Curves.push_back(
                    {question.Charts[chart], name, colours[n], curve->X, curve->Y});
            }
        }
        if (design.Number) {
            line.Points.push_back(
                {design.Values[0] * across.Factor, *design.Number * display.Factor});
        }
    }
    std::sort(line.Points.begin(), line.Points.end(),
              [](const ChartPoint& a, const ChartPoint& b) { return a.X < b.X; });
    const std::string up = display.Title + " [" + display.UnitLabel + "]";
    Sheets.push_back(
        SheetOf(up, NameOfAxis(AskedOf().Data, axis), up, {line}, Units().NumberSeparators));
}

/// The figure over both values.
void SweepPanel::ShowMap(const SweepQuestion& question, const SweepAnswer& answer) {
    const FigureDisplay display = DisplayOf(*question.Number, m_desk.Program);
    ChartSheet sheet;
    sheet.NumberSeparators = Units().NumberSeparators;
    sheet.Title = display.Title + " [" + display.UnitLabel + "]";
    SheetMap map;
    map.BarTitle = display.UnitLabel;
    map.UnreachedText = "can't be solved";
    const std::vector<std::size_t> across = InOrder(question.Axes[0].Values);
    const std::vector<std::size_t> up = InOrder(question.Axes[1].Values);
    const auto fill = [&](std::vector<double>& values, SheetAxis& axis, std::size_t n,
                          const std::vector<std::size_t>& order) {
        const double factor = SweptDisplay(question.Axes[n].What, Units()).Factor;
        for (const std::size_t place : order) {
            values.push_back(question.Axes[n].Values[place] * factor);
        }
        axis = {NameOfAxis(AskedOf().Data, question.Axes[n]), {values.front(), values.back()}};
    };
    fill(map.X, sheet.AxisX, 0, across);
    fill(map.Y, sheet.AxisY, 1, up);
    double low = HUGE_VAL;
    double high = -HUGE_VAL;
    for (const std::size_t y : up) {
        for (const std::size_t x : across) {
            const std::optional<double> number = answer.At(x, y).Number;
            map.Values.push_back(number ? std::optional(*number * display.Factor) : std::nullopt);
            low = std::min(low, map.Values.back().value_or(low));
            high = std::max(high, map.Values.back().value_or(high));
        }
    }
    if (map.X.size() < 2 || map.Y.size() < 2 || low > high) {
        return;
    }
    map.Levels = LevelsOf(low, high, CAxisRange(display.Format).LastDigit());
    sheet.Map = std::move(map);
    Sheets.push_back(std::move(sheet));
}

} // namespace corvanta
