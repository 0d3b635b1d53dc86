#pragma once

#include "desktop/WorkbenchWindow.h"
#include "shell/StudyPanel.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/desktop/Photographer.h"

#include <QTabWidget>
#include <QTest>

#include <algorithm>
#include <string>

namespace corvanta::test {

inline constexpr int HelpWidth = 800; ///< a page of the help is no wider

/// Works through examples by the controls of the workbench, and takes pictures of them.
class WorkbenchUser {
  public:
    WorkbenchUser(DesktopUser& user, const Photographer& camera) : m_user(user), m_camera(camera) {
        m_user.Choose(mcWorkbench);
        QTest::qWait(40); // a window that has just come up is fitted to the screen
        m_user.Desk.WorkbenchView()->resize(1440, 900);
    }

    void Close() {
        m_user.Desk.Handle([&] { Bench().Close(); });
    }

  protected:
    [[nodiscard]] frmWorkbench& Bench() const { return *m_user.Logic().Workbench; }

    void Open(const std::string& path) const {
        m_user.Box.Answers = {maNo, maNo}; // nothing of the example before is kept
        m_user.Open(path);
        m_user.Box.Answers.clear();
        MakeReady();
    }

    /// Two charts, and no tour.
    void MakeReady() const {
        m_user.Desk.Handle([&] {
            if (Bench().Tour.IsOpen()) {
                Bench().Tour.cmdSkip_Click();
            }
            Bench().SetChartCount(2);
        });
    }

    /// Brings the study of a kind in sight.
    template <typename Panel>
    Panel& Show() {
        const auto& all = Bench().Studies.All();
        const auto found = std::find_if(all.begin(), all.end(), [](const auto& panel) {
            return dynamic_cast<Panel*>(panel.get()) != nullptr;
        });
        m_shown = found->get();
        m_user.Desk.Handle(
            [&] { Bench().ShowStudy(static_cast<std::size_t>(found - all.begin())); });
        return dynamic_cast<Panel&>(*m_shown);
    }

    void Charts(int first, int second) const {
        m_user.Desk.Handle([&] {
            Bench().SetChart(0, {first, ChartKind::AlongWheelTravel, false});
            Bench().SetChart(1, {second, ChartKind::AlongWheelTravel, false});
            Bench().Chart_TravelMoved(0, {0, 0}, false);
        });
    }

    /// By as many steps of a size.
    void Move(const PointCoordinate& coordinate, const std::string& step, int steps = 1) const {
        m_user.Desk.Handle([&] {
            Bench().Points.Select(coordinate);
            Bench().Points.txtStep.Text = step;
            Bench().Points.txtStep_Changed();
            Bench().Points.Nudge(steps, false);
            Bench().Points_Changed();
        });
    }

    void Add(const PointCoordinate& coordinate, std::size_t table = 0) const {
        m_user.Desk.Handle([&] {
            Bench().Points.Select(coordinate);
            m_shown->cmdAdd_Click(table);
        });
    }

    void Type(std::size_t table, int row, int column, const std::string& text) const {
        m_user.Desk.Handle([&] {
            const int head = m_shown->Asked[table]->Grid.FixedRows();
            m_shown->Asked_Edited(table, head + row, column, text);
        });
    }

    void Remove(std::size_t table, int first, int last) const {
        m_user.Desk.Handle([&] {
            StudyTable& asked = *m_shown->Asked[table];
            asked.Selection = {asked.Grid.FixedRows() + first, 0, asked.Grid.FixedRows() + last, 0};
            m_shown->cmdRemove_Click(table);
        });
    }

    void Demand(const Target& target) const {
        m_user.Desk.Handle([&] {
            StudyData study = m_user.Desk.Program().Current().Study();
            study.Targets.push_back(target);
            m_user.Desk.Program().Current().ChangeStudy(std::move(study));
        });
    }

    void Run() const {
        m_user.Desk.Handle([&] { m_shown->cmdRun_Click(); });
        Wait();
    }
    void Wait() const {
        while (m_shown->IsRunning()) {
            QTest::qWait(20);
        }
    }

    enum class Seen { Panel, WithCharts };

    /// A picture of the study with a page of the answer in front, charts and corner above it.
    void Take(const QString& name, int page, Seen seen) const {
        QWidget& window = *m_user.Desk.WorkbenchView();
        for (QTabWidget* const answer : window.findChildren<QTabWidget*>("tabAnswer")) {
            answer->setCurrentIndex(page);
        }
        QWidget* const panel = window.findChild<QWidget*>("tabStudies")->parentWidget();
        m_camera.Take(seen == Seen::Panel ? panel : panel->parentWidget(), name, HelpWidth);
    }

    DesktopUser& m_user;
    const Photographer& m_camera;
    CStudyPanel* m_shown = nullptr;
};

} // namespace corvanta::test
