#include "export/ListFiles.h"

#include "model/Failure.h"
#include "persistence/CFileStream.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

namespace corvanta {

namespace {

constexpr std::string_view ChannelsVersion = "SUSP CUSTOM EXPORT LIST 2.0";
constexpr std::string_view ViewsVersion = "SUSP CUSTOM VIEWS LIST 1.0";
constexpr std::string_view Ticked = "True";

CFileStream NewStream(std::string_view version, const Separators& separators, FileServices& files,
                      Messages& messages) {
    CFileStream stream(files, messages, separators);
    stream.Initialise(version, std::array{std::string()});
    return stream;
}

CFileStream ChannelsStream(const CustomChannels& customChannels, const Separators& separators,
                           FileServices& files, Messages& messages) {
    CFileStream stream = NewStream(ChannelsVersion, separators, files, messages);
    stream.AddField("COUNT", static_cast<std::int32_t>(customChannels.Ids().size()));
    int position = 0;
    for (const int id : customChannels.Ids()) {
        stream.AddField(std::to_string(position++), id);
    }
    return stream;
}

CFileStream ViewsStream(const SelectedViews& views, const Separators& separators,
                        FileServices& files, Messages& messages) {
    CFileStream stream = NewStream(ViewsVersion, separators, files, messages);
    for (int view = 1; view <= SelectableViewCount; ++view) {
        stream.AddField(ViewName(view), views[view]);
    }
    return stream;
}

/// Moves a list that was read at its old place to its new one. The old file goes only once the new
/// one holds the list; until then it is read again at the next start. True if the new file holds
/// the list.
bool Migrate(CFileStream list, const std::string& legacyPath, const std::string& path,
             FileServices& files) {
    list.SetSilent(true);
    if (!list.FileWrite(path)) {
        return false;
    }
    try {
        files.DeleteFile(legacyPath);
    } catch (const Failure&) {
        // Nothing is lost: the file beside the program may be locked, and stays.
    }
    return true;
}

void ReadPositions(CustomChannels& customChannels, CFileStream& stream) {
    // A list holds each of the channels once; a count far beyond them comes from damage.
    constexpr double MostPositions = 1000;
    constexpr double HighestId = std::numeric_limits<std::int16_t>::max();
    const double count = std::min(stream.GetFieldNumber("COUNT"), MostPositions);
    for (int position = 0; position < count; ++position) {
        const double id = stream.GetFieldNumber(std::to_string(position));
        if (id >= 1 && id <= HighestId && id == std::floor(id)) {
            customChannels.Add(static_cast<int>(id));
        }
    }
}

} // namespace

bool CustomChannelsRead(CustomChannels& customChannels, const ChannelCatalogue& channels,
                        const std::string& legacyPath, const std::string& path,
                        const Separators& separators, FileServices& files, Messages& messages) {
    customChannels.Clear();
    CFileStream stream = NewStream(ChannelsVersion, separators, files, messages);
    if (!stream.FileRead(legacyPath)) {
        if (stream.FileRead(path)) {
            ReadPositions(customChannels, stream);
        }
        return files.FileExists(path);
    }
    for (int id = 1; id <= ChannelCount; ++id) {
        // The link loads are a table of their own, which no list of channels offers.
        if (id != chLinkLoads && stream.GetFieldString(channels[id].Title) == Ticked) {
            customChannels.Add(id);
        }
    }
    return Migrate(ChannelsStream(customChannels, separators, files, messages), legacyPath, path,
                   files);
}

bool CustomChannelsWrite(const CustomChannels& customChannels, const std::string& path,
                         const Separators& separators, FileServices& files, Messages& messages) {
    return ChannelsStream(customChannels, separators, files, messages).FileWrite(path);
}

bool ExportTablesRead(SelectedViews& views, const std::string& legacyPath, const std::string& path,
                      const Separators& separators, FileServices& files, Messages& messages) {
    CFileStream stream = NewStream(ViewsVersion, separators, files, messages);
    const bool legacy = stream.FileRead(legacyPath);
    if (!legacy) {
        stream.FileRead(path);
    }
    for (int view = 1; view <= SelectableViewCount; ++view) {
        views.Set(view, stream.GetFieldString(ViewName(view)) == Ticked);
    }
    return legacy
               ? Migrate(ViewsStream(views, separators, files, messages), legacyPath, path, files)
               : files.FileExists(path);
}

bool ExportTablesWrite(const SelectedViews& views, const std::string& path,
                       const Separators& separators, FileServices& files, Messages& messages) {
    return ViewsStream(views, separators, files, messages).FileWrite(path);
}

} // namespace corvanta
