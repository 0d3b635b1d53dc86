#include "study/RigidMotion.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace corvanta {

namespace {

/// Below this angle, rad, the factors of a rotation are those of their series.
constexpr double SmallTurn = 1e-4;

/// A pivot below this share of the greatest coefficient tells of dependent equations.
constexpr double LeastPivot = 1e-13;

double Greatest(const Slopes& matrix, std::size_t count) {
    double greatest = 0;
    for (std::size_t row = 0; row < count; ++row) {
        for (std::size_t column = 0; column < count; ++column) {
            greatest = std::max(greatest, std::abs(matrix[row][column]));
        }
    }
    return greatest;
}

std::size_t PivotRow(const Slopes& matrix, std::size_t column, std::size_t count) {
    std::size_t pivot = column;
    for (std::size_t row = column + 1; row < count; ++row) {
        if (std::abs(matrix[row][column]) > std::abs(matrix[pivot][column])) {
            pivot = row;
        }
    }
    return pivot;
}

} // namespace

double Span(const SuspPoint& a, const SuspPoint& b) {
    const Vector3 d = VectorSubtract(a, b);
    return std::sqrt(DotProduct(d, d));
}

std::optional<Directions> DirectionsOf(const Vector3& along, const Vector3& towards) {
    const Vector3 first = UnitVector(along.X, along.Y, along.Z);
    const Vector3 square = VectorSubtract(towards, VectorScale(first, DotProduct(first, towards)));
    const Vector3 second = UnitVector(square.X, square.Y, square.Z);
    const Vector3 third = CrossProduct(first, second);
    if (!(DotProduct(third, third) > 0.5)) {
        return std::nullopt;
    }
    return Directions{first, second, third};
}

Vector3 InDirections(const Directions& directions, const Vector3& vector) {
    return {DotProduct(directions[0], vector), DotProduct(directions[1], vector),
            DotProduct(directions[2], vector)};
}

Vector3 FromDirections(const Directions& directions, const Vector3& coordinates) {
    return VectorAdd(VectorAdd(VectorScale(directions[0], coordinates.X),
                               VectorScale(directions[1], coordinates.Y)),
                     VectorScale(directions[2], coordinates.Z));
}

CRotation::CRotation(const Vector3& turn) : m_turn(turn) {
    const double squared = DotProduct(turn, turn);
    const double angle = std::sqrt(squared);
    if (angle > SmallTurn) {
        m_first = std::sin(angle) / angle;
        const double half = std::sin(angle / 2) / angle;
        m_second = 2 * half * half;
    } else {
        m_first -= squared / 6;
        m_second -= squared / 24;
    }
}

Vector3 CRotation::Turned(const Vector3& v) const {
    const Vector3 once = CrossProduct(m_turn, v);
    const Vector3 twice = CrossProduct(m_turn, once);
    return VectorAdd(v, VectorAdd(VectorScale(once, m_first), VectorScale(twice, m_second)));
}

CAxis::CAxis(const SuspPoint& first, const SuspPoint& second) : m_origin(first) {
    const Vector3 along = VectorSubtract(second, first);
    m_direction = UnitVector(along.X, along.Y, along.Z);
}

SuspPoint CAxis::Turned(const SuspPoint& point, double angle) const {
    const CRotation rotation(VectorScale(m_direction, angle));
    return VectorAdd(m_origin, rotation.Turned(VectorSubtract(point, m_origin)));
}

std::optional<double> CAxis::AngleAtDistance(const SuspPoint& point, const SuspPoint& target,
                                             double distance, double near) const {
    const Vector3 arm = VectorSubtract(point, m_origin);
    const double along = DotProduct(arm, m_direction);
    const Vector3 radius = VectorSubtract(arm, VectorScale(m_direction, along));
    const Vector3 side = CrossProduct(m_direction, radius);
    const Vector3 foot = VectorAdd(m_origin, VectorScale(m_direction, along));
    const Vector3 away = VectorSubtract(target, foot);
    // cos(angle) a + sin(angle) b = c
    const double a = DotProduct(away, radius);
    const double b = DotProduct(away, side);
    const double c =
        (DotProduct(away, away) + DotProduct(radius, radius) - distance * distance) / 2;
    const double reach = std::hypot(a, b);
    if (!(std::abs(c) <= reach) || reach == 0) { // exactly 0: the point stands on the axis
        return std::nullopt;
    }
    const double middle = std::atan2(b, a);
    const double half = std::acos(c / reach);
    const auto fromNear = [near](double angle) {
        return std::remainder(angle - near, 2 * std::numbers::pi);
    };
    const double one = fromNear(middle - half);
    const double other = fromNear(middle + half);
    return near + (std::abs(one) <= std::abs(other) ? one : other);
}

bool SolveLinear(Slopes matrix, Unknowns right, std::size_t count, Unknowns& solution) {
    const double least = LeastPivot * Greatest(matrix, count);
    for (std::size_t column = 0; column < count; ++column) {
        const std::size_t pivot = PivotRow(matrix, column, count);
        if (!(std::abs(matrix[pivot][column]) > least)) {
            return false;
        }
        std::swap(matrix[pivot], matrix[column]);
        std::swap(right[pivot], right[column]);
        for (std::size_t row = column + 1; row < count; ++row) {
            const double share = matrix[row][column] / matrix[column][column];
            for (std::size_t n = column; n < count; ++n) {
                matrix[row][n] -= share * matrix[column][n];
            }
            right[row] -= share * right[column];
        }
    }
    for (std::size_t row = count; row-- > 0;) {
        for (std::size_t n = row + 1; n < count; ++n) {
            right[row] -= matrix[row][n] * solution[n];
        }
        solution[row] = right[row] / matrix[row][row];
    }
    return true;
}

} // namespace corvanta
