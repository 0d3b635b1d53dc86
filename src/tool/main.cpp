#include "frame/MSusp.h"
#include "frame/StartRequest.h"
#include "model/Failure.h"
#include "platform/NativeStart.h"
#include "tool/Tool.h"

#include <iostream>

namespace {

constexpr const char* Name = "corvanta-tool";

} // namespace

int main(int argc, char** argv) {
    const corvanta::CNativeStart start(argc, argv);
    corvanta::Tool tool;
    CLI::App app("Suspension documents on the command line: results, drawings, studies.", Name);
    app.set_version_flag("--version", Name + (" " + corvanta::BuiltVersion().Text()));
    app.require_subcommand(1);
    corvanta::AddExport(app, tool);
    corvanta::AddDxf(app, tool);
    corvanta::AddCheck(app, tool);
    corvanta::AddInfo(app, tool);
    corvanta::AddConvert(app, tool);
    corvanta::AddSweep(app, tool);
    corvanta::AddStudy(app, tool);
    corvanta::AddReport(app, tool);
    corvanta::AddNames(app, tool);
    try {
        app.parse(argc, argv);
        if (!std::cout.flush()) {
            tool.Report(Name, "Nothing can be written to standard output");
        }
    } catch (const CLI::ParseError& error) {
        if (argc > 1 && *argv[1] != '-' && app.get_subcommands().empty()) {
            tool.Report(argv[1], "there is no such command; --help lists them");
            return corvanta::tsUsage;
        }
        return app.exit(error) == 0 ? corvanta::tsDone : corvanta::tsUsage;
    } catch (...) {
        tool.Report(Name, corvanta::FailureInFlight().Description());
    }
    return tool.Failed ? corvanta::tsFailed : corvanta::tsDone;
}
