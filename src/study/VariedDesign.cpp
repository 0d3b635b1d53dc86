#include "study/VariedDesign.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <variant>

namespace corvanta {

namespace {

constexpr double CoordinateStep = 0.1; // mm

/// The step of any other number as a share of it, and the least of it.
constexpr double NumberShare = 1e-3;
constexpr double LeastNumber = 1;

constexpr double ShareOfJacobian = 1.0 / 6;

} // namespace

void SetValues(Design& design, std::span<const DesignVariable> variables,
               std::span<const double> values) {
    for (std::size_t i = 0; i < variables.size(); ++i) {
        SetValue(design, variables[i], values[i]);
    }
}

double DifferenceStep(const DesignVariable& variable, double value) {
    return std::holds_alternative<PointCoordinate>(variable)
               ? CoordinateStep
               : NumberShare * std::max(std::abs(value), LeastNumber);
}

CSharedResiduals::CSharedResiduals(CSampleRunner& runner, ResidualsOfDesign residuals,
                                   double fromShare, double toShare)
    : m_runner(&runner),
      m_residuals(std::move(residuals)),
      m_share(fromShare),
      m_toShare(toShare) {}

ResidualsAtPoints CSharedResiduals::operator()(std::span<const std::vector<double>> points) {
    ResidualsAtPoints residuals(points.size());
    const double share =
        points.size() > 1 ? std::lerp(m_share, m_toShare, ShareOfJacobian) : m_share;
    const auto evaluate = [&](std::size_t n, Suspension& scratch) {
        residuals[n] = m_residuals(points[n], scratch);
    };
    if (!m_runner->Run(points.size(), evaluate, m_share, share)) {
        residuals.assign(points.size(), std::nullopt); // stopped
    }
    m_share = share;
    return residuals;
}

} // namespace corvanta
