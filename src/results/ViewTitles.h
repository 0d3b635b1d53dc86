#pragma once

#include "model/Program.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// What stands above a view on paper and in a file.
struct ViewTitles {
    std::string Title;
    std::string Subtitle; ///< lines joined by CR LF; empty for a view without one
};

/// The titles of views 1 to 12, of the plot and of the table of all channels; any other view has
/// none. The positions in them are those of the current settings. For a plot `viewArgument` is the
/// channel, 0 for the first one; throws Failure "Subscript out of range" for an id that is none.
[[nodiscard]] ViewTitles TitlesOfView(const Program& program, std::int32_t view,
                                      std::int32_t viewArgument, std::int32_t variable);

} // namespace corvanta
