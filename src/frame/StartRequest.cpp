#include "frame/StartRequest.h"

#include "frame/CommandLine.h"
#include "model/NumberText.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace corvanta {

namespace {

constexpr std::string_view HelpOption = "--help";
constexpr std::string_view VersionOption = "--version";
constexpr std::string_view WorkbenchOption = "--workbench";
constexpr std::string_view ReportOption = "--report=";

bool Has(const std::vector<std::string>& arguments, std::string_view option) {
    return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
}

bool EndsAsDocument(const std::string& argument) {
    const auto endsIn = [&](std::string_view ending) {
        return argument.size() > ending.size() &&
               std::equal(ending.rbegin(), ending.rend(), argument.rbegin(),
                          [](char small, char letter) {
                              return small == std::tolower(static_cast<unsigned char>(letter));
                          });
    };
    return endsIn(".wsp") || endsIn(".study");
}

/// True when a single argument names a file, there or missing, and no key.
bool NamesFile(const std::string& argument, const FileServices& files) {
    if (TrimBlanks(argument).empty()) {
        return false;
    }
    return files.FileExists(argument) || !HasCommandLineKeys(argument) ||
           (EndsAsDocument(argument) && argument.find('=') == std::string::npos);
}

} // namespace

StartRequest ParseStart(const std::vector<std::string>& arguments, const FileServices& files) {
    StartRequest request;
    request.Help = Has(arguments, HelpOption);
    request.Version = !request.Help && Has(arguments, VersionOption);
    if (request.Help || request.Version) {
        return request;
    }
    std::vector<std::string> rest;
    for (const std::string& argument : arguments) {
        if (argument == WorkbenchOption) {
            request.Workbench = true;
        } else if (argument.starts_with(ReportOption)) {
            request.Report = argument.substr(ReportOption.size());
        } else {
            rest.push_back(argument);
        }
    }
    const bool needsFile = request.Workbench || !request.Report.empty();
    const auto names = [&](const std::string& argument) { return NamesFile(argument, files); };
    if (rest.size() == 1 && (needsFile || names(rest.front()))) {
        request.File = rest.front();
    } else if (rest.size() > 1 && (needsFile || std::all_of(rest.begin(), rest.end(), names))) {
        request.Refusal = "One document can be opened at a time.\rThe name of a file with blanks "
                          "stands in quotes.";
    } else {
        request.Batch = std::any_of(rest.begin(), rest.end(), HasCommandLineKeys);
    }
    return request;
}

std::string BatchUsage(std::string_view program) {
    const std::string name(program);
    return "usage: " + name + " /input=PATH /output=PATH /type=TYPE [/table=VIEW]\n" +
           std::string(8 + name.size(), ' ') +
           "[/variable=1|2] [/hdr] [/nogui]\n"
           "\n"
           "Calculates the suspension document INPUT and writes its results to OUTPUT. A "
           "backslash\n"
           "parts the folders of a path on every platform: /input=cars\\front.WSP\n"
           "\n"
           "  /type      1 all channels, 2 one table, 3 the selected views,\n"
           "             5 component file 1.1, 6 component file 2.2\n"
           "  /table     with /type=2 the view: 1 to 12, or 16 for all channels\n"
           "  /variable  1 along rack travel (the default), 2 along wheel travel\n"
           "  /hdr       begin with a header: program, document, date and time\n"
           "  /nogui     show no message; a run that failed leaves no output file\n";
}

std::string HelpText(std::string_view program) {
    constexpr std::string_view WithWindows = "corvanta";
    std::string text;
    if (program == WithWindows) {
        text = "usage: corvanta [FILE]\n"
               "       corvanta --workbench [FILE]\n"
               "       corvanta --report=PDF FILE\n"
               "\n"
               "Opens the suspension document FILE, with --workbench in the workbench. With "
               "--report\n"
               "it is printed into a PDF file, as the print dialog last was, and no window is "
               "shown.\n"
               "\n";
    }
    return text + BatchUsage(program) +
           "\n"
           "  --help     show this and end\n"
           "  --version  show the version and end\n";
}

std::string VersionText(std::string_view program, const ProductVersion& version) {
    return std::string(program) + " " + version.Text() + "\n";
}

} // namespace corvanta
