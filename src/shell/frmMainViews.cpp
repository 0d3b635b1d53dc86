// What the main window shows: the result area, the selection strip, menus, toolbar, status bar.

#include "shell/frmMain.h"

#include "results/DynamicsReport.h"
#include "results/MDisplay3d.h"
#include "results/MDisplayTable.h"
#include "results/PointsTable.h"
#include "shell/ComparedLines.h"

#include <algorithm>
#include <array>
#include <optional>

namespace corvanta {

namespace {

bool IsTableView(std::int32_t view) {
    return (view >= vwAntis && view <= vwLinkLengths) || view == vwQuadraticCoefficients;
}

bool IsChannelTable(std::int32_t view) {
    return view >= vwAntis && view <= vwCustomTable;
}

/// The views with the selection strip.
bool HasStrip(std::int32_t view) {
    return (IsTableView(view) && view != vwLinkLengths) || view == vwPlot || view == vw3d;
}

/// Keeps the message of a view that has nothing to show.
class KeptWords final : public MessageBox {
  public:
    std::string Prompt;

    int Show(const std::string& prompt, int /*style*/, const std::string& /*title*/) override {
        Prompt = prompt;
        return maOK;
    }
};

} // namespace

/// A file that could not be read leaves the chosen view as it was, with no document to show in it.
std::int32_t frmMain::ShownView() const {
    return m_desk.Program.Document.DataLoaded ? m_desk.Program.Settings.View : std::int32_t{vwNone};
}

void frmMain::ShowViewPanels() {
    const bool loaded = m_desk.Program.Document.DataLoaded;
    const std::int32_t view = ShownView();
    panEmptyTable.Visible = view == vwCustomTable && m_desk.Program.CustomChannels.Ids().empty();
    grdDisplay.Visible = IsTableView(view) && !panEmptyTable.Visible;
    chtChart.Visible = view == vwPlot;
    if (!chtChart.Visible) {
        m_compared.reset();
    }
    if (chtSurface != nullptr) {
        chtSurface->ClearSeries();
    }
    picResults.Visible = view == vwDynamicsReport || view == vw3d;
    picResults.Inverted = view == vw3d;
    picComboContainer.Visible = HasStrip(view);
    panFailure.Visible = view == vwNone && loaded;
    labFailurePlace.Visible = panFailure.Visible && !labFailurePlace.Caption.empty();
    labBanner.Visible = view != vwNone && !labBanner.Caption.empty();
    panFailure.Caption = m_desk.Current.LastFailure().Message;
    panStart.Visible = view == vwNone && !loaded;
}

void frmMain::DisplayView(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                          int wheel, int rack) {
    if (!m_desk.Program.Document.DataLoaded) {
        return;
    }
    const bool gridVisible = grdDisplay.Visible;
    grdDisplay.Visible = false; // nothing flickers while the grid is filled
    ViewSettings& settings = m_desk.Program.Settings;
    if (settings.View != m_viewLastDisplayed) {
        viewArgument = view == vwPlot ? m_channelLastPlotted : 0;
        settings.ViewArgument = viewArgument;
    }
    m_viewLastDisplayed = settings.View;
    if (view == vwPlot) {
        viewArgument = std::max(viewArgument, 1);
        if (settings.View == vwPlot) {
            settings.ViewArgument = std::max(settings.ViewArgument, 1); // an export asks by it
        }
        m_channelLastPlotted = settings.ViewArgument;
    }
    SetupViewControls(view, viewArgument, variable, wheel, rack);
    FillResultArea(view, viewArgument, variable, wheel, rack);
    grdDisplay.Visible = gridVisible && !panFailure.Visible;
}

void frmMain::FillResultArea(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                             int wheel, int rack) {
    Program& program = m_desk.Program;
    std::optional<ViewTable> table;
    KeptWords words;
    Messages silent(words);
    ResetGrid(grdDisplay);
    picResults.Text.clear();
    if (IsChannelTable(view)) {
        table = BuildViewTable(program, view, variable, rack, wheel, program.CustomChannels);
    } else if (view == vwCoordinates) {
        SetupPointsTableBlank(grdDisplay, program.Document, program.Units, false);
        DataPointsGet(grdDisplay, program.Document, program.Units, wheel, rack);
    } else if (view == vwLinkLoads) {
        const bool loads = HasLinkLoads(program.Document.Data.SpringMechanism);
        table = ShowLinkLoadView(program, viewArgument, rack, loads ? m_desk.Messages : silent,
                                 m_linkLoadsWarned);
    } else if (view == vwLinkLengths) {
        table = ShowLinkLengths(program);
    } else if (view == vwDynamicsReport) {
        picResults.Text = ShowDynamicsReport(program, silent);
    } else if (view == vwQuadraticCoefficients) {
        table = ShowQuadraticCoefficients(program);
    } else if (view == vwPlot && chtSurface != nullptr) {
        ShowPlot(viewArgument, variable, wheel, rack);
    } else if (view == vw3d) {
        DrawAgain();
    }
    if (table) {
        ShowTable(grdDisplay, view, *table);
        MarkStaticRow(view, variable);
    }
    if (!words.Prompt.empty()) {
        TellNothingToShow(view, words.Prompt);
    }
}

/// What is asked for from elsewhere, to be printed, is the document's line alone.
void frmMain::ShowPlot(std::int32_t viewArgument, std::int32_t variable, int wheel, int rack) {
    const Program& program = m_desk.Program;
    PlotDisplay(m_plot, *chtSurface, program, viewArgument, variable, rack, wheel);
    chtSurface->Others.clear();
    if (m_refreshBusy) {
        if (!m_compared) {
            m_compared = std::make_unique<Suspension>();
        }
        chtSurface->Others = ComparedLines(*m_compared, program, m_desk.Current.Study(),
                                           {m_plot.PlotChannelY, variable, rack, wheel});
    }
}

/// The page keeps the words; the message is for the first look alone.
void frmMain::TellNothingToShow(std::int32_t view, const std::string& words) {
    grdDisplay.Visible = picResults.Visible = false;
    panFailure.Visible = true;
    panFailure.Caption = words;
    // What is asked for from elsewhere, to be printed, is told every time.
    if (m_toldViews.insert(view).second || !m_refreshBusy) {
        m_desk.Messages.ShowMessage(words);
    }
}

void frmMain::DrawAgain() {
    const Program& program = m_desk.Program;
    if (picSurface != nullptr && program.Document.ResultsValid) {
        Draw3d(Wireframe, *picSurface,
               PositionAt(program.Document, program.Settings.ViewRack, program.Settings.ViewWheel),
               program.Options);
    }
}

void frmMain::chtChart_Click(double x, double y) {
    if (chtSurface != nullptr) {
        PlotClick(m_plot, *chtSurface, m_desk.Program, x, y);
    }
}

void frmMain::MarkStaticRow(std::int32_t view, std::int32_t variable) {
    // Below two rows of heads the rows are the steps, which begin with 2.
    if (IsChannelTable(view) && variable == vvAlongRackTravel) {
        grdDisplay.MarkedRow = m_desk.Program.Document.StaticRack;
    } else if (IsChannelTable(view) || view == vwLinkLoads) {
        grdDisplay.MarkedRow = m_desk.Program.Document.StaticWheel;
    }
}

void frmMain::SetupViewControls(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                                int wheel, int rack) {
    for (ListControl* list : {&cboType, &cboWheel, &cboRack}) {
        list->Clear();
    }
    FillPositionLists();
    FillTypeList(view);
    ShowSelectionControls(view, variable);
    SelectPositions(view, viewArgument, wheel, rack);
    for (const ListControl* list : {&cboType, &cboWheel, &cboRack}) {
        if (list->Visible && list->Enabled) {
            Focus = list;
        }
    }
    optRack.Selected = m_desk.Program.Settings.ViewVariable == vvAlongRackTravel;
    optWheel.Selected = m_desk.Program.Settings.ViewVariable == vvAlongWheelTravel;
}

void frmMain::FillPositionLists() {
    const Suspension& document = m_desk.Program.Document;
    if (!document.ResultsValid) {
        return; // there are no positions to choose from
    }
    constexpr int FirstStep = 2;
    const FundamentalUnits& units = m_desk.Program.Units;
    for (int step = FirstStep; step <= document.NW + 1; ++step) {
        cboWheel.Add(FormatChannelValue(
            units, document.WheelStates(FirstStep, step).Channels.Cell(chWheelTravel),
            ucDisplacement));
    }
    const double staticY = document.StaticPoints()[ptTRI].Y;
    for (int step = document.NR + 1; step >= FirstStep; --step) {
        const double travel = document.WheelStates(step, FirstStep).Points[ptTRI].Y - staticY;
        cboRack.Add(FormatChannelValue(units, travel, ucDisplacement));
    }
}

void frmMain::FillTypeList(std::int32_t view) {
    if (view == vwLinkLoads) {
        labType.Caption = "Show link loads for:";
        for (int subView = 1; subView <= LinkLoadViewCount; ++subView) {
            cboType.Add(LinkLoadViewName(subView, m_desk.Program.Document.Data), subView);
        }
    } else if (view == vwPlot) {
        labType.Caption = "Plot channel:";
        for (int id = 1; id <= ChannelCount; ++id) {
            if (id != chLinkLoads) {
                cboType.Add(m_desk.Program.Channels[id].Title, id);
            }
        }
    }
}

void frmMain::ShowSelectionControls(std::int32_t view, std::int32_t variable) {
    const bool both = view == vwCoordinates || view == vw3d;
    const bool fixed = IsChannelTable(view) || view == vwPlot;
    const bool type = view == vwLinkLoads || view == vwPlot;
    const bool wheel = both || (fixed && variable == vvAlongRackTravel);
    const bool rack = both || (fixed && variable == vvAlongWheelTravel);
    labType.Visible = cboType.Visible = type;
    labWheel.Visible = cboWheel.Visible = labUpDown.Visible = wheel;
    labRack.Visible = cboRack.Visible = labLeftRight.Visible = rack;
    optRack.Visible = optWheel.Visible = fixed;
    chk3dDrawAxes.Visible = chk3dAutoScale.Visible = view == vw3d;
}

void frmMain::SelectPositions(std::int32_t view, std::int32_t viewArgument, int wheel, int rack) {
    const auto select = [](ListControl& list, int index) {
        list.Select(index >= 0 && index < list.Count() ? index : 0);
    };
    if (cboWheel.Visible) {
        select(cboWheel, wheel - 2);
    }
    if (cboRack.Visible) {
        select(cboRack, cboRack.Count() - rack + 1);
    }
    if (view == vwLinkLoads) {
        select(cboType, std::max(viewArgument, 1) - 1);
    } else if (view == vwPlot) {
        const int channel = std::max(viewArgument, 1);
        select(cboType, channel < chLinkLoads ? channel - 1 : channel - 2);
    }
    // What the lists show now is what a later choice is compared with.
    m_typeText = cboType.Text();
    m_wheelText = cboWheel.Text();
    m_rackText = cboRack.Text();
}

void frmMain::UpdateMenus() {
    const Program& program = m_desk.Program;
    const bool results = program.Document.ResultsValid && program.Document.DataLoaded;
    const std::int32_t mechanism = program.Document.Data.SpringMechanism;
    for (MenuItem& item : mnuView.Items) {
        if (item.Command == mcView) {
            item.Enabled = results;
            item.Checked = item.Tag == ShownView();
        }
    }
    if (results && mechanism == smNone) {
        for (const std::int32_t view :
             {vwSpringDetails, vwBarDetails, vwDynamicsReport, vwQuadraticCoefficients}) {
            ItemOf(mnuView, mcView, view).Enabled = false;
        }
    }
    ItemOf(mnuView, mcView, vwLinkLoads).Enabled = results && HasLinkLoads(mechanism);
    const History& steps = m_desk.Current.Steps();
    const auto name = [&](MainCommand command, const char* caption, const std::string& step) {
        MenuItem& item = ItemOf(mnuEdit, command);
        item.Enabled = !step.empty();
        item.Caption = caption + (step.empty() ? "" : " " + ReplaceAll(step, "&", "&&"));
    };
    name(mcUndo, "&Undo", steps.UndoName());
    name(mcRedo, "&Redo", steps.RedoName());
    ItemOf(mnuFile, mcPrint).Enabled = program.Document.ResultsValid;
    ItemOf(mnuEdit, mcAdjust).Enabled = program.Document.ResultsValid;
    const std::int32_t view = ShownView();
    mnuExport.Enabled =
        (view >= vwAntis && view <= vwQuadraticCoefficients) || view == vwPlot || view == vw3d;
    ItemOf(mnuFile, mcExportMenu).Enabled = mnuExport.Enabled;
    ItemOf(mnuEdit, mcCopy).Enabled =
        view != vwNone && view != vwDynamicsReport && view != vwPlot && view != vw3d;
}

void frmMain::UpdateToolbar() {
    for (ToolButton& button : tbrMain) {
        switch (button.Command) {
        case mcNew:
        case mcOpen:
        case mcSave:
        case mcPrint:
            button.Enabled = ItemOf(mnuFile, static_cast<MainCommand>(button.Command)).Enabled;
            break;
        case mcExportComponent:
            button.Enabled = mnuExport.Enabled;
            break;
        case mcView:
            button.Enabled = ItemOf(mnuView, mcView, button.Tag).Enabled;
            button.Pressed = button.Tag == ShownView();
            break;
        default:
            break;
        }
    }
}

void frmMain::DisplayFormCaption() {
    // The name of a file that could not be read is not the name of what is there.
    const Program& program = m_desk.Program;
    const std::string name =
        program.Document.DataLoaded ? FileServices::BaseName(program.DocumentPath) : "";
    Caption = "Corvanta " + m_desk.Process.Version().Text();
    if (!name.empty()) {
        Caption += " - " + name + " - [" + std::string(ViewName(ShownView())) + "]";
    }
}

std::string frmMain::PositionWords(int wheelStep, int rackStep) const {
    return corvanta::PositionWords(m_desk.Program.Document, m_desk.Program.Units, wheelStep,
                                   rackStep);
}

std::string frmMain::FailureNote() const {
    const Suspension& document = m_desk.Program.Document;
    const CalculationFailure& failure = m_desk.Current.LastFailure();
    const std::string position = PositionWords(failure.WheelStep, failure.RackStep);
    const std::string rows = RowWords(document.Catalogue, document.FaultyPoints);
    return (position.empty() ? "" : "Stopped at " + position) +
           (position.empty() || rows.empty() ? "" : ": ") +
           (position.empty() && !rows.empty() ? "Look at " : "") + rows;
}

void frmMain::DisplayStatus() {
    const Program& program = m_desk.Program;
    const FundamentalUnits& units = program.Units;
    stbMain.Document = "No suspension";
    if (program.Document.DataLoaded) {
        const std::string& path = program.DocumentPath;
        stbMain.Document = path.empty() ? "New suspension" : FileServices::FileName(path);
    }
    stbMain.Document += program.Modified ? "  modified" : "";
    const bool strip = picComboContainer.Visible;
    const bool rack = cboRack.Visible || program.Settings.View == vwLinkLoads;
    stbMain.Position = PositionWords(strip && cboWheel.Visible ? program.Settings.ViewWheel : 0,
                                     strip && rack ? program.Settings.ViewRack : 0);
    stbMain.Units =
        units[ucDisplacement].Label + "  " + units[ucForce].Label + "  " + units[ucRate].Label;
    stbMain.Note.clear();
    if (m_unprotected && program.Modified) {
        stbMain.Note = "No recovery copy could be written: save your work yourself";
    } else if (panFailure.Visible) {
        stbMain.Note = FailureNote();
    } else if (labBanner.Visible) {
        stbMain.Note = m_desk.Current.Displaced().Note;
    }
}

} // namespace corvanta
