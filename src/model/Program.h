#pragma once

#include "model/Channels.h"
#include "model/Options.h"
#include "model/Suspension.h"
#include "model/Units.h"
#include "model/Views.h"

#include <string>

namespace corvanta {

/// Everything that one running program holds: the document and what is remembered beside it.
struct Program {
    Suspension Document;
    std::string DocumentPath; ///< full path of the open file, empty when none has been opened
    std::string FileMark;     ///< of the bytes of that file that the document was last read from or
                              ///< written as; empty when they are not known
    bool Modified = false;    ///< the document holds changes that no file has
    corvanta::Options Options;
    FundamentalUnits Units;
    ChannelCatalogue Channels;
    corvanta::CustomChannels CustomChannels;
    SelectedViews ExportViews; ///< the views ticked for the export of selected views
    ViewSettings Settings;
};

} // namespace corvanta
