#include "study/Region.h"

#include "model/Failure.h"
#include "solver/SInitGeo.h"
#include "study/Curve.h"
#include "study/DesignVariable.h"
#include "study/RegionCells.h"
#include "study/StudySolve.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <optional>
#include <utility>

namespace corvanta {

namespace {

/// By how much more than in the cells around it a deviation may change within a cell.
constexpr double SlopeReserve = 1.5;

constexpr std::size_t MostNodes = 2'000'000;

/// Where a node of an axis stands, mm.
double PlaceOf(const RegionAxis& axis, int node) {
    return axis.Nodes < 2 ? axis.Low : axis.Low + (axis.High - axis.Low) * node / (axis.Nodes - 1);
}

bool Alike(const RegionNode& one, const RegionNode& other) {
    return one.Verdict == other.Verdict && one.Target == other.Target;
}

/// The travels that the demands are about.
GridCut CutFor(const SuspensionData& data, const RegionQuestion& question,
               const FundamentalUnits& units) {
    GridCut cut{false, {0}, {}, false};
    if (question.WholeGrid) {
        const TravelGrid grid = CountTravelSteps(data, units);
        for (int r = 2; r <= grid.NR + 1; ++r) {
            cut.RackTravels.push_back((r - grid.StaticRack) * grid.RackTravelStepSize);
        }
    }
    for (const Target& target : question.Targets) {
        AddCurve(cut, target.Channel, target.Variable);
    }
    return cut;
}

/// One run of the study.
class RegionSearch {
  public:
    RegionSearch(CSampleRunner& runner, const Design& design, const RegionQuestion& question,
                 const SolveSettings& settings)
        : m_design(design),
          m_question(question),
          m_settings(settings),
          m_cut(CutFor(design.Data, question, settings.Units)),
          m_runner(runner) {
        std::size_t count = 1;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            m_nodes[axis] = question.Box[axis].Nodes;
            for (int n = 0; n < m_nodes[axis]; ++n) {
                m_answer.Places[axis].push_back(PlaceOf(question.Box[axis], n));
            }
            count *= m_answer.Places[axis].size();
        }
        m_answer.Nodes.resize(count);
        m_asked.resize(count);
        m_deviations.resize(count * question.Targets.size());
    }

    RegionAnswer Run() {
        m_answer.Present =
            Judge(m_design, m_runner.Scratch(), m_answer.PresentFailure, nullptr, true);
        const Stretches stretches = CoarseStretches(m_nodes);
        std::vector<LatticeCell> cells;
        AddCells(cells, stretches);
        m_slopes = CCoarseSlopes(stretches, m_question.Targets.size());
        // How much work the border will be is not known before: each pass is told as half of what
        // is left.
        double share = 0.5;
        bool done = SolveCorners(cells, 0, share);
        if (done) {
            TakeSlopes(cells);
        }
        while (done && Refine(cells)) {
            done = SolveCorners(cells, share, (1 + share) / 2);
            share = (1 + share) / 2;
        }
        if (!m_answer.Stopped) {
            Fill(cells);
        }
        return std::move(m_answer);
    }

  private:
    [[nodiscard]] Design DesignAt(std::size_t slot) const {
        Design design = m_design;
        const std::size_t across = m_answer.Places[0].size();
        const std::size_t deep = m_answer.Places[1].size();
        design.Points[m_question.Point] = {m_answer.Places[0][slot % across],
                                           m_answer.Places[1][slot / across % deep],
                                           m_answer.Places[2][slot / across / deep]};
        return design;
    }

    /// `present` for the design itself, whose targets must be ones that can be judged.
    RegionNode Judge(const Design& design, Suspension& scratch, std::string& failure,
                     double* deviations, bool present = false) const {
        const SolveResult result = Solve(scratch, design, m_settings, m_cut, m_runner.Work().Stop);
        RegionNode node;
        if (!result.Solved) {
            if (!result.Stopped) {
                failure = ReasonOf(result.Failure);
                node.Verdict = RegionVerdict::OutOfReach;
                node.Solved = true;
            }
            return node;
        }
        node.Solved = true;
        node.Verdict = RegionVerdict::Held;
        for (std::size_t n = 0; n < m_question.Targets.size(); ++n) {
            const Target& target = m_question.Targets[n];
            const Curve curve = CurveOf(scratch, target.Channel, target.Variable);
            const TargetResult judged = JudgeTarget(target, curve);
            if (present && !judged.Judged) {
                throw Failure(fnInvalidCall,
                              "Target " + std::to_string(n + 1) + " lies outside the travel");
            }
            if (deviations != nullptr) {
                deviations[n] = judged.Deviation;
            }
            if (!judged.Holds && node.Verdict == RegionVerdict::Held) {
                node.Verdict = RegionVerdict::MissesTarget;
                node.Target = static_cast<int>(n);
                node.Deviation = judged.Deviation;
            }
        }
        return node;
    }

    /// False when the work was stopped.
    bool SolveNodes(const std::vector<std::size_t>& slots, double fromShare, double toShare) {
        std::mutex guard;
        const bool done = m_runner.Run(
            slots.size(),
            [&](std::size_t n, Suspension& scratch) {
                std::string failure;
                const std::size_t slot = slots[n];
                m_answer.Nodes[slot] =
                    Judge(DesignAt(slot), scratch, failure,
                          m_deviations.data() + slot * m_question.Targets.size());
                if (!failure.empty()) {
                    const std::scoped_lock lock(guard);
                    if (slot < m_firstFailed) {
                        m_firstFailed = slot;
                        m_answer.FirstFailure = failure;
                    }
                }
            },
            fromShare, toShare);
        m_answer.Stopped = m_answer.Stopped || !done;
        for (const std::size_t slot : slots) {
            m_answer.Solved += m_answer.Nodes[slot].Solved ? 1 : 0;
        }
        return done;
    }

    [[nodiscard]] std::size_t SlotOf(int x, int y, int z) const {
        return m_answer.Slot(static_cast<std::size_t>(x), static_cast<std::size_t>(y),
                             static_cast<std::size_t>(z));
    }

    bool SolveCorners(const std::vector<LatticeCell>& cells, double fromShare, double toShare) {
        std::vector<std::size_t> slots;
        for (const LatticeCell& cell : cells) {
            for (const std::size_t slot : CornersOf(cell)) {
                if (!m_asked[slot]) {
                    m_asked[slot] = true;
                    slots.push_back(slot);
                }
            }
        }
        return SolveNodes(slots, fromShare, toShare);
    }

    /// Calls `look` for every node of a cell until it returns false.
    template <typename Look>
    void ForNodes(const LatticeCell& cell, Look look) {
        for (int z = cell.First[2]; z <= cell.Last[2]; ++z) {
            for (int y = cell.First[1]; y <= cell.Last[1]; ++y) {
                for (int x = cell.First[0]; x <= cell.Last[0]; ++x) {
                    if (!look(m_answer.Nodes[SlotOf(x, y, z)])) {
                        return;
                    }
                }
            }
        }
    }

    bool IsMixed(const LatticeCell& cell) {
        const RegionNode& corner =
            m_answer.Nodes[SlotOf(cell.First[0], cell.First[1], cell.First[2])];
        bool mixed = false;
        ForNodes(cell, [&](const RegionNode& node) {
            mixed = node.Solved && !Alike(node, corner);
            return !mixed;
        });
        return mixed;
    }

    /// The corners of a cell.
    [[nodiscard]] std::array<std::size_t, 8> CornersOf(const LatticeCell& cell) const {
        std::array<std::size_t, 8> corners{};
        for (unsigned n = 0; n < corners.size(); ++n) {
            corners[n] = SlotOf((n & 1U) != 0 ? cell.Last[0] : cell.First[0],
                                (n & 2U) != 0 ? cell.Last[1] : cell.First[1],
                                (n & 4U) != 0 ? cell.Last[2] : cell.First[2]);
        }
        return corners;
    }

    [[nodiscard]] double DeviationOf(std::size_t slot, std::size_t target) const {
        return m_deviations[slot * m_question.Targets.size() + target];
    }

    void TakeSlopes(const std::vector<LatticeCell>& cells) {
        for (const LatticeCell& cell : cells) {
            const std::array<std::size_t, 8> corners = CornersOf(cell);
            for (unsigned axis = 0; axis < 3; ++axis) {
                const unsigned bit = 1U << axis;
                const double width = cell.Last[axis] - cell.First[axis];
                for (unsigned n = 0; n < corners.size() && width > 0; ++n) {
                    if ((n & bit) == 0 && IsReached(corners[n]) && IsReached(corners[n | bit])) {
                        for (std::size_t t = 0; t < m_question.Targets.size(); ++t) {
                            m_slopes.Take(cell.Coarse, t, axis,
                                          std::abs(DeviationOf(corners[n], t) -
                                                   DeviationOf(corners[n | bit], t)) /
                                              width);
                        }
                    }
                }
            }
        }
        m_slopes.Spread();
    }

    [[nodiscard]] bool IsReached(std::size_t slot) const {
        const RegionVerdict verdict = m_answer.Nodes[slot].Verdict;
        return verdict == RegionVerdict::Held || verdict == RegionVerdict::MissesTarget;
    }

    /// True when the target that all corners of a cell miss may hold somewhere between them: it is
    /// missed to different sides, or by less than it changes to the middle of the cell.
    [[nodiscard]] bool MayHoldWithin(const LatticeCell& cell) const {
        const std::array<std::size_t, 8> corners = CornersOf(cell);
        const RegionNode& first = m_answer.Nodes[corners.front()];
        if (first.Verdict != RegionVerdict::MissesTarget) {
            return false;
        }
        const auto target = static_cast<std::size_t>(first.Target);
        double least = std::abs(first.Deviation);
        for (const std::size_t corner : corners) {
            const double deviation = DeviationOf(corner, target);
            if (std::signbit(deviation) != std::signbit(first.Deviation)) {
                return true;
            }
            least = std::min(least, std::abs(deviation));
        }
        double change = 0;
        for (unsigned axis = 0; axis < 3; ++axis) {
            change +=
                m_slopes.At(cell.Coarse, target, axis) * (cell.Last[axis] - cell.First[axis]) / 2;
        }
        return least <= SlopeReserve * change;
    }

    /// Halves the cells that are not of like nodes, or may not be. False when there are none.
    bool Refine(std::vector<LatticeCell>& cells) {
        std::vector<LatticeCell> refined;
        for (const LatticeCell& cell : cells) {
            if (cell.Divisible() && (IsMixed(cell) || MayHoldWithin(cell))) {
                AddCells(refined, HalvesOf(cell), cell.Coarse);
            } else {
                refined.push_back(cell);
            }
        }
        const bool any = refined.size() > cells.size();
        cells = std::move(refined);
        return any;
    }

    void Fill(const std::vector<LatticeCell>& cells) {
        for (const LatticeCell& cell : cells) {
            RegionNode like = m_answer.Nodes[SlotOf(cell.First[0], cell.First[1], cell.First[2])];
            like.Solved = false;
            like.Deviation = 0;
            ForNodes(cell, [&](RegionNode& node) {
                if (!node.Solved) {
                    node = like;
                }
                return true;
            });
        }
    }

    const Design& m_design;
    const RegionQuestion& m_question;
    const SolveSettings& m_settings;
    GridCut m_cut;
    CSampleRunner& m_runner;
    std::array<int, 3> m_nodes{};
    std::vector<bool> m_asked;
    std::vector<double> m_deviations; ///< of all targets at each node
    CCoarseSlopes m_slopes;
    std::size_t m_firstFailed = MostNodes;
    RegionAnswer m_answer;
};

std::string FaultOfAxis(const RegionAxis& axis) {
    if (!std::isfinite(axis.Low) || !std::isfinite(axis.High)) {
        return "The ends of the box must be numbers";
    }
    if (axis.Low > axis.High) {
        return "The box ends before it begins";
    }
    if (axis.Nodes < 1 || axis.Nodes > MostNodesOfAxis) {
        return "The box takes 1 to 201 places along an axis";
    }
    if (axis.Low == axis.High && axis.Nodes > 1) { // exactly no width
        return "An axis without width has one place only";
    }
    return {};
}

std::string FaultOf(const RegionQuestion& question, const Design& design) {
    for (int axis = 0; axis < 3; ++axis) {
        const PointCoordinate coordinate{question.Point, axis};
        if (std::string fault = FaultOfVariable(design, coordinate); !fault.empty()) {
            return fault;
        }
    }
    std::size_t count = 1;
    for (const RegionAxis& axis : question.Box) {
        if (std::string fault = FaultOfAxis(axis); !fault.empty()) {
            return fault;
        }
        count *= static_cast<std::size_t>(axis.Nodes);
    }
    if (count > MostNodes) {
        return "The box has too many places: 2,000,000 at most";
    }
    for (const Target& target : question.Targets) {
        if (std::string fault = FaultOfTarget(target); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

} // namespace

RegionAnswer FindRegion(CSampleRunner& runner, const Design& design, const RegionQuestion& question,
                        const SolveSettings& settings) {
    if (const std::string fault = FaultOf(question, design); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    return RegionSearch(runner, design, question, settings).Run();
}

RegionSlice SliceOf(const RegionAnswer& answer, std::size_t axis, double place) {
    const std::vector<double>& places = answer.Places.at(axis);
    const auto nearest = std::min_element(places.begin(), places.end(), [&](double a, double b) {
        return std::abs(a - place) < std::abs(b - place);
    });
    const std::size_t across = axis == 0 ? 1 : 0;
    const std::size_t up = axis == 2 ? 1 : 2;
    RegionSlice slice{*nearest, answer.Places[across], answer.Places[up]};
    std::array<std::size_t, 3> at{};
    at[axis] = static_cast<std::size_t>(nearest - places.begin());
    for (at[up] = 0; at[up] < slice.Up.size(); ++at[up]) {
        for (at[across] = 0; at[across] < slice.Across.size(); ++at[across]) {
            slice.Nodes.push_back(answer.At(at[0], at[1], at[2]));
        }
    }
    return slice;
}

} // namespace corvanta
