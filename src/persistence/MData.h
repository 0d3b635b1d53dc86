#pragma once

#include "model/Channels.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"

#include <string>
#include <string_view>

namespace corvanta {

/// Reads a document of any version. It expects that the document has been reset. `announceUpgrade`
/// lets the reader of older files show its notice. False, after a message, when the file is of a
/// wrong version; throws Failure when it can't be used for another reason. Either way the document
/// stays as the reset left it.
bool DataLoad(Suspension& document, ChannelCatalogue& channels, const std::string& path,
              bool announceUpgrade, const FundamentalUnits& units, FileServices& files,
              Messages& messages);

/// Reads a document of the current version, "Data 4.1". A field that is missing takes its default,
/// a point that is missing 0, 0, 0, a text where a number is due 0; a message names such texts, the
/// points in play that are missing, and a file whose last line has no end, as one has that was cut
/// off. Then the geometry is set up and the document counts as loaded. False and throws as
/// `DataLoad`; throws Failure too when a mechanism is none of the catalogue.
bool DataRead(Suspension& document, ChannelCatalogue& channels, const std::string& path,
              const FundamentalUnits& units, FileServices& files, Messages& messages);

/// Writes the document, of its points those in play. False, with nothing written, when the path has
/// no base name; otherwise true, also after a write that failed, which shows its own message and
/// leaves the file as it was. `written` tells whether the file holds the document now. Throws
/// Failure, with nothing written, when a number of the document is none.
bool DataWrite(bool& written, const Suspension& document, const std::string& path,
               const FundamentalUnits& units, FileServices& files, Messages& messages);

/// The text of the file that `DataWrite` writes. Throws Failure when a number of the document is
/// none.
[[nodiscard]] std::string DataText(const Suspension& document, const FundamentalUnits& units,
                                   FileServices& files, Messages& messages);

/// A numeric text by its truth value, 0 false and any other true; else true for "True" alone.
[[nodiscard]] bool ParseBoolean(std::string_view text);

} // namespace corvanta
