#pragma once

#include "model/Channels.h"
#include "model/NumberText.h"
#include "model/Views.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"

#include <string>

namespace corvanta {

/// The two small files that keep the user's choices for tables and exports between runs. Each has
/// an old place beside the program; a file found there wins, moves to its place in the settings
/// folder and is deleted. Reading never fails: a missing file is an empty choice, and a damaged one
/// loses its damaged entries only. A read or write that the disk refuses shows its message.
///
/// Reading returns true when a file stands for the list, so that nothing has to be written before
/// it changes. A file that can't be read is such a one: what it holds is not lost.

/// Reads the channels of the custom table. The old file ticks channels by the catalogue's titles
/// and gives them in id order; the present one holds ids in the user's order. There an entry that
/// is no positive whole number of 16 bits is left out; an id that is no channel of a table stays in
/// the list, and the table fails when it is shown.
[[nodiscard]] bool CustomChannelsRead(CustomChannels& customChannels,
                                      const ChannelCatalogue& channels,
                                      const std::string& legacyPath, const std::string& path,
                                      const Separators& separators, FileServices& files,
                                      Messages& messages);

/// Writes the channels of the custom table; true if the file holds them now.
bool CustomChannelsWrite(const CustomChannels& customChannels, const std::string& path,
                         const Separators& separators, FileServices& files, Messages& messages);

/// Reads the views ticked for the export of selected views.
[[nodiscard]] bool ExportTablesRead(SelectedViews& views, const std::string& legacyPath,
                                    const std::string& path, const Separators& separators,
                                    FileServices& files, Messages& messages);

/// Writes the views ticked for the export of selected views; true if the file holds them now.
bool ExportTablesWrite(const SelectedViews& views, const std::string& path,
                       const Separators& separators, FileServices& files, Messages& messages);

} // namespace corvanta
