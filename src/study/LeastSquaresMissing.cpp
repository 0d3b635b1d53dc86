#include "model/Failure.h"
#include "study/LeastSquares.h"

namespace corvanta {

/// Stands in for the solver in a program that is built without its library.
LeastSquaresResult SolveLeastSquares(const LeastSquaresProblem& /*problem*/) {
    throw Failure(fnInvalidCall, "This program is built without a solver for least squares, so it "
                                 "can neither optimise nor fit");
}

} // namespace corvanta
