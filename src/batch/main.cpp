#include "batch/StandardErrorBox.h"
#include "frame/MSusp.h"
#include "platform/DiskFileServices.h"
#include "platform/MachineServices.h"
#include "platform/NoWindowSystem.h"

#include <iostream>

namespace {

constexpr int UsageStatus = 2;

constexpr const char* Usage =
    "usage: corvanta-batch /input=PATH /output=PATH /type=TYPE [/table=VIEW] [/variable=1|2]\n"
    "                      [/hdr] [/nogui]\n"
    "\n"
    "Calculates the suspension document INPUT and writes its results to OUTPUT. A backslash parts\n"
    "the folders of a path on every platform: /input=cars\\front.WSP\n"
    "\n"
    "  /type      1 all channels, 2 one table, 3 the selected views,\n"
    "             5 component file 1.1, 6 component file 2.2\n"
    "  /table     with /type=2 the view: 1 to 12, or 16 for all channels\n"
    "  /variable  1 along rack travel (the default), 2 along wheel travel\n"
    "  /hdr       begin with a header: program, document, date and time\n"
    "  /nogui     show no message; a run that failed leaves no output file\n";

} // namespace

int main(int argc, char** argv) {
    corvanta::MachineServices process(argc, argv, corvanta::BuiltVersion());
    if (!corvanta::HasCommandLineKeys(process.CommandLine())) {
        std::cerr << Usage;
        return UsageStatus;
    }
    corvanta::DiskFileServices files;
    corvanta::StandardErrorBox box;
    corvanta::NoWindowSystem noWindows;
    corvanta::WindowSystem windows = noWindows.Services();
    corvanta::Application application(files, box, process, windows);
    static_cast<void>(application.AppStart()); // with a key on the command line it always ends
    return 0;
}
