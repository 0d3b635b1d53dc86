#include "python/Module.h"

#include "automation/SolvedCorner.h"

#include <memory>
#include <string>

namespace corvanta {

namespace {

using Shape = std::vector<py::ssize_t>;

constexpr py::ssize_t LinkCount = 6;
constexpr py::ssize_t LoadCount = 4;

/// The arrays of a solved corner, rack x wheel, both growing.
class CResultArrays {
  public:
    CResultArrays(const Suspension& solved, const GridPart& reached)
        : m_solved(solved),
          m_reached(reached) {}

    [[nodiscard]] py::array_t<double> Channels() const {
        py::array_t<double> array(Shape{ChannelCount, m_solved.NR, m_solved.NW});
        auto to = array.mutable_unchecked<3>();
        ForEach([&](py::ssize_t r, py::ssize_t w, const WheelState& state, bool /*here*/) {
            for (int id = 1; id <= ChannelCount; ++id) {
                to(id - 1, r, w) = state.Channels.Cell(id).value_or(NoNumber);
            }
        });
        return array;
    }

    [[nodiscard]] py::array_t<double> Points() const {
        py::array_t<double> array(Shape{PointCount, m_solved.NR, m_solved.NW, 3});
        auto to = array.mutable_unchecked<4>();
        ForEach([&](py::ssize_t r, py::ssize_t w, const WheelState& state, bool here) {
            for (const PointNumber number : AllPoints) {
                const SuspPoint& point = state.Points[number];
                to(number - 1, r, w, 0) = here ? point.X : NoNumber;
                to(number - 1, r, w, 1) = here ? point.Y : NoNumber;
                to(number - 1, r, w, 2) = here ? point.Z : NoNumber;
            }
        });
        return array;
    }

    [[nodiscard]] py::array_t<double> Loads() const {
        py::array_t<double> array(Shape{m_solved.NR, m_solved.NW, LinkCount, LoadCount});
        auto to = array.mutable_unchecked<4>();
        ForEach([&](py::ssize_t r, py::ssize_t w, const WheelState& state, bool here) {
            for (int link = 1; link <= LinkCount; ++link) {
                for (int column = 1; column <= LoadCount; ++column) {
                    const std::optional<double> cell = state.LinkLoads.Cell(link, column);
                    to(r, w, link - 1, column - 1) = here ? cell.value_or(NoNumber) : NoNumber;
                }
            }
        });
        return array;
    }

    [[nodiscard]] py::array_t<bool> Reached() const {
        py::array_t<bool> array(Shape{m_solved.NR, m_solved.NW});
        auto to = array.mutable_unchecked<2>();
        ForEach([&](py::ssize_t r, py::ssize_t w, const WheelState& /*state*/, bool here) {
            to(r, w) = here;
        });
        return array;
    }

  private:
    /// Wheel steps run from bump to droop, arrays from droop to bump.
    template <typename Take>
    void ForEach(Take take) const {
        for (int r = 0; r < m_solved.NR; ++r) {
            for (int w = 0; w < m_solved.NW; ++w) {
                const int wheelStep = m_solved.NW + 1 - w;
                take(r, w, m_solved.WheelStates(r + 2, wheelStep), m_reached.Has(r + 2, wheelStep));
            }
        }
    }

    const Suspension& m_solved;
    const GridPart& m_reached;
};

py::object FailureTuple(const CornerFailure& failure, const Design& design,
                        const StoredUnits& stored) {
    py::list points;
    for (const PointNumber number : failure.Points) {
        points.append(PointShortName(number));
    }
    return py::make_tuple(TextOf(failure, design, stored.Units), failure.Reason,
                          failure.WheelTravel, failure.RackTravel, py::tuple(points));
}

py::dict ResultsOf(const Suspension& solved, const GridPart& reached, const StoredUnits& stored) {
    std::vector<double> rack;
    for (int r = 2; r <= solved.NR + 1; ++r) {
        rack.push_back(RackTravelAtStep(solved, r));
    }
    std::vector<double> wheel;
    for (int w = solved.NW + 1; w >= 2; --w) {
        wheel.push_back(WheelTravelAtStep(solved, w));
    }
    py::list titles;
    py::list units;
    for (int id = 1; id <= ChannelCount; ++id) {
        const ChannelRecord& channel = stored.Channels[id];
        titles.append(channel.Title);
        units.append(channel.Factor == 1 ? channel.UnitLabel : "-"); // percentages as fractions
    }
    const CResultArrays arrays(solved, reached);
    using namespace py::literals;
    return py::dict("rack_travel"_a = ArrayOf(rack), "wheel_travel"_a = ArrayOf(wheel),
                    "static"_a =
                        py::make_tuple(solved.StaticRack - 2, solved.NW + 1 - solved.StaticWheel),
                    "titles"_a = titles, "units"_a = units, "channels"_a = arrays.Channels(),
                    "points"_a = arrays.Points(), "link_loads"_a = arrays.Loads(),
                    "reached"_a = arrays.Reached());
}

/// The results, or nothing, and the failure, or nothing: of a tolerant solve there may be both.
py::tuple SolveDesign(const Design& corner, bool tolerant) {
    const AskedCorner asked(corner);
    const auto solved = std::make_unique<Suspension>();
    SolveResult outcome;
    {
        const py::gil_scoped_release others;
        GridCut cut;
        outcome = Solve(*solved, asked.Own, asked.Settings, cut);
        if (!outcome.Solved && tolerant) {
            cut.Tolerant = true;
            outcome.Reached = Solve(*solved, asked.Own, asked.Settings, cut).Reached;
        }
    }
    if (outcome.Solved) {
        return py::make_tuple(ResultsOf(*solved, WholeGrid(solved->NR, solved->NW), asked),
                              py::none());
    }
    const py::object failure = FailureTuple(FailureOf(*solved, outcome), asked.Own, asked);
    const bool reached = outcome.Reached.Has(solved->StaticRack, solved->StaticWheel);
    return py::make_tuple(reached ? py::object(ResultsOf(*solved, outcome.Reached, asked))
                                  : py::object(py::none()),
                          failure);
}

py::list PointNames() {
    py::list names;
    for (const PointNumber number : AllPoints) {
        names.append(PointShortName(number));
    }
    return names;
}

} // namespace

void BindSolve(py::module_& module) {
    module.def("solve", &SolveDesign);
    module.def("point_names", &PointNames);
}

} // namespace corvanta
