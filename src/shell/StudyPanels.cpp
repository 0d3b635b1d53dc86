#include "shell/StudyPanels.h"

#include "shell/FitPanel.h"
#include "shell/OptimisePanel.h"
#include "shell/RegionPanel.h"
#include "shell/SensitivityPanel.h"
#include "shell/SetupPanel.h"
#include "shell/SweepPanel.h"
#include "shell/TolerancePanel.h"

#include <algorithm>

namespace corvanta {

CStudyPanels::CStudyPanels(Desk& desk, StudyHost& host) {
    m_panels.push_back(std::make_unique<SensitivityPanel>(desk, host));
    m_panels.push_back(std::make_unique<SweepPanel>(desk, host));
    m_panels.push_back(std::make_unique<TolerancePanel>(desk, host));
    m_panels.push_back(std::make_unique<OptimisePanel>(desk, host));
    m_panels.push_back(std::make_unique<RegionPanel>(desk, host));
    m_panels.push_back(std::make_unique<FitPanel>(desk, host));
    m_panels.push_back(std::make_unique<SetupPanel>(desk, host));
}

void CStudyPanels::Show(std::optional<std::size_t> n) {
    if (m_shown) {
        m_panels[*m_shown]->SetShown(false);
    }
    m_shown = n && *n < m_panels.size() ? n : std::nullopt;
    if (m_shown) {
        m_panels[*m_shown]->SetShown(true);
    }
}

void CStudyPanels::Follow(DocumentChange change) {
    for (const auto& panel : m_panels) {
        panel->Follow(change);
    }
}

bool CStudyPanels::Poll() {
    bool changed = false;
    for (const auto& panel : m_panels) {
        changed = panel->Poll() || changed;
    }
    return changed;
}

bool CStudyPanels::IsRunning() const {
    return std::any_of(m_panels.begin(), m_panels.end(),
                       [](const auto& panel) { return panel->IsRunning(); });
}

} // namespace corvanta
