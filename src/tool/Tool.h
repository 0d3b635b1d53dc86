#pragma once

#include "automation/SolvedCorner.h"
#include "model/Units.h"
#include "tool/ToolFiles.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace corvanta {

/// How the tool ends.
enum ToolStatus : int {
    tsDone = 0,
    tsFailed = 1, ///< a document, a calculation or a file failed; what it was stands on the errors
    tsUsage = 2,  ///< the command line can't be understood
};

/// What all commands of the tool share.
struct Tool {
    CToolFiles Files;
    bool Failed = false; ///< what was reported is to decide the exit status

    /// Says on standard error what is wrong with a file.
    void Report(const std::string& path, const std::string& words);
    void Warn(const std::string& path, const std::string& words) const;

    /// Does work on each file; what it throws is reported, and the next one goes on.
    void ForEach(const std::vector<std::string>& paths,
                 const std::function<void(const std::string& path)>& work);
};

/// The units and separators in which a command reads and shows numbers.
struct NumberChoice {
    std::string Units = "metric";
    std::string Decimal = ".";

    void AddTo(CLI::App& command);

    /// Numbers without marks between thousands.
    [[nodiscard]] FundamentalUnits Chosen() const;
};

/// Reads a document and tells what there is to say of it. Throws Failure when it can't be used.
[[nodiscard]] Design Open(Tool& tool, const std::string& path, const FundamentalUnits& units);

/// Reads and solves. Throws Failure with why and where it has no results.
[[nodiscard]] std::unique_ptr<Program> OpenSolved(Tool& tool, const std::string& path,
                                                  const FundamentalUnits& units);

/// Where the output of a document goes: `output` as it is for a single one; for several, or where
/// it is a folder, a file there, named as the document with `suffix` behind. Without any it is
/// standard output. Throws Failure for several files into one that is no folder.
[[nodiscard]] std::string OutputFor(Tool& tool, const std::string& output, const std::string& input,
                                    const std::string& suffix, bool several);

/// The commands. Each adds itself with its options to the command line.
void AddExport(CLI::App& app, Tool& tool);
void AddDxf(CLI::App& app, Tool& tool);
void AddCheck(CLI::App& app, Tool& tool);
void AddInfo(CLI::App& app, Tool& tool);
void AddConvert(CLI::App& app, Tool& tool);
void AddSweep(CLI::App& app, Tool& tool);
void AddNames(CLI::App& app, Tool& tool);
void AddReport(CLI::App& app, Tool& tool);
void AddStudy(CLI::App& app, Tool& tool);

} // namespace corvanta
