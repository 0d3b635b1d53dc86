#pragma once

#include "study/LeastSquares.h"
#include "study/StudyWork.h"

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace corvanta {

/// The residuals of a design at a point of its variables, from a scratch document; none where it
/// can't be solved.
using ResidualsOfDesign =
    std::function<std::optional<std::vector<double>>(const std::vector<double>& x, Suspension&)>;

/// Solves problems of the same residuals, each on one thread of a runner; threads that have no
/// search of their own evaluate points for those that go on. `Evaluate` and `Stop` of a problem are
/// not read. What a search finds depends on its problem alone. Tells the progress
/// from a share to another: of a search the length of which nobody knows, each Jacobian is a sixth
/// of what is left. Throws what a search throws.
[[nodiscard]] std::vector<LeastSquaresResult>
SearchSideBySide(CSampleRunner& runner, const ResidualsOfDesign& residuals,
                 std::span<const LeastSquaresProblem> problems, double fromShare, double toShare);

} // namespace corvanta
