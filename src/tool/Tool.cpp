#include "tool/Tool.h"

#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "model/NumberText.h"
#include "persistence/DesignFile.h"

#include <array>
#include <cmath>
#include <iostream>
#include <map>
#include <set>

namespace corvanta {

namespace {

/// Labels of displacement, force, mass and rate.
using UnitLabels = std::array<std::string, 4>;

constexpr std::array<std::int32_t, 4> ChosenClasses{ucDisplacement, ucForce, ucMass, ucRate};

UnitLabels LabelsOf(const std::string& units) {
    if (units == "metric") {
        return {"mm", "N", "kg", "N/mm"};
    }
    if (units == "imperial") {
        return {"in", "lbs", "lbs", "lb/in"};
    }
    UnitLabels labels;
    std::size_t n = 0;
    for (const char c : units) {
        if (c == ',') {
            ++n;
        } else if (n < labels.size()) {
            labels[n] += c;
        }
    }
    return n + 1 == labels.size() ? labels : UnitLabels();
}

FundamentalUnits UnitsOf(const UnitLabels& labels) {
    FundamentalUnits units;
    for (std::size_t n = 0; n < labels.size(); ++n) {
        units[ChosenClasses[n]].Label = labels[n];
    }
    units.SetFundUnitsData();
    return units;
}

std::string FaultOfUnits(const std::string& text) {
    const FundamentalUnits units = UnitsOf(LabelsOf(text));
    for (const std::int32_t unitClass : ChosenClasses) {
        if (units[unitClass].Factor == 0) { // exactly as it was: the label is not known
            return "units are metric, imperial, or four of mm or in, N or kg or lbs, kg or lbs, "
                   "N/mm or kg/mm or lb/in, as in mm,N,kg,N/mm";
        }
    }
    return {};
}

} // namespace

std::string OneLine(const std::string& words) {
    return ReplaceAll(ReplaceAll(ReplaceAll(words, "\r\n", "\r"), "\r\r", "\r"), "\r", " ");
}

void Tool::Report(const std::string& path, const std::string& words) {
    Failed = true;
    Warn(path, words);
}

void Tool::Warn(const std::string& path, const std::string& words) {
    std::cerr << path << ": " << OneLine(words) << '\n';
}

void Tool::ForEach(const std::vector<std::string>& paths,
                   const std::function<void(const std::string&)>& work) {
    for (const std::string& path : paths) {
        try {
            work(path);
        } catch (...) {
            Report(path, FailureInFlight().Description());
        }
    }
}

void FileChoice::AddTo(CLI::App& command, const std::string& what) {
    command.add_option("FILE", Files, what)->required();
    command.add_option("-o,--output", Output,
                       "file, or folder for several; standard output without it");
}

std::string FileChoice::OutputFor(const Tool& tool, const std::string& input,
                                  const std::string& suffix) const {
    if (Output.empty() || Output == StreamPath) {
        return std::string(StreamPath);
    }
    if (!tool.Files.FolderExists(Output)) {
        return Output;
    }
    const std::string name = input == StreamPath ? "document" : FileServices::BaseName(input);
    return Output + FileServices::Separator + name + suffix;
}

void FileChoice::ForEach(Tool& tool, const std::string& suffix,
                         const std::function<void(const std::string&, const std::string&)>& work,
                         bool replaces) const {
    std::map<std::string, std::string> outputs; // by their inputs
    std::set<std::string> taken;
    for (const std::string& path : Files) {
        const std::string& output = outputs[path] = OutputFor(tool, path, suffix);
        if (!taken.insert(output).second) {
            throw Failure(fnInvalidCall, "Several documents can't all go to " +
                                             (output == StreamPath ? "standard output" : output) +
                                             ": name a folder by --output");
        }
        for (const std::string& other : Files) {
            if (!replaces || other != path) {
                KeepInput(tool, other, output);
            }
        }
    }
    tool.ForEach(Files, [&](const std::string& path) { work(path, outputs[path]); });
}

void KeepInput(const Tool& tool, const std::string& input, const std::string& output) {
    if (output != StreamPath && input != StreamPath && tool.Files.SameFile(input, output)) {
        throw Failure(fnInvalidCall, output + " is read and can't be written");
    }
}

void NumberChoice::AddTo(CLI::App& command) {
    command.add_option("--units", Units, "metric, imperial, or four labels: mm,N,kg,N/mm")
        ->check(CLI::Validator(FaultOfUnits, ""))
        ->capture_default_str();
    command.add_option("--decimal", Decimal, "the decimal separator")
        ->check(CLI::IsMember({".", ","}))
        ->capture_default_str();
}

FundamentalUnits NumberChoice::Chosen() const {
    FundamentalUnits units = UnitsOf(LabelsOf(Units));
    units.NumberSeparators = {Decimal, ""};
    return units;
}

namespace {

/// The step nearest to a travel that was typed, and is not farther away than half a step.
int StepAt(const Program& corner, const std::string& text, std::string_view what,
           int (*nearest)(const Suspension&, double), double (*travelAt)(const Suspension&, int),
           double stepSize) {
    const FundamentalUnits& units = corner.Units;
    const std::optional<double> typed = WholeNumberText(text, units.NumberSeparators.Decimal);
    if (!typed) {
        throw Failure(fnInvalidCall, "\"" + text + "\" is no travel");
    }
    const double travel = *typed / units[ucDisplacement].Factor;
    const int step = nearest(corner.Document, travel);
    const double shown = travelAt(corner.Document, step);
    const std::string label = " " + units[ucDisplacement].Label;
    constexpr double WithinAStep = 0.501;
    constexpr double Same = 0.005; // mm, below what is shown
    if (std::isnan(travel) || std::abs(travel - shown) > WithinAStep * stepSize) {
        throw Failure(fnInvalidCall, "The corner has no " + std::string(what) + " travel of " +
                                         text + label);
    }
    if (std::abs(travel - shown) > Same) {
        Tool::Warn(corner.DocumentPath, "there is no step at " + text + label + " of " +
                                            std::string(what) + " travel; shown is " +
                                            FormatChannelValue(units, shown, ucDisplacement) +
                                            label);
    }
    return step;
}

} // namespace

void PlaceChoice::AddTo(CLI::App& command) {
    command.add_option("--wheel", Wheel, "wheel travel, of the step nearest to it")
        ->capture_default_str();
    command.add_option("--rack", Rack, "rack travel, of the step nearest to it")
        ->capture_default_str();
}

int PlaceChoice::WheelStep(const Program& corner) const {
    return StepAt(corner, Wheel, "wheel", NearestWheelStep, WheelTravelAtStep,
                  corner.Document.Data.WheelTravelStepSize);
}

int PlaceChoice::RackStep(const Program& corner) const {
    return StepAt(corner, Rack, "rack", NearestRackStep, RackTravelAtStep,
                  corner.Document.Data.RackTravelStepSize);
}

Design Open(Tool& tool, const std::string& path, const FundamentalUnits& units) {
    std::string words;
    Design design = ReadDesign(path, units, tool.Files, words);
    if (!words.empty()) {
        Tool::Warn(path, words);
    }
    return design;
}

std::unique_ptr<Program> OpenSolved(Tool& tool, const std::string& path,
                                    const FundamentalUnits& units) {
    const Design design = Open(tool, path, units);
    CornerFailure failure;
    std::unique_ptr<Program> corner = SolvedCorner(design, units, failure);
    if (corner == nullptr) {
        throw Failure(fnInvalidCall, TextOf(failure, design, units));
    }
    corner->DocumentPath = path;
    return corner;
}

} // namespace corvanta
