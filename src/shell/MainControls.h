#pragma once

#include "platform/Controls.h"
#include "platform/DataGrid.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// What an entry of a menu or a button of the toolbar of the main window does.
enum MainCommand : int {
    mcNone,
    mcNew,
    mcOpen,
    mcSave,
    mcSaveAs,
    mcRecover,    ///< the unsaved work of earlier runs, and what was set aside
    mcExportMenu, ///< opens the menu of exports
    mcExportComponent,
    mcExportResults,
    mcExportDXF,
    mcPrint,
    mcRecentFile, ///< the tag is the index in the list of recent files
    mcExit,
    mcUndo,
    mcRedo,
    mcCopy,
    mcProperties,
    mcAdjust,
    mcView, ///< the tag is the number of the view
    mcWorkbench,
    mcCompare,
    mcAddVariants,
    mcOpenStudy,
    mcSaveStudy,
    mcSaveStudyAs,
    mcOptions,
    mcDefineCustomTable,
    mcTest,
    mcHelpTopics,
    mcWorkbenchHelp,
    mcWorkbenchTour,
    mcAbout,
};

/// The area that shows drawings and the dynamics report.
struct PictureBox : Control {
    bool Inverted = false; ///< white on black
    std::string Text;      ///< the report; lines end CR LF
};

/// The parts of the status bar.
struct StatusBar {
    std::string Document; ///< name of the document, and whether it was modified
    std::string Position; ///< the wheel and rack position that the view is about
    std::string Units;    ///< the units in force
    std::string Note;     ///< where the last calculation failed, or what was done last
};

/// The controls of the main window, by their names. A window system shows them and puts what the
/// user chose into them before it tells the window of the event.
struct MainControls {
    // Menus
    Menu mnuFile;
    Menu mnuExport; ///< below the file menu
    Menu mnuEdit;
    Menu mnuView;
    Menu mnuTools;
    Menu mnuHelp;
    std::vector<MenuItem> mnuFMRU; ///< the recent files, between lines; see `CMRUFileList`
    std::vector<ToolButton> tbrMain;

    // Selection strip
    Control picComboContainer;
    Control labType;
    ListControl cboType;
    Control labWheel;
    ListControl cboWheel;
    Control labUpDown; ///< the up and down arrows
    Control labRack;
    ListControl cboRack;
    Control labLeftRight; ///< the left and right arrows
    OptionButton optRack;
    OptionButton optWheel;
    CheckBox chk3dDrawAxes;
    CheckBox chk3dAutoScale;

    // Result area: at most one of these is visible
    DataGrid grdDisplay;
    Control chtChart;
    PictureBox picResults;
    Control panStart;        ///< what to do while there is no document
    Control panEmptyTable;   ///< a custom table without a channel
    Control panFailure;      ///< why the last calculation failed, its caption
    Control labFailurePlace; ///< below it: the rows and the position that it is about
    Control labBanner;       ///< above the results: what of them can't be trusted

    StatusBar stbMain;
};

/// Captions, hints and commands of a new main window, nothing visible. The toolbar is built apart.
void SetUpMainControls(MainControls& controls);

/// The buttons of the toolbar.
[[nodiscard]] std::vector<ToolButton> MainToolbar();

/// The entry of a menu with a command and a tag. It must be there.
[[nodiscard]] MenuItem& ItemOf(Menu& menu, MainCommand command, int tag = 0);

} // namespace corvanta
