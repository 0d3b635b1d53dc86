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
    static void Warn(const std::string& path, const std::string& words);

    /// Does work on each file; what it throws is reported, and the next one goes on.
    void ForEach(const std::vector<std::string>& paths,
                 const std::function<void(const std::string& path)>& work);
};

/// A message of the program in one line.
[[nodiscard]] std::string OneLine(const std::string& words);

/// The documents of a command, and where what it makes of them goes.
struct FileChoice {
    std::vector<std::string> Files;
    std::string Output;

    void AddTo(CLI::App& command, const std::string& what = "documents; - for standard input");

    /// Does work on each document. Its output goes to `Output` as it is for a single one; for
    /// several, or where that is a folder, to a file there, named as the document with `suffix`
    /// behind; without any to standard output. Throws Failure, before anything is done, for several
    /// documents that are to go into one file, and for an output that is one of the inputs, unless
    /// the work `replaces` documents.
    void
    ForEach(Tool& tool, const std::string& suffix,
            const std::function<void(const std::string& path, const std::string& output)>& work,
            bool replaces = false) const;

  private:
    [[nodiscard]] std::string OutputFor(const Tool& tool, const std::string& input,
                                        const std::string& suffix) const;
};

/// Refuses an output that is a file that is read: throws Failure then.
void KeepInput(const Tool& tool, const std::string& input, const std::string& output);

/// The units and separators in which a command reads and shows numbers.
struct NumberChoice {
    std::string Units = "metric";
    std::string Decimal = ".";

    void AddTo(CLI::App& command);

    /// Numbers without marks between thousands.
    [[nodiscard]] FundamentalUnits Chosen() const;
};

/// Where in the grid a command looks.
struct PlaceChoice {
    std::string Wheel = "0"; ///< travels as they are typed
    std::string Rack = "0";

    void AddTo(CLI::App& command);

    /// The steps nearest to the travels. Throws Failure for what is no number, and for a travel
    /// that the corner does not have.
    [[nodiscard]] int WheelStep(const Program& corner) const;
    [[nodiscard]] int RackStep(const Program& corner) const;
};

/// Reads a document and tells what there is to say of it. Throws Failure when it can't be used.
[[nodiscard]] Design Open(Tool& tool, const std::string& path, const FundamentalUnits& units);

/// Reads and solves. Throws Failure with why and where it has no results.
[[nodiscard]] std::unique_ptr<Program> OpenSolved(Tool& tool, const std::string& path,
                                                  const FundamentalUnits& units);

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
