#include "shell/OptimisePanel.h"

#include "model/Failure.h"
#include "shell/StudyFigures.h"
#include "shell/VariableRows.h"
#include "study/SampleRandom.h"

#include <array>

namespace corvanta {

namespace {

enum Column { ColVariable, ColNow, ColLow, ColHigh };

constexpr double FirstWay = 5; ///< to either side of where a coordinate stands, mm

std::string ResultText(const TargetResult& result, const FigureDisplay& display,
                       const Separators& separators) {
    return !result.Judged ? "-"
           : result.Holds ? "holds"
                          : NumberText(display, result.Deviation, separators);
}

} // namespace

OptimisePanel::OptimisePanel(Desk& desk, StudyHost& host)
    : CStudyPanel(desk, host),
      grdFree{"grdFree", "Free", {}, {}},
      grdGains{"grdGains", "Targets", {}, {}},
      grdFound{"grdFound", "Coordinates", {}, {}} {
    Page.Caption = "Optimise";
    Page.ToolTip = "Which coordinates bring all curves into the bands of their targets?";
    HelpTopicNumber = htOptimise;
    txtStarts.Caption = "&Starts:";
    txtStarts.ToolTip = "The first is the design as it stands, the others are drawn in the boxes";
    txtSeed.Caption = "S&eed:";
    txtSeed.ToolTip = "The same seed draws the same starts";
    Fields = {{"txtStarts", &txtStarts}, {"txtSeed", &txtSeed}};
    Asked = {&grdFree};
    Answers = {&grdGains, &grdFound};
    cmdFill.Visible = false;
}

void OptimisePanel::ShowQuestion() {
    const OptimiseQuestion& question = Questions().Optimise;
    const Separators& separators = Units().NumberSeparators;
    txtStarts.Text = NumberToText(question.Starts, separators);
    txtSeed.Text = NumberToText(static_cast<double>(question.Seed), separators);
    const Design now = DesignNow();
    std::vector<VariableRow> rows;
    for (const FreeVariable& free : question.Free) {
        rows.push_back({free.Variable, {ValueOf(now, free.Variable), free.Low, free.High}, {}});
    }
    ShowVariables(grdFree.Grid, now.Data, Units(),
                  std::array<std::string, 4>{"Free", "Now", "From", "To"}, rows);
    grdFree.Grid.Editable = true;
}

void OptimisePanel::TakeFields() {
    const Separators& separators = Units().NumberSeparators;
    const std::int64_t starts = TypedCount(txtStarts, 1, MostStarts, separators);
    const std::int64_t seed = TypedCount(txtSeed, 0, GreatestSeed, separators);
    Change([&](StudyQuestions& questions) {
        questions.Optimise.Starts = static_cast<int>(starts);
        questions.Optimise.Seed = static_cast<std::uint64_t>(seed);
    });
}

void OptimisePanel::EditCell(std::size_t /*table*/, int row, int column, const std::string& text) {
    if (column == ColNow) {
        throw Failure(fnInvalidCall, "Where it stands is changed among the points");
    }
    const auto n = static_cast<std::size_t>(row - grdFree.Grid.FixedRows());
    const DesignVariable variable = Questions().Optimise.Free.at(n).Variable;
    const double typed = TypedNumberOf(variable, text, Units());
    Change([&](StudyQuestions& questions) {
        FreeVariable& free = questions.Optimise.Free[n];
        (column == ColLow ? free.Low : free.High) = typed;
    });
}

void OptimisePanel::AddRows(std::size_t /*table*/) {
    const Design now = DesignNow();
    Change([&](StudyQuestions& questions) {
        std::vector<FreeVariable>& free = questions.Optimise.Free;
        for (const PointCoordinate& added : NewAmong(m_host.SelectedCoordinates(), free)) {
            const double place = ValueOf(now, added);
            free.push_back({added, place - FirstWay, place + FirstWay});
        }
    });
}

void OptimisePanel::RemoveRow(std::size_t /*table*/, std::size_t row) {
    Change([&](StudyQuestions& questions) { EraseRow(questions.Optimise.Free, row); });
}

CStudyJob::Work OptimisePanel::Prepare(const Design& design,
                                       std::shared_ptr<const StudySettings> settings) {
    OptimiseQuestion question = Questions().Optimise;
    if (question.Free.empty()) {
        throw Failure(fnInvalidCall, "No coordinate is free: select cells among the points and "
                                     "press Add Selected");
    }
    question.Targets = m_desk.Current.Study().Targets;
    return
        [this, design, settings, question, charts = Charts()](const StudyWork& work, const auto&) {
            CSampleRunner runner(work);
            OptimiseAnswer answer = Optimise(runner, design, question, settings->Settings());
            auto curves = CurvesOf(answer.Best, "Optimised", charts, settings->Settings());
            return [this, question, answer = std::move(answer), curves = std::move(curves)] {
                Overlay = {};
                Overlay.Curves = curves;
                ShowAnswer(question, answer);
            };
        };
}

void OptimisePanel::ShowAnswer(const OptimiseQuestion& question, const OptimiseAnswer& answer) {
    m_best = answer.Best;
    ShowGains(question, answer);
    DataGrid& grid = grdFound.Grid;
    const std::string& length = Units()[ucDisplacement].Label;
    LayOutTable(grid, std::array<std::string, 5>{"Coordinate", "Before", "After", "Change", ""},
                std::array<std::string, 5>{"", length, length, length, ""},
                answer.Variables.size());
    int row = grid.FixedRows();
    for (const OptimisedVariable& found : answer.Variables) {
        const DesignVariable& variable = found.Variable;
        grid.SetCell(row, 0, RowName(AskedOf().Data, variable, Units()));
        grid.SetCell(row, 1, TextOf(variable, found.Before, Units()));
        grid.SetCell(row, 2, TextOf(variable, found.After, Units()));
        grid.SetCell(row, 3, TextOf(variable, found.After - found.Before, Units()));
        grid.SetCell(row++, 4, found.AtBound ? "at the end of its box" : "");
    }
    std::string found = answer.AllHold ? "All targets hold" : "Not all targets hold";
    found += ", " + std::to_string(answer.SamePlace) + " of " +
             std::to_string(answer.Starts.size()) + " starts came to this place";
    if (answer.NotEvaluated > 0) {
        found +=
            ", " + std::to_string(answer.NotEvaluated) + " can't be solved: " + answer.FirstFailure;
    }
    m_words = {Page.Caption,
               {std::to_string(question.Starts) + " starts, seed " + std::to_string(question.Seed)},
               {found + (answer.Stopped ? ", stopped" : "")}};
    AnswerCame(m_words.Found.front());
}

void OptimisePanel::ShowGains(const OptimiseQuestion& question, const OptimiseAnswer& answer) {
    DataGrid& grid = grdGains.Grid;
    LayOutTable(grid, std::array<std::string, 4>{"Target", "Unit", "Outside before", "After"}, {},
                answer.Targets.size());
    int row = grid.FixedRows();
    for (std::size_t n = 0; n < answer.Targets.size(); ++n, ++row) {
        const FigureDisplay display = DisplayOf(question.Targets[n], m_desk.Program);
        const Separators& separators = Units().NumberSeparators;
        grid.SetCell(row, 0, NameOf(question.Targets[n], m_desk.Program.Channels));
        grid.SetCell(row, 1, display.UnitLabel);
        grid.SetCell(row, 2, ResultText(answer.Targets[n].Before, display, separators));
        grid.SetCell(row, 3, ResultText(answer.Targets[n].After, display, separators));
    }
}

void OptimisePanel::cmdKeep_Click() {
    Keep("Optimised", m_best);
}

} // namespace corvanta
