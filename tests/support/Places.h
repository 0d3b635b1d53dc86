#pragma once

#include <string>
#include <vector>

namespace corvanta::test {

/// The folder of the project's sources, without a separator at its end.
[[nodiscard]] std::string SourceFolder();

/// The folder of the programs that the build makes, with help and samples beside them.
[[nodiscard]] std::string ProgramFolder();

/// The programs of the build that do batch runs: the desktop one is not always built.
[[nodiscard]] std::vector<std::string> BatchPrograms();

} // namespace corvanta::test
