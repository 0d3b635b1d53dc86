#pragma once

#include "model/Suspension.h"
#include "model/Units.h"
#include "platform/FileServices.h"
#include "platform/ProcessServices.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// Folder of the samples that come with the program.
[[nodiscard]] std::string SamplesFolder(const ProcessServices& process, const FileServices& files);

/// File name of the sample that shows a spring mechanism, 0 to 11; empty for another number.
[[nodiscard]] std::string ExampleName(std::int32_t springMechanism);

/// A sample as the start page shows it.
struct SampleCard {
    std::string Path;
    std::string Title; ///< made of the file's name
    Suspension Document;
};

/// The samples that come with the program, one for every spring mechanism and system of centre
/// springs. One whose file can't be read is left out.
[[nodiscard]] std::vector<SampleCard>
SampleCards(const std::string& folder, const FundamentalUnits& units, FileServices& files);

/// Gives the bar, T-bar, centre spring and driveshaft of the choices plausible places on a corner
/// that has the spring mechanism.
void PlaceOptionalPoints(PointSet& points, const SuspensionData& data);

/// A corner that shows a choice of mechanisms, for a drawing: the sample of its spring mechanism in
/// the folder of the samples, with the parts that were chosen. Nothing where there is no sample.
[[nodiscard]] std::optional<Suspension> MechanismExample(const SuspensionData& choice,
                                                         const std::string& folder,
                                                         const FundamentalUnits& units,
                                                         FileServices& files);

} // namespace corvanta
