#pragma once

#include "study/DesignVariable.h"
#include "study/LeastSquares.h"
#include "study/StudyWork.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// Puts values in the place of those that a design has of some variables.
void SetValues(Design& design, std::span<const DesignVariable> variables,
               std::span<const double> values);

/// The step of central differences against a variable, stored units: large against what the search
/// for the wheel leaves open, small against what bends a curve.
[[nodiscard]] double DifferenceStep(const DesignVariable& variable, double value);

/// The residuals of a design at a point of its variables, from a scratch document; none where it
/// can't be solved.
using ResidualsOfDesign =
    std::function<std::optional<std::vector<double>>(const std::vector<double>& x, Suspension&)>;

/// Evaluates points for `SolveLeastSquares` with all threads of a runner, and tells the progress of
/// one part of a study from a share to another: of a search the length of which nobody knows, each
/// Jacobian is a sixth of what is left.
class CSharedResiduals {
  public:
    CSharedResiduals(CSampleRunner& runner, ResidualsOfDesign residuals, double fromShare,
                     double toShare);

    [[nodiscard]] ResidualsAtPoints operator()(std::span<const std::vector<double>> points);

  private:
    CSampleRunner* m_runner;
    ResidualsOfDesign m_residuals;
    double m_share;
    double m_toShare;
};

} // namespace corvanta
