#include "shell/MainControls.h"

#include "model/Views.h"

#include <algorithm>
#include <cassert>

namespace corvanta {

namespace {

MenuItem Item(const char* caption, MainCommand command, int tag = 0) {
    MenuItem item;
    item.Caption = caption;
    item.Command = command;
    item.Tag = tag;
    return item;
}

MenuItem Line() {
    return Item("-", mcNone);
}

MenuItem ViewItem(const char* caption, std::int32_t view) {
    return Item(caption, mcView, view);
}

Menu MenuOf(const char* caption, std::vector<MenuItem> items) {
    Menu menu;
    menu.Caption = caption;
    menu.Items = std::move(items);
    return menu;
}

void SetUpMenus(MainControls& controls) {
    // The recent files and their lines come between the last two entries of the file menu.
    controls.mnuFile =
        MenuOf("&File", {Item("&New", mcNew), Item("&Open...", mcOpen), Item("&Save", mcSave),
                         Item("Save &As...", mcSaveAs), Item("Recover &Unsaved Work...", mcRecover),
                         Line(), Item("&Export", mcExportMenu), Line(), Item("&Print...", mcPrint),
                         Item("E&xit", mcExit)});
    controls.mnuExport = MenuOf("&Export", {Item("To &Sorvent Component...", mcExportComponent),
                                            Item("&Results...", mcExportResults),
                                            Item("&DXF Geometry...", mcExportDXF)});
    controls.mnuEdit =
        MenuOf("&Edit", {Item("&Undo", mcUndo), Item("&Redo", mcRedo), Line(), Item("Copy", mcCopy),
                         Line(), Item("&Suspension Properties...", mcProperties),
                         Item("Adjust Geometry...", mcAdjust)});
    controls.mnuView = MenuOf(
        "&View",
        {ViewItem("&Anti-Dive, Squat && Roll", vwAntis),
         ViewItem("L&ateral Geometry", vwLateralGeometry),
         ViewItem("&Plan && Longitudinal Geometry", vwPlanGeometry),
         ViewItem("&Spring Details", vwSpringDetails),
         ViewItem("&Anti-Roll Bar Details", vwBarDetails),
         ViewItem("&Wishbone && Driveshaft Angles", vwAngles),
         ViewItem("&Custom Table", vwCustomTable), Line(), ViewItem("&Plots", vwPlot), Line(),
         ViewItem("&3d", vw3d), Line(), ViewItem("&Bump && Droop Coordinates", vwCoordinates),
         ViewItem("Link L&oads", vwLinkLoads), ViewItem("Link &Lengths", vwLinkLengths),
         ViewItem("&Dynamics Report", vwDynamicsReport),
         ViewItem("&Quadratic Coefficients", vwQuadraticCoefficients)});
    controls.mnuTools =
        MenuOf("&Tools",
               {Item("&Options...", mcOptions), Item("Define Custom Table...", mcDefineCustomTable),
                Line(), Item("&Workbench", mcWorkbench), Item("&Compare...", mcCompare)});
#ifndef NDEBUG
    controls.mnuTools.Items.push_back(Item("Test", mcTest)); // there is no self test to run yet
    controls.mnuTools.Items.back().Enabled = false;
#endif
    controls.mnuHelp =
        MenuOf("&Help", {Item("Corvanta &Help Topics", mcHelpTopics),
                         Item("&Workbench Help", mcWorkbenchHelp),
                         Item("Workbench &Tour", mcWorkbenchTour), Item("&About...", mcAbout)});
}

void SetUpSelectionStrip(MainControls& controls) {
    constexpr int ListWidth = 1000;
    constexpr int TypeWidth = 3000;
    controls.labWheel.Caption = "Wheel travel :";
    controls.cboWheel.ToolTip = "Use Up/Down arrow keys";
    controls.cboWheel.Width = ListWidth;
    controls.labRack.Caption = "Rack travel:";
    controls.cboRack.ToolTip = "Use Left/Right arrow keys";
    controls.cboRack.Width = ListWidth;
    controls.cboType.Width = TypeWidth;
    controls.optRack.Caption = "Fix &wheel travel";
    controls.optWheel.Caption = "Fix &rack travel";
    controls.chk3dDrawAxes.Caption = "Draw &Axes";
    controls.chk3dAutoScale.Caption = "Auto&Scale";
}

ToolButton Button(const char* key, const char* toolTip, MainCommand command, int tag = 0) {
    ToolButton button;
    button.Key = key;
    button.Image = key;
    button.ToolTip = toolTip;
    button.Command = command;
    button.Tag = tag;
    button.TwoState = command == mcView;
    return button;
}

} // namespace

void SetUpMainControls(MainControls& controls) {
    SetUpMenus(controls);
    SetUpSelectionStrip(controls);
    for (Control* area :
         {&controls.picComboContainer, &controls.chtChart,
          static_cast<Control*>(&controls.picResults), &controls.panStart, &controls.panFailure,
          &controls.panEmptyTable, &controls.labFailurePlace, &controls.labBanner}) {
        area->Visible = false;
    }
}

std::vector<ToolButton> MainToolbar() {
    std::vector<ToolButton> buttons{
        {},
        Button("new", "New File", mcNew),
        Button("open", "Open File", mcOpen),
        Button("save", "Save File", mcSave),
        Button("print", "Print", mcPrint),
        Button("export", "Export Geometry To Sorvent Component", mcExportComponent),
        {},
        Button("properties", "Suspension Properties", mcProperties),
        Button("adjust", "Adjust Geometry", mcAdjust),
        Button("options", "Options", mcOptions),
        Button("workbench", "Workbench", mcWorkbench),
        {},
        Button("customtable", "View Custom Table", mcView, vwCustomTable),
        Button("plot", "View Plot", mcView, vwPlot),
        Button("3d", "View 3d", mcView, vw3d),
        Button("deflectedgeo", "View Bump and Droop Coordinates", mcView, vwCoordinates),
        Button("lengths", "View Link Lengths", mcView, vwLinkLengths),
        Button("quad", "View Quadratic Coefficients", mcView, vwQuadraticCoefficients)};
    for (ToolButton& button : buttons) {
        if (button.Key == "adjust") {
            button.Image = "wrench2";
        }
    }
    return buttons;
}

MenuItem& ItemOf(Menu& menu, MainCommand command, int tag) {
    const auto found = std::find_if(menu.Items.begin(), menu.Items.end(), [&](const auto& item) {
        return item.Command == command && item.Tag == tag;
    });
    assert(found != menu.Items.end());
    return *found;
}

} // namespace corvanta
