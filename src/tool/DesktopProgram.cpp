#include "tool/DesktopProgram.h"

#include "frame/MSusp.h"
#include "model/Failure.h"
#include "platform/DiskFileServices.h"
#include "platform/MachineServices.h"

#include <cstdlib>

#ifndef _WIN32
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace corvanta {

#ifdef _WIN32

void KeepSettingsIn(const std::string& /*folder*/) {
    throw Failure(fnInvalidCall, "Reports need the desktop program, which this system has not");
}

bool RunDesktopProgram(const std::vector<std::string>& /*arguments*/) {
    return false;
}

#else

void KeepSettingsIn(const std::string& folder) {
    if (setenv("XDG_CONFIG_HOME", folder.c_str(), 1) != 0) {
        throw Failure(fnInternal, "The settings of the report can't be made");
    }
}

bool RunDesktopProgram(const std::vector<std::string>& arguments) {
    std::string program = MachineServices(0, nullptr, BuiltVersion()).ProgramFolder() + "/corvanta";
    if (!DiskFileServices().FileExists(program)) {
        program = "corvanta"; // which is looked for on the path
    }
    std::vector<char*> words{program.data()};
    std::vector<std::string> own = arguments;
    for (std::string& argument : own) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    pid_t process = 0;
    if (posix_spawnp(&process, program.c_str(), nullptr, nullptr, words.data(), environ) != 0) {
        throw Failure(fnInvalidCall,
                      "Reports need the desktop program, and there is no \"corvanta\" here");
    }
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

#endif

} // namespace corvanta
