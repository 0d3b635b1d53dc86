#pragma once

#include "model/Options.h"
#include "model/SuspensionData.h"
#include "model/Units.h"
#include "platform/SettingsStore.h"

#include <string>

namespace corvanta {

/// Reads what the program remembers between runs: the options, the start values of a document and
/// the labels of the chosen units. A key that the store does not hold takes its default; the
/// default of both folders is "Data" below the program's. Numbers are read with a decimal point or
/// comma, whichever machine wrote them. Throws Failure "Type mismatch" or "Overflow", naming the
/// key and where the store lies, for a value that can't be converted.
void OptionsRead(Options& options, SuspensionData& data, FundamentalUnits& units,
                 const SettingsStore& store, const std::string& programFolder);

/// Writes the same to the store, numbers in the decimal separator of `units`. The store is not
/// saved yet.
void OptionsWrite(SettingsStore& store, const Options& options, const SuspensionData& data,
                  const FundamentalUnits& units);

} // namespace corvanta
