#pragma once

#include "model/Design.h"
#include "model/Units.h"
#include "platform/FileServices.h"

#include <string>

namespace corvanta {

/// Reads a document of any version on the side, for its design alone. What there is to say of it
/// stands in `words`, paragraphs parted by CR. Throws Failure when it can't be used.
[[nodiscard]] Design ReadDesign(const std::string& path, const FundamentalUnits& units,
                                FileServices& files, std::string& words);

/// The text of a document of the current version. Throws Failure when a number of the design is
/// none.
[[nodiscard]] std::string DesignText(const Design& design, const FundamentalUnits& units,
                                     FileServices& files);

/// The description as it comes back from a file of such a text. It is another one when it has a
/// "[", which ends it, tabs or line ends around it, or characters that files lack.
[[nodiscard]] std::string DescriptionIn(const std::string& documentText,
                                        const FundamentalUnits& units, FileServices& files);

} // namespace corvanta
