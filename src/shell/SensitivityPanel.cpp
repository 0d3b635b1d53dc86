#include "shell/SensitivityPanel.h"

#include "shell/StudyFigures.h"
#include "shell/VariableRows.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta {

namespace {

enum Column { ColCoordinate, ColSlope, ColBar, Columns };

/// The decimals with which the greatest of the slopes has four digits.
std::string FormatFor(double greatest) {
    constexpr double Digits = 4;
    constexpr double Most = 9;
    const double decimals = greatest > 0 ? Digits - 1 - std::floor(std::log10(greatest)) : Digits;
    return "0." + std::string(static_cast<std::size_t>(std::clamp(decimals, 1.0, Most)), '0');
}

double SizeOf(const CoordinateSlope& slope) {
    return std::abs(slope.PerMillimetre.value_or(0));
}

} // namespace

SensitivityPanel::SensitivityPanel(Desk& desk, StudyHost& host)
    : CStudyPanel(desk, host),
      grdSlopes{"grdSlopes", "Per length", {}, {}, true} {
    Page.Caption = "What moves this";
    Page.ToolTip = "Which coordinate changes the chart in hand most?";
    HelpTopicNumber = htSensitivity;
    cboFigure.Caption = "&Figure:";
    ListFigures(cboFigure);
    cboFigure.Select(1); // the value at static is the first thing that everybody sets
    Fields = {{"cboFigure", &cboFigure}};
    Answers = {&grdSlopes};
    cmdRun.Visible = cmdStop.Visible = cmdKeep.Visible = false; // it follows every change
    cmdAdd.Visible = cmdRemove.Visible = cmdFill.Visible = false;
}

void SensitivityPanel::ShowQuestion() {
    cboFigure.Caption = "&Figure of " + ChartTitle() + ":";
}

CStudyJob::Work SensitivityPanel::Prepare(const Design& design,
                                          std::shared_ptr<const StudySettings> settings) {
    return [this, design, settings, question = SensitivityQuestion{NumberToAsk()}](
               const StudyWork& work, const CStudyJob::Interim&) {
        CSampleRunner runner(work);
        SensitivityAnswer answer = FindSensitivity(runner, design, question, settings->Settings());
        return [this, question, answer = std::move(answer)] { ShowAnswer(question, answer); };
    };
}

void SensitivityPanel::ShowAnswer(const SensitivityQuestion& question, SensitivityAnswer answer) {
    if (answer.Stopped) {
        StoppedWithoutAnswer();
        return;
    }
    std::stable_sort(answer.Slopes.begin(), answer.Slopes.end(),
                     [](const auto& a, const auto& b) { return SizeOf(a) > SizeOf(b); });
    const FigureDisplay display = DisplayOf(question.Number, m_desk.Program);
    const UnitRecord& length = UsableUnit(Units(), ucDisplacement);
    const double factor = display.Factor / static_cast<double>(length.Factor);
    const double greatest = answer.Slopes.empty() ? 0 : SizeOf(answer.Slopes.front());
    DataGrid& grid = grdSlopes.Grid;
    LayOutTable(
        grid, std::array<std::string, Columns>{"Coordinate", display.Title, ""},
        std::array<std::string, Columns>{"", display.UnitLabel + " per " + length.Label, ""},
        answer.Slopes.size());
    const std::string format = FormatFor(greatest * std::abs(factor));
    m_rows.clear();
    for (const CoordinateSlope& slope : answer.Slopes) {
        const int row = grid.FixedRows() + static_cast<int>(m_rows.size());
        m_rows.push_back(slope.Coordinate);
        grid.SetCell(row, ColCoordinate, RowName(AskedOf().Data, slope.Coordinate));
        if (!slope.PerMillimetre) {
            grid.SetCell(row, ColSlope, "-");
            grid.SetNote(row, ColSlope, slope.Reason);
            continue;
        }
        grid.SetCell(
            row, ColSlope,
            FormatUnsignedZero(*slope.PerMillimetre * factor, format, Units().NumberSeparators));
        grid.SetBar(row, ColBar, greatest > 0 ? *slope.PerMillimetre / greatest : 0);
    }
    m_words = {Page.Caption,
               {display.Title + ", by central differences of every coordinate in play"},
               {display.Title + " = " + WithUnit(display, answer.Value, Units().NumberSeparators)}};
    AnswerCame(m_words.Found.front());
}

void SensitivityPanel::Answer_Clicked(std::size_t /*table*/, int row) {
    const auto n = static_cast<std::size_t>(row - grdSlopes.Grid.FixedRows());
    if (n < m_rows.size()) {
        m_host.SelectCoordinate(m_rows[n]);
    }
}

StudyWords SensitivityPanel::Words() const {
    return m_words;
}

} // namespace corvanta
