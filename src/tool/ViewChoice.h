#pragma once

#include <CLI/CLI.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// The views that a command shows.
struct ViewChoice {
    std::vector<std::string> Keys; ///< empty for all that have something to show

    /// `last` is the greatest number of a view that the command knows.
    void AddTo(CLI::App& command, std::int32_t last);

    /// The views in their order. Without any named, all but the table of all channels, and the
    /// custom table only when it `hasCustom` channels.
    [[nodiscard]] std::vector<std::int32_t> Views(bool hasCustom) const;
};

} // namespace corvanta
