#pragma once

#include <string>

namespace corvanta::test {

/// The folder of the project's sources, without a separator at its end.
[[nodiscard]] std::string SourceFolder();

/// The folder of the programs that the build makes, with help and samples beside them.
[[nodiscard]] std::string ProgramFolder();

/// The batch program of the build.
[[nodiscard]] inline std::string BatchProgram() {
    return ProgramFolder() + "/corvanta-batch";
}

} // namespace corvanta::test
