#include "shell/SetupPanel.h"

#include "model/Failure.h"
#include "shell/AxisRange.h"
#include "shell/StudyFigures.h"
#include "shell/VariableRows.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta {

namespace {

enum Table : std::size_t { TabAdjusters, TabWanted };
enum AdjusterColumn { ColName, ColPitch, ColPart, ColLow, ColHigh };
enum WantedColumn { ColFigure, ColHow, ColChange, ColTolerance };

constexpr const char* FreeWord = "free";
constexpr const char* HeldWord = "held";
constexpr const char* WantedWord = "change";

/// "+1.5 turns" or "-2 shims".
std::string TurnsText(const Adjuster& adjuster, int count, const Separators& separators) {
    if (count == 0) {
        return "-";
    }
    const std::string sign = count > 0 ? "+" : "";
    return adjuster.Kind == AdjusterKind::Shim
               ? sign + std::to_string(count) + (std::abs(count) == 1 ? " shim" : " shims")
               : sign + NumberToText(count * adjuster.Part, separators) + " turns";
}

/// So much off is as good as met at first: fifty of the last digit, such as 0.05 deg or 0.5 mm.
double UsualTolerance(const FigureDisplay& display) {
    constexpr double Digits = 50;
    return Digits * CAxisRange(display.Format).LastDigit() / std::abs(display.Factor);
}

/// Who changes anything else wants the toe as it was.
bool IsHeldUsually(const SheetFigure& figure) {
    return !figure.RideHeight && figure.Of.Kind == FigureKind::AtStatic &&
           figure.Of.Channel == chSteerAngle;
}

} // namespace

SetupPanel::SetupPanel(Desk& desk, StudyHost& host)
    : CStudyPanel(desk, host),
      grdAdjusters{"grdAdjusters", "Adjusters", {}, {}},
      grdWanted{"grdWanted", "Wanted", {}, {}},
      grdSheet{"grdSheet", "Setup sheet", {}, {}},
      grdTurns{"grdTurns", "Turns", {}, {}},
      grdReached{"grdReached", "Reached", {}, {}} {
    Page.Caption = "Setup";
    Page.ToolTip = "What does one turn, one shim do? And which turns give the change I want?";
    HelpTopicNumber = htSetup;
    txtRideHeight.Caption = "R&ide height from the design:";
    txtRideHeight.ToolTip = "Wheel travel at which the car stands, bump positive";
    cmdAdd.Caption = "&Add Shims";
    cmdAdd.ToolTip = "Shims that move the coordinates whose cells are selected among the points";
    cmdFill.Caption = "&Usual Ones";
    cmdFill.ToolTip = "The adjusters and figures that a corner like this one has";
    Fields = {{"txtRideHeight", &txtRideHeight}};
    Asked = {&grdAdjusters, &grdWanted};
    Answers = {&grdSheet, &grdTurns, &grdReached};
}

// --- What is asked -----------------------------------------------------------------------------

void SetupPanel::ShowQuestion() {
    txtRideHeight.Unit = Units()[ucDisplacement].Label;
    txtRideHeight.Text =
        FormatChannelValue(Units(), Questions().Setup.Sheet.RideHeight, ucDisplacement);
    ShowAdjusters();
    ShowWanted();
}

void SetupPanel::ShowAdjusters() {
    const TurnsQuestion& question = Questions().Setup;
    DataGrid& grid = grdAdjusters.Grid;
    LayOutTable(
        grid,
        std::array<std::string, 5>{"Adjuster", "Pitch or shim", "Smallest part", "From", "To"},
        std::array<std::string, 5>{"", Units()[ucDisplacement].Label, "turn", "steps", "steps"},
        question.Sheet.Adjusters.size());
    grid.Editable = true;
    int row = grid.FixedRows();
    for (std::size_t n = 0; n < question.Sheet.Adjusters.size(); ++n, ++row) {
        const Adjuster& adjuster = question.Sheet.Adjusters[n];
        grid.SetCell(row, ColName, adjuster.Name);
        grid.SetCell(row, ColPitch, FormatChannelValue(Units(), adjuster.Pitch, ucDisplacement));
        grid.SetCell(row, ColPart, NumberToText(adjuster.Part, Units().NumberSeparators));
        grid.SetCell(row, ColLow, std::to_string(question.Ranges.at(n).Low));
        grid.SetCell(row, ColHigh, std::to_string(question.Ranges.at(n).High));
    }
}

void SetupPanel::ShowWanted() {
    const TurnsQuestion& question = Questions().Setup;
    DataGrid& grid = grdWanted.Grid;
    LayOutTable(grid, std::array<std::string, 4>{"Figure", "How", "Change", "Plus or minus"}, {},
                question.Sheet.Figures.size());
    grid.Editable = true;
    grid.SetChoices(ColHow, {FreeWord, HeldWord});
    int row = grid.FixedRows();
    for (std::size_t n = 0; n < question.Sheet.Figures.size(); ++n, ++row) {
        const FigureDisplay display = Display(question.Sheet.Figures[n]);
        const FigureWish& wish = question.Wishes.at(n);
        const Separators& separators = Units().NumberSeparators;
        grid.SetCell(row, ColFigure, display.Title + " [" + display.UnitLabel + "]");
        grid.SetCell(row, ColHow,
                     wish.Free ? FreeWord : (wish.Change == 0 ? HeldWord : WantedWord));
        if (!wish.Free) {
            grid.SetCell(row, ColChange, NumberText(display, wish.Change, separators));
            grid.SetCell(row, ColTolerance,
                         NumberToText(wish.Tolerance * display.Factor, separators));
        }
    }
}

double SetupPanel::TypedLength(const std::string& place, const std::string& text) const {
    const UnitRecord& unit = UsableUnit(Units(), ucDisplacement);
    return NumberOfText(text, place, unit.Label, Units().NumberSeparators) /
           static_cast<double>(unit.Factor);
}

void SetupPanel::TakeFields() {
    const double travel = TypedLength("Ride height", txtRideHeight.Text);
    Change([&](StudyQuestions& questions) { questions.Setup.Sheet.RideHeight = travel; });
}

void SetupPanel::EditCell(std::size_t table, int row, int column, const std::string& text) {
    const StudyTable& asked = *Asked.at(table);
    const auto n = static_cast<std::size_t>(row - asked.Grid.FixedRows());
    table == TabAdjusters ? EditAdjuster(n, column, text) : EditWanted(n, column, text);
}

void SetupPanel::EditAdjuster(std::size_t n, int column, const std::string& text) {
    TurnsQuestion question = Questions().Setup;
    Adjuster& adjuster = question.Sheet.Adjusters.at(n);
    CountRange& range = question.Ranges.at(n);
    const auto count = [&] {
        return static_cast<int>(TypedCount("The number of steps", text, -MostCount, MostCount,
                                           Units().NumberSeparators));
    };
    switch (column) {
    case ColPitch:
        adjuster.Pitch = TypedLength("The pitch", text);
        break;
    case ColPart:
        adjuster.Part = NumberOfText(text, "The part", "", Units().NumberSeparators);
        break;
    case ColLow:
        range.Low = count();
        break;
    default:
        range.High = count();
    }
    if (const std::string fault = FaultOf(DesignNow().Data, adjuster); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    Change([&](StudyQuestions& questions) { questions.Setup = question; });
}

/// A change that is typed is wanted; "free" and "held" say what else becomes of a figure.
void SetupPanel::EditWanted(std::size_t n, int column, const std::string& text) {
    TurnsQuestion question = Questions().Setup;
    FigureWish& wish = question.Wishes.at(n);
    const FigureDisplay display = Display(question.Sheet.Figures.at(n));
    const auto typed = [&] {
        return NumberOfText(text, display.Title, display.UnitLabel, Units().NumberSeparators) /
               display.Factor;
    };
    if (column == ColHow) {
        wish.Free = text == FreeWord;
        wish.Change = 0;
    } else if (column == ColChange) {
        wish.Change = typed();
        wish.Free = false;
    } else {
        wish.Tolerance = typed();
        wish.Free = false;
    }
    Change([&](StudyQuestions& questions) { questions.Setup = question; });
}

void SetupPanel::AddRows(std::size_t /*table*/) {
    const SuspensionData& data = m_desk.Program.Document.Data;
    TurnsQuestion question = Questions().Setup;
    for (const PointCoordinate& coordinate : m_host.SelectedCoordinates()) {
        Adjuster shim;
        shim.Name = "Shim, " + NameOf(data, coordinate);
        shim.Kind = AdjusterKind::Shim;
        shim.Place = coordinate;
        if (const std::string fault = FaultOf(data, shim); !fault.empty()) {
            throw Failure(fnInvalidCall, fault);
        }
        question.Sheet.Adjusters.push_back(shim);
        question.Ranges.emplace_back();
    }
    Change([&](StudyQuestions& questions) { questions.Setup = question; });
}

void SetupPanel::RemoveRow(std::size_t table, std::size_t row) {
    Change([&](StudyQuestions& questions) {
        TurnsQuestion& question = questions.Setup;
        if (table == TabAdjusters) {
            EraseRow(question.Sheet.Adjusters, row);
            EraseRow(question.Ranges, row);
        } else {
            EraseRow(question.Sheet.Figures, row);
            EraseRow(question.Wishes, row);
        }
    });
}

void SetupPanel::Fill(std::size_t table) {
    const SuspensionData& data = m_desk.Program.Document.Data;
    Change([&](StudyQuestions& questions) {
        TurnsQuestion& question = questions.Setup;
        if (table == TabAdjusters || question.Sheet.Adjusters.empty()) {
            question.Sheet.Adjusters = AdjustersOf(data);
            question.Ranges.assign(question.Sheet.Adjusters.size(), {});
        }
        if (table == TabWanted || question.Sheet.Figures.empty()) {
            question.Sheet.Figures = SheetFiguresOf(data);
            question.Wishes.clear();
            for (const SheetFigure& figure : question.Sheet.Figures) {
                question.Wishes.push_back(
                    {!IsHeldUsually(figure), 0, UsualTolerance(Display(figure))});
            }
        }
    });
}

CStudyJob::Work SetupPanel::Prepare(const Design& design,
                                    std::shared_ptr<const StudySettings> settings) {
    const TurnsQuestion question = Questions().Setup;
    const bool wants =
        std::any_of(question.Wishes.begin(), question.Wishes.end(),
                    [](const FigureWish& wish) { return !wish.Free && wish.Change != 0; });
    return [this, design, settings, question, wants, charts = Charts()](const StudyWork& work,
                                                                        const auto&) {
        constexpr double SheetShare = 0.1; // of the whole work
        const SolveSettings solve = settings->Settings();
        CSampleRunner sheetRunner(PartOf(work, 0, wants ? SheetShare : 1));
        Answer answer{MakeSetupSheet(sheetRunner, design, question.Sheet, solve), {}, {}};
        if (wants && !answer.Sheet.Stopped) {
            CSampleRunner turnsRunner(PartOf(work, SheetShare, 1));
            answer.Turns = FindTurns(turnsRunner, design, question, solve);
            if (!answer.Turns->Reached.Values.empty()) {
                answer.Curves = CurvesOf(answer.Turns->Reached.Corner, "Set up", charts, solve);
            }
        }
        return [this, question, answer = std::move(answer)] { ShowAnswer(question, answer); };
    };
}

// --- What came out -----------------------------------------------------------------------------

std::string SetupPanel::WordsOf(const Answer& answer) {
    if (!answer.Turns) {
        return answer.Sheet.Stopped ? "Stopped"
                                    : "Each step is solved anew, with the spring's load as it is";
    }
    const TurnsAnswer& turns = *answer.Turns;
    if (turns.Stopped && !turns.Reached.Fault.empty()) {
        return "Stopped";
    }
    const std::string found = turns.Holds ? "All that is wanted is met"
                                          : "Not all that is wanted is met: see what is left over";
    return (turns.Stopped ? "Stopped. " : "") + found;
}

void SetupPanel::ShowAnswer(const TurnsQuestion& question, const Answer& answer) {
    ShowSheet(question, answer.Sheet);
    grdTurns.Grid.Reset();
    grdReached.Grid.Reset();
    m_reached.reset();
    Overlay = {};
    Overlay.Curves = answer.Curves;
    Front = answer.Turns ? 1 : 0;
    if (answer.Turns) {
        ShowTurns(question, *answer.Turns);
    }
    m_words = {Page.Caption,
               {"Ride height from the design: " +
                FormatChannelValue(Units(), question.Sheet.RideHeight, ucDisplacement) + " " +
                Units()[ucDisplacement].Label},
               {WordsOf(answer)}};
    AnswerCame(m_words.Found.front());
}

void SetupPanel::ShowSheet(const TurnsQuestion& question, const SetupSheet& sheet) {
    const SheetTable table = TableOf(sheet, question.Sheet, m_desk.Program.Channels, Units());
    std::vector<std::string> heads{"Adjuster"};
    std::vector<std::string> units{""};
    heads.insert(heads.end(), table.Titles.begin(), table.Titles.end());
    units.insert(units.end(), table.Units.begin(), table.Units.end());
    DataGrid& grid = grdSheet.Grid;
    LayOutTable(grid, heads, units, table.Lines.size());
    int row = grid.FixedRows();
    for (const SheetTable::Line& line : table.Lines) {
        grid.SetCell(
            row, 0,
            line.Name + (line.Step.empty() ? "" : " " + line.Step.substr(0, line.Step.find(", "))));
        int column = 1;
        for (const std::string& text : line.Texts) {
            grid.SetCell(row, column++, text);
        }
        if (!line.Fault.empty()) {
            grid.SetCell(row, 1, line.Fault);
            grid.SetNote(row, 1, line.Fault);
        }
        ++row;
    }
}

void SetupPanel::ShowTurns(const TurnsQuestion& question, const TurnsAnswer& turns) {
    const Separators& separators = Units().NumberSeparators;
    DataGrid& grid = grdTurns.Grid;
    LayOutTable(grid, std::array<std::string, 2>{"Adjuster", "Turn or put in"}, {},
                turns.Counts.size());
    int row = grid.FixedRows();
    for (std::size_t n = 0; n < turns.Counts.size(); ++n, ++row) {
        const Adjuster& adjuster = question.Sheet.Adjusters[n];
        grid.SetCell(row, 0, adjuster.Name);
        grid.SetCell(row, 1, TurnsText(adjuster, turns.Counts[n], separators));
    }
    if (turns.Reached.Fault.empty() && !turns.Reached.Values.empty()) {
        m_reached = turns.Reached.Corner;
    }
    DataGrid& reached = grdReached.Grid;
    LayOutTable(
        reached,
        std::array<std::string, 6>{"Figure", "Before", "After", "Change", "Wanted", "Left over"},
        {}, question.Sheet.Figures.size());
    row = reached.FixedRows();
    for (std::size_t n = 0; n < question.Sheet.Figures.size(); ++n, ++row) {
        const FigureDisplay display = Display(question.Sheet.Figures[n]);
        const FigureWish& wish = question.Wishes[n];
        const auto at = [&](const SheetState& state) {
            return n < state.Values.size() ? state.Values[n] : std::nullopt;
        };
        const std::optional<double> before = at(turns.Base);
        const std::optional<double> after = at(turns.Reached);
        reached.SetCell(row, 0, display.Title + " [" + display.UnitLabel + "]");
        reached.SetCell(row, 1, NumberText(display, before, separators));
        reached.SetCell(row, 2, NumberText(display, after, separators));
        if (before && after) {
            reached.SetCell(row, 3, NumberText(display, *after - *before, separators));
        }
        reached.SetCell(row, 4,
                        wish.Free ? FreeWord : NumberText(display, wish.Change, separators));
        if (n < turns.LeftOver.size() && turns.LeftOver[n]) {
            reached.SetCell(row, 5, NumberText(display, turns.LeftOver[n], separators));
        }
    }
}

void SetupPanel::cmdKeep_Click() {
    if (m_reached) {
        Keep("Set up", *m_reached);
    } else {
        labStatus.Caption = "Nothing is wanted yet, so there is no other setup to keep";
    }
}

} // namespace corvanta
