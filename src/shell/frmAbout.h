#pragma once

#include "shell/Desk.h"

#include <string>

namespace corvanta {

/// The window with the product's name and version. At the start it stands above all others for a
/// moment; from the help menu it waits to be closed.
class frmAbout : public Window {
  public:
    /// How long it stands at the start, ms.
    static constexpr int SplashTime = 2000;

    std::string Version;
    bool IsSplash = false;

    void ShowSplash(const std::string& version) {
        Version = version;
        IsSplash = true;
        IsOpen = true;
    }

    void ShowAbout(const std::string& version) {
        Version = version;
        IsSplash = false;
        IsOpen = true;
    }

    void Close() { IsOpen = false; }
};

} // namespace corvanta
