#pragma once

#include "model/Channels.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"

#include <string>

namespace corvanta {

/// Reads a document of the line-based layouts from before the tagged stream. They are told apart by
/// the first line, in upper case: "DATA 4.0"; "V3.61" to "V3.66" and "V3.67B", Version 3; anything
/// else, which is then the spring mechanism, an untagged file. What these layouts do not hold stays
/// as it was. Then the geometry is set up and the document counts as loaded.
///
/// Points of Version 3 and untagged files, and the lengths and masses of all, are in the user's
/// display units of now: with `announceUpgrade` a notice tells so for the layouts whose points are
/// concerned, once the first line has shown that the file is one of them.
///
/// Throws Failure, with the settings and points as they were: "File not found", "Input past end of
/// file" and "Type mismatch", the last two followed by the place and what is due there, and for a
/// spring mechanism that does not exist.
bool DataReadLegacy(Suspension& document, ChannelCatalogue& channels, const std::string& path,
                    bool announceUpgrade, const FundamentalUnits& units, FileServices& files,
                    Messages& messages);

} // namespace corvanta
