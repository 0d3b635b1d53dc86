#include "frame/CommandLine.h"

#include "model/Failure.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

namespace corvanta {

namespace {

constexpr std::string_view NoGuiKey = "nogui";

using Keys = std::map<std::string, std::string, std::less<>>;

[[noreturn]] void Refuse(const std::string& description) {
    throw Failure(fnCommandLine, description);
}

/// The next piece of a text up to `delimiter`; the text keeps what stands behind it.
std::string_view TakePiece(std::string_view& text, char delimiter) {
    const std::size_t end = text.find(delimiter);
    const std::string_view piece = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return piece;
}

struct KeyAndValue {
    std::string Key;
    std::string Value;
};

/// A piece as key and value; what stands behind a second "=" is dropped.
KeyAndValue SplitPiece(std::string_view piece) {
    const std::string_view key = TakePiece(piece, '=');
    const std::string_view value = TakePiece(piece, '=');
    return {std::string(TrimBlanks(key)), std::string(TrimBlanks(value))};
}

/// The pieces behind each "/"; what stands before the first one counts for nothing.
std::vector<std::string_view> Pieces(std::string_view commandLine) {
    std::vector<std::string_view> pieces;
    for (std::size_t mark = commandLine.find('/'); mark != std::string_view::npos;) {
        const std::size_t next = commandLine.find('/', mark + 1);
        pieces.push_back(commandLine.substr(mark + 1, next - mark - 1));
        mark = next;
    }
    return pieces;
}

Keys SplitKeys(std::string_view commandLine) {
    Keys keys;
    for (const std::string_view piece : Pieces(commandLine)) {
        if (piece.empty()) {
            Refuse("The command line holds a \"/\" without a key");
        }
        const auto [key, value] = SplitPiece(piece);
        if (!keys.emplace(key, value).second) {
            Refuse("The key \"" + key + "\" is given twice");
        }
    }
    return keys;
}

const std::string& Required(const Keys& keys, std::string_view key, const char* otherwise) {
    const auto found = keys.find(key);
    if (found == keys.end()) {
        Refuse(otherwise);
    }
    return found->second;
}

std::int32_t Integer(const std::string& text, const Separators& separators) {
    const std::optional<double> value = WholeNumberText(text, separators.Decimal);
    if (!value) {
        throw Failure(fnTypeMismatch, "Type mismatch");
    }
    return ToInteger32(*value);
}

void ReadExportType(BatchRequest& request, const Keys& keys, const Separators& separators) {
    switch (request.ExportType) {
    case etAllChannels:
    case etSelectedViews:
    case etSuspvar1_1:
    case etSuspvar2_2:
        break;
    case etCurrentView:
        request.Export.Table = Integer(Required(keys, "table", "Invalid export table"), separators);
        break;
    default:
        Refuse("Invalid export type");
    }
}

} // namespace

bool HasCommandLineKeys(std::string_view commandLine) {
    return commandLine.find('/') != std::string_view::npos;
}

bool HasNoGuiKey(std::string_view commandLine) {
    const std::vector<std::string_view> pieces = Pieces(commandLine);
    return std::any_of(pieces.begin(), pieces.end(),
                       [](std::string_view piece) { return SplitPiece(piece).Key == NoGuiKey; });
}

bool ParseCommandLine(BatchRequest& request, std::string_view commandLine,
                      const FileServices& files, const Separators& separators) {
    const Keys keys = SplitKeys(commandLine);
    if (keys.empty()) {
        return false;
    }
    request.NoGui = keys.contains(NoGuiKey);
    request.InputPath = files.FullPath(NativePath(Required(keys, "input", "No input filepath")));
    if (!files.FileExists(request.InputPath)) {
        Refuse("Invalid input filepath specified");
    }
    request.OutputPath = files.FullPath(NativePath(Required(keys, "output", "No output filepath")));
    if (!files.FolderExists(FileServices::ParentFolder(request.OutputPath))) {
        Refuse("Invalid output filepath");
    }
    if (files.SameFile(request.InputPath, request.OutputPath)) {
        Refuse("The output file is the input file");
    }
    request.ExportType = Integer(Required(keys, "type", "No export type"), separators);
    const auto variable = keys.find("variable");
    if (variable != keys.end()) {
        request.Export.Variable = Integer(variable->second, separators);
    }
    ReadExportType(request, keys, separators);
    request.Export.Header = keys.contains("hdr");
    return true;
}

} // namespace corvanta
