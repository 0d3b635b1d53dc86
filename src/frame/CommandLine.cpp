#include "frame/CommandLine.h"

#include "model/Failure.h"

#include <map>
#include <optional>

namespace corvanta {

namespace {

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

/// The keys of the command line. `nogui` counts from the moment it is read, so that a mistake
/// behind or before it ends in silence too; so mistakes are raised only when all pieces have been
/// read.
Keys SplitKeys(std::string_view commandLine, bool& noGui) {
    Keys keys;
    std::optional<std::string> mistake;
    const std::size_t first = commandLine.find('/');
    const bool hasPieces = first != std::string_view::npos;
    std::string_view rest = hasPieces ? commandLine.substr(first + 1) : std::string_view{};
    for (bool more = hasPieces; more;) {
        more = rest.find('/') != std::string_view::npos;
        const std::string_view piece = TakePiece(rest, '/');
        if (piece.empty()) {
            mistake = mistake.value_or("The command line holds a \"/\" without a key");
            continue;
        }
        auto [key, value] = SplitPiece(piece);
        noGui = noGui || key == "nogui";
        if (!keys.emplace(key, value).second) {
            mistake = mistake.value_or("The key \"" + key + "\" is given twice");
        }
    }
    if (mistake) {
        Refuse(*mistake);
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

bool ParseCommandLine(BatchRequest& request, Messages& messages, std::string_view commandLine,
                      const FileServices& files, const Separators& separators) {
    Keys keys;
    try {
        keys = SplitKeys(commandLine, request.NoGui);
    } catch (...) {
        if (request.NoGui) {
            messages.Silence();
        }
        throw;
    }
    if (keys.empty()) {
        return false;
    }
    if (request.NoGui) {
        messages.Silence();
    }
    request.InputPath = files.FullPath(NativePath(Required(keys, "input", "No input filepath")));
    if (!files.FileExists(request.InputPath)) {
        Refuse("Invalid input filepath specified");
    }
    request.OutputPath = files.FullPath(NativePath(Required(keys, "output", "No output filepath")));
    if (!files.FolderExists(FileServices::ParentFolder(request.OutputPath))) {
        Refuse("Invalid output filepath");
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
