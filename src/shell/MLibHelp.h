#pragma once

#include "platform/WindowServices.h"

#include <string>
#include <utility>

namespace corvanta {

/// Topics of the help, one for each window.
enum HelpTopic : int {
    htContents = 1,
    htMainWindow = 10,
    htEditGeometry = 20,
    htOptions = 30,
    htWorkbench = 70,
    htSensitivity = 300,
    htSweep = 310,
    htTolerance = 320,
    htOptimise = 330,
    htRegion = 340,
    htFit = 350,
    htSetup = 360,
};

/// Opens the help. A viewer that fails is ignored.
class MLibHelp {
  public:
    explicit MLibHelp(HelpViewer& viewer) : m_viewer(viewer) {}

    void SetHelpFile(std::string path) { m_path = std::move(path); }
    void ShowHelpContents();

    /// Opens the page of a topic.
    void ShowHelpTopic(int topic);

  private:
    HelpViewer& m_viewer;
    std::string m_path;
};

} // namespace corvanta
