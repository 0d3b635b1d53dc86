#pragma once

#include "model/Channels.h"
#include "model/Units.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// One value that was read on a car. Stored units.
struct Reading {
    double WheelTravel = 0; ///< from static, mm
    double RackTravel = 0;
    int Channel = 0;
    double Value = 0;
    double Uncertainty = 0; ///< standard deviation, above 0

    friend bool operator==(const Reading&, const Reading&) = default;
};

/// Why readings can't be compared with a calculation, naming the first such one; empty when they
/// can. Of the channels with a curve, the two travels are where it was read, and the sign of the
/// bar's rotation follows from the grid that it is calculated on.
[[nodiscard]] std::string FaultOfReadings(std::span<const Reading> readings,
                                          const ChannelCatalogue& channels);

/// Reads readings from the text of a sheet: a line for each, of wheel travel, rack travel, channel,
/// value and uncertainty in display units. The columns are parted by tabs, or else by semicolons,
/// or else by commas; a line without any number may head them; empty lines and empty cells behind
/// the last column are left out. A channel is its title, in capitals or not, or its number. The
/// user's decimal separator and "." count as the decimal point. Throws Failure "Type mismatch" that
/// names line and column, both from 1, and says what is wrong there.
[[nodiscard]] std::vector<Reading> ParseReadings(std::string_view text,
                                                 const ChannelCatalogue& channels,
                                                 const FundamentalUnits& units);

/// The same as text for a sheet: a heading, tabs between the columns.
[[nodiscard]] std::string ReadingsText(std::span<const Reading> readings,
                                       const ChannelCatalogue& channels,
                                       const FundamentalUnits& units);

} // namespace corvanta
