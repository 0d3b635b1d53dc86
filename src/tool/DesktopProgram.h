#pragma once

#include <string>
#include <vector>

namespace corvanta {

/// The program that runs next keeps its settings below a folder, and so does this one. Throws
/// Failure where there is no desktop program.
void KeepSettingsIn(const std::string& folder);

/// Runs the desktop program, the one beside the tool or else the one on the path, and waits for its
/// end. It writes to the tool's own streams. True when it ended well; throws Failure when there is
/// none.
[[nodiscard]] bool RunDesktopProgram(const std::vector<std::string>& arguments);

} // namespace corvanta
