#pragma once

#include "benchmarks/Documents.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/TemporaryFolder.h"

#include <QApplication>

#include <cstdlib>
#include <string>

namespace corvanta::benchmarks {

inline constexpr int FullGrid = 49;

/// The program with the document of the benchmarks on a full grid in its window.
class OpenWindow {
  public:
    OpenWindow() {
        m_user.Start();
        m_user.Open(std::string(CORVANTA_SOURCE_DIR) + "/samples/" + TBar);
        m_user.Choose(mcProperties);
        frmEditGeometry& editor = Editor();
        editor.txtBump.Text = editor.txtDroop.Text = editor.txtRackTravel.Text = "24";
        editor.txtWheelStep.Text = editor.txtRackStep.Text = "1";
        Run([&] { editor.cmdApply_Click(); });
        const Suspension& document = m_user.Desk.Program().Data().Document;
        if (document.NW != FullGrid || document.NR != FullGrid || !document.ResultsValid) {
            std::abort(); // there is nothing to measure
        }
    }

    [[nodiscard]] test::DesktopUser& User() { return m_user; }
    [[nodiscard]] frmEditGeometry& Editor() { return *m_user.Logic().EditGeometry; }

    /// An event and everything that it brings to the screen.
    template <typename Event>
    void Run(const Event& event) {
        m_user.Desk.Handle(event);
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }

  private:
    test::TemporaryFolder m_folder;
    test::DesktopUser m_user{m_folder.Path()};
};

} // namespace corvanta::benchmarks
