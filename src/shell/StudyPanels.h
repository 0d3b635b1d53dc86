#pragma once

#include "shell/StudyPanel.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace corvanta {

/// The studies of the workbench, of which one is in sight or none.
class CStudyPanels {
  public:
    CStudyPanels(Desk& desk, StudyHost& host);

    [[nodiscard]] const std::vector<std::unique_ptr<CStudyPanel>>& All() const { return m_panels; }

    /// The study in sight, from 0 on.
    [[nodiscard]] std::optional<std::size_t> Shown() const { return m_shown; }
    void Show(std::optional<std::size_t> n);

    /// The study in sight, none when there is none.
    [[nodiscard]] const CStudyPanel* InSight() const {
        return m_shown ? m_panels[*m_shown].get() : nullptr;
    }

    void Follow(DocumentChange change);

    /// Takes what came out meanwhile; true when anything has changed.
    bool Poll();

    [[nodiscard]] bool IsRunning() const;

  private:
    std::vector<std::unique_ptr<CStudyPanel>> m_panels;
    std::optional<std::size_t> m_shown;
};

} // namespace corvanta
