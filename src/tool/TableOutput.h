#pragma once

#include "automation/ResultTable.h"
#include "model/NumberText.h"

#include <CLI/CLI.hpp>

#include <span>
#include <string>

namespace corvanta {

/// The format in which a command writes tables.
struct TableChoice {
    std::string Format = "tsv";

    void AddTo(CLI::App& command);

    /// The tables as the bytes of a file. Throws Failure when they can't be made.
    [[nodiscard]] std::string BytesOf(std::span<const ResultTable> tables,
                                      const Separators& separators) const;
};

} // namespace corvanta
