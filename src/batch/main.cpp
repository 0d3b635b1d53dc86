#include "frame/MSusp.h"
#include "frame/StartRequest.h"
#include "platform/DiskFileServices.h"
#include "platform/MachineServices.h"
#include "platform/NativeStart.h"
#include "platform/NoWindowSystem.h"
#include "platform/StandardErrorBox.h"

#include <iostream>

namespace {

constexpr int UsageStatus = 2;

constexpr const char* Name = "corvanta-batch";

} // namespace

int main(int argc, char** argv) {
    const corvanta::CNativeStart start(argc, argv);
    corvanta::MachineServices process(argc, argv, corvanta::BuiltVersion());
    corvanta::DiskFileServices files;
    const corvanta::StartRequest request = corvanta::ParseStart(process.Arguments(), files);
    if (request.Help || request.Version) {
        std::cout << (request.Help ? corvanta::HelpText(Name)
                                   : corvanta::VersionText(Name, process.Version()));
        return 0;
    }
    if (!request.Batch) {
        std::cerr << corvanta::BatchUsage(Name);
        return UsageStatus;
    }
    corvanta::StandardErrorBox box;
    corvanta::NoWindowSystem noWindows;
    corvanta::WindowSystem windows = noWindows.Services();
    corvanta::Application application(files, box, process, windows);
    static_cast<void>(application.AppStart()); // with a key on the command line it always ends
    return 0;
}
