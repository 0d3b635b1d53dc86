#pragma once

#include "shell/ChildWindow.h"
#include "shell/frmAbout.h"
#include "shell/frmAdjust.h"
#include "shell/frmCompare.h"
#include "shell/frmCustomChannels.h"
#include "shell/frmEditGeometry.h"
#include "shell/frmExport.h"
#include "shell/frmOptions.h"
#include "shell/frmPrint.h"
#include "shell/frmRecovery.h"
#include "shell/frmTarget.h"
#include "shell/frmWorkbench.h"

namespace corvanta {

/// The windows that open from the main one.
struct MainWindows {
    ChildWindow<frmEditGeometry> EditGeometry;
    ChildWindow<frmOptions> OptionsDialog;
    ChildWindow<frmExport> ExportDialog;
    ChildWindow<frmPrint> PrintDialog;
    ChildWindow<frmAdjust> AdjustDialog;
    ChildWindow<frmCustomChannels> CustomChannelsDialog;
    ChildWindow<frmRecovery> RecoveryDialog;
    ChildWindow<frmCompare> CompareWindow;
    ChildWindow<frmTarget> TargetDialog;
    ChildWindow<frmWorkbench> Workbench;
    frmAbout About;

    /// Lets go of the windows that were closed.
    void ReleaseClosedWindows() {
        const auto release = [](auto&... windows) { (windows.Release(), ...); };
        release(EditGeometry, OptionsDialog, ExportDialog, PrintDialog, AdjustDialog,
                CustomChannelsDialog, RecoveryDialog, CompareWindow, TargetDialog, Workbench);
    }
};

} // namespace corvanta
