#include "tests/desktop/StudyScreenshots.h"

#include "desktop/WorkbenchWindow.h"
#include "shell/FitPanel.h"
#include "shell/OptimisePanel.h"
#include "shell/RegionPanel.h"
#include "shell/SensitivityPanel.h"
#include "shell/SetupPanel.h"
#include "shell/SweepPanel.h"
#include "shell/TolerancePanel.h"
#include "tests/support/Places.h"
#include "tests/support/SampleCorners.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QTabWidget>
#include <QTest>

#include <algorithm>

namespace corvanta::test {

namespace {

constexpr int HelpWidth = 800; ///< a page of the help is no wider
constexpr int PageChart = 1;   ///< of an answer; the tables follow

/// The worked examples of the help, by the controls of the workbench.
class StudyExamples {
  public:
    StudyExamples(DesktopUser& user, const Photographer& camera) : m_user(user), m_camera(camera) {
        m_user.Choose(mcWorkbench);
        QTest::qWait(40); // a window that has just come up is fitted to the screen
        m_user.Desk.WorkbenchView()->resize(1440, 900);
    }

    void Sensitivity();
    void Sweep();
    void Tolerance();
    void Optimise();
    void Region();
    void Fit();
    void Setup();

    void Close() {
        m_user.Desk.Handle([&] { Bench().Close(); });
    }

  private:
    [[nodiscard]] frmWorkbench& Bench() const { return *m_user.Logic().Workbench; }

    void Open(const std::string& path) const {
        m_user.Box.Answers = {maNo, maNo}; // nothing of the example before is kept
        m_user.Open(path);
        m_user.Box.Answers.clear();
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

    void Move(const PointCoordinate& coordinate, const std::string& way) const {
        m_user.Desk.Handle([&] {
            Bench().Points.Select(coordinate);
            Bench().Points.txtStep.Text = way;
            Bench().Points.txtStep_Changed();
            Bench().Points.Nudge(1, false);
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

/// The readings that the page on the fit has its user copy.
QString ReadingsOfTheHelp() {
    QFile page(QString::fromStdString(SourceFolder() + "/docs/help/study-fit.html"));
    static_cast<void>(page.open(QIODevice::ReadOnly | QIODevice::Text));
    return QString::fromUtf8(page.readAll()).section("<pre>", 1).section("</pre>", 0, 0);
}

void StudyExamples::Sensitivity() {
    Open(SamplePath("formula-front-pushrod.WSP"));
    Charts(chSteerAngleBump, chCamberAngle);
    auto& panel = Show<SensitivityPanel>();
    m_user.Desk.Handle([&] {
        panel.cboFigure.Select(1);
        panel.Field_Changed(0);
    });
    Wait();
    Take("study-sensitivity", PageChart + 1, Seen::Panel);
}

void StudyExamples::Sweep() {
    auto& panel = Show<SweepPanel>();
    m_user.Desk.Handle([&] {
        panel.cboFigure.Select(2);
        panel.Field_Changed(0);
    });
    Add({ptTRI, 2});
    Type(0, 0, 1, "193.5");
    Type(0, 0, 2, "201.5");
    Type(0, 0, 3, "5");
    Run();
    Take("study-sweep", PageChart, Seen::WithCharts);
}

void StudyExamples::Optimise() {
    Open(SamplePath("formula-front-pushrod.WSP"));
    Charts(chSteerAngleBump, chCamberAngle);
    Move({ptTRI, 2}, "4");
    Demand(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.01, -25, 25));
    Show<OptimisePanel>();
    Add({ptTRI, 2});
    Add({ptTRO, 2});
    Run();
    m_user.Desk.Handle([&] { m_shown->cmdKeep_Click(); });
    Take("study-optimise", PageChart + 2, Seen::WithCharts);
}

void StudyExamples::Tolerance() {
    Open(SamplePath("roadster-front-links.WSP"));
    Charts(chSteerAngleBump, chCamberAngle);
    m_user.Desk.Handle([&] { Bench().SetChartCount(1); });
    Demand(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.05, -60, 60));
    auto& panel = Show<TolerancePanel>();
    m_user.Desk.Handle([&] { panel.cmdFill_Click(0); });
    Run();
    Take("study-tolerance", PageChart + 1, Seen::WithCharts);
}

void StudyExamples::Region() {
    Open(SamplePath("touring-front-wishbone.WSP"));
    Charts(chRollCentreToGround, chCamberAngle);
    Demand(PlainTarget(chRollCentreToGround, vvAlongWheelTravel, 49, 5, 0, 0));
    Demand(PlainTarget(chCamberAngle, vvAlongWheelTravel, -4.6, 0.1, 50, 50));
    auto& panel = Show<RegionPanel>();
    m_user.Desk.Handle([&] {
        panel.cboPoint.Select(panel.cboPoint.FindData(ptUWIF));
        panel.Field_Changed(0);
    });
    Run();
    Take("study-region", PageChart, Seen::WithCharts);
}

void StudyExamples::Fit() {
    Open(SamplePath("published/DWSWEEP.WSP"));
    Charts(chSteerAngleBump, chCamberAngle);
    Show<FitPanel>();
    m_user.Desk.Handle([&] {
        QGuiApplication::clipboard()->setText(ReadingsOfTheHelp());
        m_shown->cmdFill_Click(0);
    });
    for (const PointNumber point : {ptUWIF, ptUWIR, ptLWIF, ptLWIR, ptTRI}) {
        Add({point, 2}, 1);
    }
    Add({ptUWIF, 0}, 1);
    for (int row = 0; row < 6; ++row) {
        Type(1, row, 1, "3");
    }
    Run();
    Take("study-fit", PageChart + 1, Seen::Panel);
}

void StudyExamples::Setup() {
    Open(SamplePath("formula-front-pushrod.WSP"));
    Charts(chSteerAngleBump, chCamberAngle);
    auto& panel = Show<SetupPanel>();
    m_user.Desk.Handle([&] { panel.cmdFill_Click(0); });
    m_user.Desk.Handle([&] { panel.cmdFill_Click(1); });
    Remove(0, 6, 11);
    Remove(0, 0, 3); // track rod and pushrod stay
    Run();
    Take("study-setup", PageChart + 1, Seen::Panel);
    Type(1, 1, 2, "0");
    Type(1, 3, 2, "3");
    Run();
    Take("study-setup-turns", PageChart + 3, Seen::Panel);
}

} // namespace

void TakeStudies(DesktopUser& user, const Photographer& camera) {
    StudyExamples examples(user, camera);
    examples.Sensitivity();
    examples.Sweep();
    examples.Optimise();
    examples.Tolerance();
    examples.Region();
    examples.Fit();
    examples.Setup();
    examples.Close();
}

} // namespace corvanta::test
