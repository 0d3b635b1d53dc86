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

    /// The views in their order; without any named all but the table of all channels. The custom
    /// table is among them when it `hasCustom` channels; throws Failure when it is named and has
    /// none.
    [[nodiscard]] std::vector<std::int32_t> Views(bool hasCustom) const;
};

} // namespace corvanta
