#pragma once

#include "shell/ShellHost.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace corvanta::test {

/// What the main window was asked a file name for.
struct AskedName {
    FileNameMode Mode = FileNameMode::Open;
    std::string Filter;
    std::string StartFolder;
    std::string Title;
    std::string Extension;
    bool QuietOnError = false;

    friend bool operator==(const AskedName&, const AskedName&) = default;
};

/// A main window that records what the other windows ask of it. Without a name left to answer with
/// the user cancels.
class FakeShellHost final : public ShellHost {
  public:
    std::vector<std::string> Calls;
    std::function<void()> OnRefresh = [] {}; ///< looks at the program when a refresh is asked for

    void ShowCurrentView() override { Calls.emplace_back("ShowCurrentView"); }
    void RefreshGUI(bool resetPosition) override {
        Calls.emplace_back(resetPosition ? "RefreshGUI(true)" : "RefreshGUI(false)");
        OnRefresh();
    }
    void DisplayView(std::int32_t view, std::int32_t viewArgument, std::int32_t variable, int wheel,
                     int rack) override {
        std::string call = "DisplayView";
        for (const int number : {int{view}, int{viewArgument}, int{variable}, wheel, rack}) {
            call += " " + std::to_string(number);
        }
        Calls.push_back(call);
    }
    [[nodiscard]] const DataGrid& Grid() const override { return m_grid; }
    [[nodiscard]] const std::string& ReportText() const override { return m_report; }
    [[nodiscard]] const Chart2D* Chart() const override { return nullptr; }
    std::string Confirmed;
    void Confirm(const std::string& done) override { Confirmed = done; }
    void ResetEditDialog() override { Calls.emplace_back("ResetEditDialog"); }

    bool DropsEdits = true; ///< the user's answer
    bool MayDropEdits() override { return DropsEdits; }

    bool TakeTypedEdits() override { return true; }

    bool MayDropStudy() override { return true; }

    frmEditGeometry* Editor = nullptr; ///< the editor that is open
    [[nodiscard]] frmEditGeometry* OpenedEditor() override { return Editor; }

    std::vector<AskedName> Asked;
    std::deque<ChosenFile> Names;
    std::function<void()> OnAsk = [] {}; ///< looks at the program when a name is asked for

    bool GetFileName(FileNameMode mode, const std::string& filter, const std::string& startFolder,
                     ChosenFile& chosen, bool quietOnError) override {
        Asked.push_back({mode, filter, startFolder, chosen.Title, chosen.Extension, quietOnError});
        OnAsk();
        if (Names.empty()) {
            return false;
        }
        chosen = Names.front();
        Names.pop_front();
        return true;
    }

  private:
    DataGrid m_grid;
    std::string m_report;
};

} // namespace corvanta::test
