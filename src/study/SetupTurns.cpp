#include "study/SetupTurns.h"

#include "model/Failure.h"
#include "study/Statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace corvanta {

namespace {

using Numbers = std::vector<double>;
using Counts = std::vector<int>;

constexpr int MostNewtonSteps = 6;

/// Counts that move by less are found.
constexpr double SmoothTolerance = 1e-3;

/// What a count costs beside tolerances squared: among settings alike, the small ones.
constexpr double CostOfCount = 1e-7;

/// The most adjusters of a start of the search that moves few of them, how many starts there are,
/// and how many neighbours of a setting are solved.
constexpr std::size_t MostTogether = 3;
constexpr std::size_t MostStarts = 8;
constexpr std::size_t MostNeighbours = 16;

constexpr int MostDescents = 200;

/// How well a setting does; residuals are in tolerances.
struct Merit {
    bool Solved = false;
    bool Holds = false;
    double Cost = std::numeric_limits<double>::infinity();
    int Steps = 0;
};

Merit MeritOf(const Numbers& residuals, const Counts& counts) {
    Merit merit{true, true, 0, 0};
    for (const double residual : residuals) {
        merit.Holds = merit.Holds && std::abs(residual) <= 1;
        merit.Cost += residual * residual;
    }
    for (const int count : counts) {
        merit.Steps += std::abs(count);
    }
    return merit;
}

bool Better(const Merit& one, const Merit& other) {
    if (one.Solved != other.Solved || one.Holds != other.Holds) {
        return std::pair(one.Solved, one.Holds) > std::pair(other.Solved, other.Holds);
    }
    if (one.Holds) {
        return std::pair(one.Steps, one.Cost) < std::pair(other.Steps, other.Cost);
    }
    return std::pair(one.Cost, one.Steps) < std::pair(other.Cost, other.Steps);
}

/// The residuals near a setting by the effects of the adjusters there.
struct Effects {
    Numbers At;                 ///< counts
    Numbers Residuals;          ///< there
    std::vector<Numbers> Slope; ///< per count, by adjuster

    [[nodiscard]] Numbers Predicted(const Counts& counts) const {
        Numbers residuals = Residuals;
        for (std::size_t a = 0; a < counts.size(); ++a) {
            for (std::size_t r = 0; r < residuals.size(); ++r) {
                residuals[r] += Slope[a][r] * (counts[a] - At[a]);
            }
        }
        return residuals;
    }

    /// The counts of the adjusters of `moving` with the least squares of what is left, the others
    /// at 0, within the ranges: one that leaves its range stays at its end.
    [[nodiscard]] Numbers Best(std::vector<std::size_t> moving,
                               const std::vector<CountRange>& ranges) const {
        Numbers best(At.size());
        while (!moving.empty()) {
            const Numbers found = BestFree(moving, best);
            std::vector<std::size_t> inside;
            for (std::size_t n = 0; n < moving.size(); ++n) {
                const CountRange& range = ranges[moving[n]];
                const double kept = std::clamp<double>(found[n], range.Low, range.High);
                if (kept == found[n]) { // exactly what it was
                    inside.push_back(moving[n]);
                } else {
                    best[moving[n]] = kept;
                }
            }
            if (inside.size() == moving.size()) {
                for (std::size_t n = 0; n < moving.size(); ++n) {
                    best[moving[n]] = found[n];
                }
                break;
            }
            moving = std::move(inside);
        }
        return best;
    }

  private:
    /// The same for adjusters without ends, those not in `moving` at `fixed`.
    [[nodiscard]] Numbers BestFree(const std::vector<std::size_t>& moving,
                                   const Numbers& fixed) const {
        Numbers start = Residuals; // with the moving ones at 0
        for (std::size_t a = 0; a < At.size(); ++a) {
            const bool moves = std::find(moving.begin(), moving.end(), a) != moving.end();
            for (std::size_t r = 0; r < start.size(); ++r) {
                start[r] += Slope[a][r] * ((moves ? 0 : fixed[a]) - At[a]);
            }
        }
        const std::size_t count = moving.size();
        Numbers normal(count * count);
        Numbers right(count);
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t r = 0; r < start.size(); ++r) {
                for (std::size_t j = 0; j < count; ++j) {
                    normal[i * count + j] += Slope[moving[i]][r] * Slope[moving[j]][r];
                }
                right[i] -= Slope[moving[i]][r] * start[r];
            }
            double& pivot = normal[i * count + i];
            pivot += (pivot + 1) * CostOfCount;
        }
        return SolveSymmetric(normal, right) ? right : Numbers(count);
    }
};

/// The settings that were solved, and the search through them.
class TurnsSearch {
  public:
    TurnsSearch(CSampleRunner& runner, const Design& design, const TurnsQuestion& question,
                const SolveSettings& settings)
        : m_question(question),
          m_bench(design, question.Sheet, settings),
          m_runner(runner) {}

    TurnsAnswer Run() {
        TurnsAnswer answer;
        const std::size_t count = m_question.Ranges.size();
        const std::vector<SheetState> base = StatesAt({Numbers(count)});
        answer.Base = base.front();
        answer.Counts.assign(count, 0);
        if (answer.Base.Values.empty() && answer.Base.Fault.empty()) {
            answer.Base.Fault = "Stopped"; // before it was solved
        }
        m_best = answer.Counts;
        m_bestState = answer.Base;
        if (answer.Base.Fault.empty()) {
            m_base = answer.Base.Values;
            const std::optional<Numbers> residuals = ResidualsOf(answer.Base);
            m_merits[m_best] = residuals ? MeritOf(*residuals, m_best) : Merit{};
            Search(answer);
        }
        answer.Reached = m_bestState;
        answer.Stopped = m_stopped;
        answer.Solved = m_solved;
        return answer;
    }

  private:
    std::vector<SheetState> StatesAt(const std::vector<Numbers>& settings) {
        std::vector<SheetState> states(settings.size());
        m_stopped = !m_runner.Run(
                        states.size(),
                        [&](std::size_t n, Suspension& scratch) {
                            states[n] = m_bench.StateAt(settings[n], scratch, m_runner.Work().Stop);
                        },
                        m_share, m_share) ||
                    m_stopped;
        m_solved += states.size();
        return states;
    }

    /// What is left of each wish in tolerances; nothing where a figure is missing.
    [[nodiscard]] std::optional<Numbers> ResidualsOf(const SheetState& state) const {
        Numbers residuals;
        for (std::size_t n = 0; n < m_question.Wishes.size(); ++n) {
            const FigureWish& wish = m_question.Wishes[n];
            if (wish.Free) {
                continue;
            }
            if (n >= state.Values.size() || !state.Values[n] || !m_base[n]) {
                return std::nullopt;
            }
            residuals.push_back((*state.Values[n] - *m_base[n] - wish.Change) / wish.Tolerance);
        }
        return residuals;
    }

    /// The effects at a setting; nothing where it or a step from it can't be solved. A step towards
    /// a side that can't be made is taken from the other side alone.
    std::optional<Effects> EffectsAt(const Numbers& at) {
        std::vector<Numbers> settings{at};
        for (std::size_t a = 0; a < at.size(); ++a) {
            settings.push_back(at);
            settings.back()[a] += 1;
            settings.push_back(at);
            settings.back()[a] -= 1;
        }
        const std::vector<SheetState> states = StatesAt(settings);
        const std::optional<Numbers> middle =
            m_stopped ? std::nullopt : ResidualsOf(states.front());
        if (!middle) {
            return std::nullopt;
        }
        Effects effects{at, *middle, {}};
        for (std::size_t a = 0; a < at.size(); ++a) {
            const std::optional<Numbers> more = ResidualsOf(states[1 + 2 * a]);
            const std::optional<Numbers> less = ResidualsOf(states[2 + 2 * a]);
            const double apart = (more ? 1 : 0) + (less ? 1 : 0);
            effects.Slope.emplace_back(middle->size());
            for (std::size_t r = 0; r < middle->size() && apart > 0; ++r) {
                const double high = more ? (*more)[r] : (*middle)[r];
                const double low = less ? (*less)[r] : (*middle)[r];
                effects.Slope.back()[r] = (high - low) / apart;
            }
        }
        return effects;
    }

    void Search(TurnsAnswer& answer) {
        std::vector<std::size_t> all(answer.Counts.size());
        for (std::size_t n = 0; n < all.size(); ++n) {
            all[n] = n;
        }
        std::optional<Effects> effects = EffectsAt(Numbers(all.size()));
        for (int n = 0; n < MostNewtonSteps && effects; ++n) {
            const Numbers next = effects->Best(all, m_question.Ranges);
            double moved = 0;
            for (std::size_t a = 0; a < all.size(); ++a) {
                moved = std::max(moved, std::abs(next[a] - effects->At[a]));
            }
            const std::optional<Effects> there =
                moved < SmoothTolerance ? std::nullopt : EffectsAt(next);
            if (!there) {
                break; // found, or not to be reached
            }
            effects = there;
        }
        if (effects) {
            const std::vector<Counts> starts = StartsBy(*effects);
            for (const Counts& start : starts) {
                m_share += 1 / static_cast<double>(starts.size() + 1);
                Descend(start, *effects);
            }
        }
        answer.Counts = m_best;
        answer.Holds = m_merits[m_best].Holds;
        for (std::size_t n = 0; n < m_question.Wishes.size(); ++n) {
            const FigureWish& wish = m_question.Wishes[n];
            const bool told = !wish.Free && n < m_bestState.Values.size() && m_bestState.Values[n];
            answer.LeftOver.push_back(
                told ? std::optional(*m_bestState.Values[n] - *m_base[n] - wish.Change)
                     : std::nullopt);
        }
    }

    /// Solves the settings that are new; the best of all is kept.
    void Consider(const std::vector<Counts>& settings) {
        std::vector<Counts> fresh;
        std::vector<Numbers> asked;
        for (const Counts& counts : settings) {
            if (!m_merits.contains(counts)) {
                fresh.push_back(counts);
                asked.emplace_back(counts.begin(), counts.end());
                m_merits[counts] = {};
            }
        }
        const std::vector<SheetState> states = StatesAt(asked);
        for (std::size_t n = 0; n < fresh.size(); ++n) {
            const std::optional<Numbers> residuals = ResidualsOf(states[n]);
            Merit merit = residuals ? MeritOf(*residuals, fresh[n]) : Merit{};
            m_merits[fresh[n]] = merit;
            if (Better(merit, m_merits[m_best])) {
                m_best = fresh[n];
                m_bestState = states[n];
            }
        }
    }

    [[nodiscard]] Counts Rounded(const Numbers& smooth) const {
        Counts counts;
        for (std::size_t a = 0; a < smooth.size(); ++a) {
            const CountRange& range = m_question.Ranges[a];
            counts.push_back(
                std::clamp(static_cast<int>(std::lround(smooth[a])), range.Low, range.High));
        }
        return counts;
    }

    /// Where the search begins: at the smooth solution, and at the best of those that move few.
    [[nodiscard]] std::vector<Counts> StartsBy(const Effects& effects) const {
        std::vector<Counts> few;
        std::vector<std::size_t> chosen;
        AddChoices(effects, chosen, 0, few);
        SortByPromise(few, effects);
        few.resize(std::min(few.size(), MostStarts));
        few.push_back(Rounded(effects.At));
        return few;
    }

    void AddChoices(const Effects& effects, std::vector<std::size_t>& chosen, std::size_t from,
                    std::vector<Counts>& found) const {
        for (std::size_t a = from; a < effects.At.size() && chosen.size() < MostTogether; ++a) {
            chosen.push_back(a);
            found.push_back(Rounded(effects.Best(chosen, m_question.Ranges)));
            AddChoices(effects, chosen, a + 1, found);
            chosen.pop_back();
        }
    }

    static void SortByPromise(std::vector<Counts>& settings, const Effects& effects) {
        std::vector<std::pair<Merit, Counts>> promised;
        for (Counts& counts : settings) {
            const Merit merit = MeritOf(effects.Predicted(counts), counts);
            promised.emplace_back(merit, std::move(counts));
        }
        std::stable_sort(promised.begin(), promised.end(), [](const auto& one, const auto& other) {
            return Better(one.first, other.first);
        });
        settings.clear();
        for (auto& [merit, counts] : promised) {
            if (settings.empty() || settings.back() != counts) {
                settings.push_back(std::move(counts));
            }
        }
    }

    /// Downhill over the neighbours that the effects promise most of.
    void Descend(Counts at, const Effects& effects) {
        Consider({at});
        for (int n = 0; n < MostDescents && !m_stopped; ++n) {
            std::vector<Counts> neighbours = NeighboursOf(at);
            SortByPromise(neighbours, effects);
            neighbours.resize(std::min(neighbours.size(), MostNeighbours));
            Consider(neighbours);
            Counts best = at;
            for (const Counts& neighbour : neighbours) {
                if (Better(m_merits[neighbour], m_merits[best])) {
                    best = neighbour;
                }
            }
            if (best == at) {
                return;
            }
            at = best;
        }
    }

    /// One adjuster by one step, or two by one each.
    [[nodiscard]] std::vector<Counts> NeighboursOf(const Counts& at) const {
        std::vector<Counts> neighbours;
        const auto moved = [&](Counts counts, std::size_t a, int by) -> std::optional<Counts> {
            counts[a] += by;
            const CountRange& range = m_question.Ranges[a];
            return counts[a] < range.Low || counts[a] > range.High ? std::nullopt
                                                                   : std::optional(counts);
        };
        for (std::size_t a = 0; a < at.size(); ++a) {
            for (const int by : {1, -1}) {
                const std::optional<Counts> one = moved(at, a, by);
                if (!one) {
                    continue;
                }
                neighbours.push_back(*one);
                for (std::size_t b = a + 1; b < at.size(); ++b) {
                    for (const int also : {1, -1}) {
                        if (const auto both = moved(*one, b, also)) {
                            neighbours.push_back(*both);
                        }
                    }
                }
            }
        }
        return neighbours;
    }

    const TurnsQuestion& m_question;
    CSetupBench m_bench;
    CSampleRunner& m_runner;
    double m_share = 0; ///< of the progress
    bool m_stopped = false;
    std::size_t m_solved = 0;
    std::vector<std::optional<double>> m_base;
    std::map<Counts, Merit> m_merits;
    Counts m_best; ///< the base to begin with
    SheetState m_bestState;
};

std::string FaultOf(const TurnsQuestion& question, const Design& design) {
    const SetupQuestion& sheet = question.Sheet;
    if (question.Wishes.size() != sheet.Figures.size() ||
        question.Ranges.size() != sheet.Adjusters.size()) {
        return "Every figure needs a wish and every adjuster a range";
    }
    bool wished = false;
    for (const FigureWish& wish : question.Wishes) {
        wished = wished || !wish.Free;
        if (!wish.Free &&
            !(wish.Tolerance > 0 && std::isfinite(wish.Tolerance) && std::isfinite(wish.Change))) {
            return "The change of a figure must be a number, its tolerance one above 0";
        }
    }
    if (!wished) {
        return "Choose at least one figure to change or hold";
    }
    for (std::size_t n = 0; n < question.Ranges.size(); ++n) {
        const CountRange& range = question.Ranges[n];
        if (range.Low > 0 || range.High < 0 || range.Low < -MostCount || range.High > MostCount) {
            return "The range of \"" + sheet.Adjusters[n].Name +
                   "\" must hold 0 and not go beyond " + std::to_string(MostCount);
        }
    }
    return FaultOf(sheet, design);
}

} // namespace

TurnsAnswer FindTurns(CSampleRunner& runner, const Design& design, const TurnsQuestion& question,
                      const SolveSettings& settings) {
    if (const std::string fault = FaultOf(question, design); !fault.empty()) {
        throw Failure(fnInvalidCall, fault);
    }
    TurnsAnswer answer = TurnsSearch(runner, design, question, settings).Run();
    if (!answer.Stopped && !answer.Base.Fault.empty()) {
        throw Failure(fnInvalidCall, answer.Base.Fault);
    }
    for (std::size_t n = 0; n < question.Wishes.size() && !answer.Stopped; ++n) {
        if (!question.Wishes[n].Free && !answer.Base.Values[n]) {
            throw Failure(fnInvalidCall, "The corner does not have a figure that is asked for");
        }
    }
    return answer;
}

} // namespace corvanta
