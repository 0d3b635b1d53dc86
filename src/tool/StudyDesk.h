#pragma once

#include "automation/ResultTable.h"
#include "platform/DiskFileServices.h"
#include "platform/MachineServices.h"
#include "platform/NoWindowSystem.h"
#include "shell/StudyPanels.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// The studies by the names under which they are asked for, in the order of the workbench.
inline constexpr std::array<std::string_view, 7> StudyNames{
    "sensitivity", "sweep", "tolerance", "optimise", "region", "fit", "setup"};

/// The chart in hand of a study that looks at one figure, and what it takes of it.
struct StudyAim {
    std::optional<StudyChart> Chart; ///< the first one of the study file without it
    int Figure = 1;                  ///< in the list of the workbench
};

/// The studies of the workbench at work with no window.
class CStudyDesk final : private StudyHost {
  public:
    /// A document with what stands beside it.
    CStudyDesk(const Design& design, StudyData study, const FundamentalUnits& units,
               const StudyAim& aim);

    /// The studies whose question is not the one that every document begins with.
    [[nodiscard]] std::vector<std::size_t> Asked() const;

    /// Asks a study and gives its answer: what was asked and found in words, then its tables.
    /// Throws Failure with what the study says when it has none.
    [[nodiscard]] std::vector<ResultTable>
    Answer(std::size_t study, const std::function<void(double share)>& progress);

    /// The design that the last study found; nothing for one that finds none.
    [[nodiscard]] const std::optional<Design>& Found() const { return m_found; }

  private:
    [[nodiscard]] std::vector<PointCoordinate> SelectedCoordinates() const override { return {}; }
    void SelectCoordinate(const PointCoordinate& /*coordinate*/) override {}
    [[nodiscard]] std::size_t ChartInHand() const override { return m_chartInHand; }
    std::string KeepAsVariant(const std::string& name, const std::string& note,
                              const Design& design) override;

    Program m_program;
    DiskFileServices m_files;
    NoMessageBox m_box;
    Messages m_messages{m_box};
    MachineServices m_process;
    NoWindowSystem m_noWindows;
    WindowSystem m_windows = m_noWindows.Services();
    CDocument m_current{m_program, m_messages};
    Desk m_desk{
        m_program, m_current, m_files, m_messages, m_process, m_windows, MLibHelp(m_windows.Help),
        nullptr};
    CStudyPanels m_panels{m_desk, *this};
    std::size_t m_chartInHand = 0;
    std::optional<Design> m_found;
};

} // namespace corvanta
