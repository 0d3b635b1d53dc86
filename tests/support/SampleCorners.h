#pragma once

#include "model/Suspension.h"
#include "tests/support/Corners.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace corvanta::test {

/// Path of a document of the samples, for instance "published/DWSWEEP.WSP".
[[nodiscard]] std::string SamplePath(const std::string& name);

/// All documents of the samples, paths in order of name.
[[nodiscard]] std::vector<std::string> AllSamplePaths();

/// A document of the samples, loaded and set up. Throws when it can't be.
[[nodiscard]] Suspension LoadSample(const std::string& name);

/// Calculates every sample after `change` and shows it to `look`. A failure within names the
/// sample.
void ForEachSample(const std::function<void(Suspension&)>& change,
                   const std::function<void(const Suspension&)>& look);

/// The choices of the "Type" page.
struct MechanismChoice {
    std::int32_t Spring = 0;
    std::int32_t ThirdSpring = 0;
    std::int32_t CentreSpring = 0;
    std::int32_t ARB = 0;
    std::int32_t Motion = 0;
    bool DriveShaft = false;

    [[nodiscard]] std::string Text() const;
};

/// Every combination that the user is offered, with and without driveshaft.
[[nodiscard]] std::vector<MechanismChoice> OfferedChoices();

/// A corner with the given choice: the sample of its spring mechanism, with a small travel, and
/// plausible places for the points that the sample does not have.
[[nodiscard]] Suspension CornerOf(const MechanismChoice& choice);

} // namespace corvanta::test
