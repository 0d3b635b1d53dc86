#include "shell/frmMain.h"

#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "persistence/MData.h"
#include "results/MDisplayTable.h"
#include "results/PointsTable.h"

#include <optional>

namespace corvanta {

namespace {

/// Holds a flag set for the length of a scope.
class BusyScope {
  public:
    explicit BusyScope(bool& flag) : m_flag(flag) { m_flag = true; }
    ~BusyScope() { m_flag = false; }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;
    BusyScope(BusyScope&&) = delete;
    BusyScope& operator=(BusyScope&&) = delete;

  private:
    bool& m_flag;
};

} // namespace

frmMain::frmMain(Program& program, FileServices& files, Messages& messages,
                 ProcessServices& process)
    : m_program(program),
      m_files(files),
      m_messages(messages),
      m_process(process) {}

void frmMain::RefreshGUI(bool resetPosition) {
    try {
        Refresh(resetPosition);
    } catch (...) {
        m_messages.ShowMessage("There was an error while displaying results. Error was: " +
                                   FailureInFlight().Description(),
                               msExclamation);
    }
}

void frmMain::ShowCurrentView() {
    Refresh(false);
}

void frmMain::Refresh(bool resetPosition) {
    if (m_refreshBusy) {
        return;
    }
    const BusyScope busy(m_refreshBusy);
    Suspension& document = m_program.Document;
    ViewSettings& settings = m_program.Settings;
    if (!document.ResultsValid && document.DataLoaded) {
        RunCalculation(document, m_program.Channels, m_messages);
        if (settings.View == vwNone) {
            settings.View = vwCoordinates;
        }
    }
    const bool usable = document.GeometryValid && document.ResultsValid;
    if (!usable && settings.View != vwNone) {
        m_process.Beep();
    }
    if (!usable || !document.DataLoaded) {
        settings.View = vwNone;
    }
    ResetPosition(resetPosition);
    DisplayView(settings.View, settings.ViewArgument, settings.ViewVariable, settings.ViewWheel,
                settings.ViewRack);
}

void frmMain::ResetPosition(bool always) {
    const Suspension& document = m_program.Document;
    ViewSettings& settings = m_program.Settings;
    if (always || settings.ViewWheel <= 0 || settings.ViewWheel > document.NW + 1) {
        settings.ViewWheel = document.StaticWheel;
    }
    if (always || settings.ViewRack <= 0 || settings.ViewRack > document.NR + 1) {
        settings.ViewRack = document.StaticRack;
    }
}

void frmMain::DisplayView(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                          int wheel, int rack) {
    if (!m_program.Document.DataLoaded) {
        return;
    }
    ViewSettings& settings = m_program.Settings;
    if (settings.View != m_viewLastDisplayed) {
        viewArgument = view == vwPlot ? m_channelLastPlotted : 0;
        settings.ViewArgument = viewArgument;
    }
    m_viewLastDisplayed = settings.View;
    if (view == vwPlot) {
        m_channelLastPlotted = settings.ViewArgument;
    }
    FillGridWithView(view, viewArgument, variable, wheel, rack);
}

void frmMain::FillGridWithView(std::int32_t view, std::int32_t viewArgument, std::int32_t variable,
                               int wheel, int rack) {
    std::optional<ViewTable> table;
    ResetGrid(grdDisplay);
    switch (view) {
    case vwAntis:
    case vwLateralGeometry:
    case vwPlanGeometry:
    case vwSpringDetails:
    case vwBarDetails:
    case vwAngles:
    case vwCustomTable:
        table = BuildViewTable(m_program, view, variable, rack, wheel, m_program.CustomChannels);
        break;
    case vwCoordinates:
        SetupPointsTableBlank(grdDisplay, m_program.Document, m_program.Units, false);
        DataPointsGet(grdDisplay, m_program.Document, m_program.Units, wheel, rack);
        break;
    case vwLinkLoads:
        table = ShowLinkLoadView(m_program, viewArgument, rack, m_messages, m_linkLoadsWarned);
        break;
    case vwLinkLengths:
        table = ShowLinkLengths(m_program);
        break;
    case vwDynamicsReport:
        if (!m_program.Document.DynamicsValid) {
            m_messages.ShowMessage("Current settings are not valid for this report.");
        }
        break;
    case vwQuadraticCoefficients:
        table = ShowQuadraticCoefficients(m_program);
        break;
    default:
        break;
    }
    if (table) {
        ShowTable(grdDisplay, view, *table);
    }
}

void frmMain::FileOpen(const std::string& path) {
    std::string reason;
    bool opened = false;
    ResetDocument(m_program.Document, m_program.Settings);
    try {
        opened = DataLoad(m_program.Document, m_program.Channels, path, true, m_program.Units,
                          m_files, m_messages);
    } catch (...) {
        reason = FailureInFlight().Description();
    }
    if (!opened) {
        m_messages.ShowMessage("There was an error while processing file\r\rError was: " + reason,
                               msExclamation);
        return;
    }
    m_program.Options.LastFolder = FileServices::ParentFolder(path);
    m_program.DocumentPath = path;
    if (m_program.Settings.View == vwNone) {
        m_program.Settings.View = vwCoordinates;
    }
    RefreshGUI(true);
}

void frmMain::FileSave(const std::string& path) {
    try {
        const std::string folder = FileServices::ParentFolder(path);
        const std::string savedPath = folder + FileServices::BaseName(path) + ".WSP";
        bool written = false;
        if (!DataWrite(written, m_program.Document, savedPath, m_program.Units, m_files,
                       m_messages)) {
            throw Failure(fnFileAccess, "The file has no name");
        }
        m_program.Options.LastFolder = folder;
        m_program.DocumentPath = savedPath;
        RefreshGUI(false);
    } catch (...) {
        m_messages.ShowMessage("There was an error while processing file\r\rError was " +
                                   FailureInFlight().Description(),
                               msExclamation);
    }
}

} // namespace corvanta
