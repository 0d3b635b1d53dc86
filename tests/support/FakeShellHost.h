#pragma once

#include "shell/ShellHost.h"

#include <functional>
#include <string>
#include <vector>

namespace corvanta::test {

/// A main window that records what the other windows ask of it.
class FakeShellHost final : public ShellHost {
  public:
    std::vector<std::string> Calls;
    std::function<void()> OnRefresh = [] {}; ///< looks at the program when a refresh is asked for

    void ShowCurrentView() override { Calls.emplace_back("ShowCurrentView"); }
    void RefreshGUI(bool resetPosition) override {
        Calls.emplace_back(resetPosition ? "RefreshGUI(true)" : "RefreshGUI(false)");
        OnRefresh();
    }
    [[nodiscard]] const DataGrid& Grid() const override { return m_grid; }
    void ResetEditDialog() override { Calls.emplace_back("ResetEditDialog"); }

  private:
    DataGrid m_grid;
};

} // namespace corvanta::test
