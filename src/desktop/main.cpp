#include "desktop/Desktop.h"
#include "desktop/GuardedApplication.h"
#include "desktop/ReportRun.h"
#include "frame/CommandLine.h"
#include "frame/StartRequest.h"
#include "platform/DiskFileServices.h"
#include "platform/NoWindowSystem.h"

#include <iostream>

namespace {

constexpr const char* Name = "corvanta";
constexpr int FailedStatus = 1;
constexpr int NoDisplayStatus = 2;

/// A run that shows nothing needs no window system at all, and has none: a bell of the toolkit
/// would ring on nothing.
int RunHidden(corvanta::FileServices& files, corvanta::ProcessServices& process) {
    corvanta::NoMessageBox box;
    corvanta::NoWindowSystem noWindows;
    corvanta::WindowSystem windows = noWindows.Services();
    corvanta::Application application(files, box, process, windows);
    static_cast<void>(application.AppStart());
    return 0;
}

/// The toolkit draws the pages of a report, and needs no display for it.
int PrintReport(int argc, char** argv, const std::string& path, corvanta::FileServices& files) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.warning=false"); // the errors are for what went wrong
    const corvanta::GuardedApplication application(argc, argv);
    corvanta::DesktopProcess process(argc, argv, corvanta::BuiltVersion());
    return corvanta::RunReport(files, process, path) ? 0 : FailedStatus;
}

} // namespace

int main(int argc, char** argv) {
    corvanta::DiskFileServices files;
    corvanta::MachineServices hidden(argc, argv, corvanta::BuiltVersion());
    const corvanta::StartRequest request = corvanta::ParseStart(hidden.Arguments(), files);
    if (request.Help || request.Version) {
        std::cout << (request.Help ? corvanta::HelpText(Name)
                                   : corvanta::VersionText(Name, hidden.Version()));
        return 0;
    }
    if (request.Batch && corvanta::HasNoGuiKey(hidden.CommandLine())) {
        return RunHidden(files, hidden);
    }
    if (!request.Report.empty()) {
        return PrintReport(argc, argv, request.Report, files);
    }
    if (!corvanta::HasDisplay()) {
        std::cerr << "corvanta: there is no display to open a window on. For a run without one use "
                     "corvanta-batch, or the key /nogui.\n";
        return NoDisplayStatus;
    }
    corvanta::GuardedApplication application(argc, argv);
    corvanta::DesktopProcess process(argc, argv, corvanta::BuiltVersion());
    corvanta::Desktop desktop(files, process);
    application.ReportTo(&desktop.Program().MessageService());
    if (desktop.Start() == corvanta::StartResult::Ended) {
        return 0;
    }
    return corvanta::GuardedApplication::exec();
}
