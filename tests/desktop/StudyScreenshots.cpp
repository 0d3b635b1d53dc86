#include "tests/desktop/StudyScreenshots.h"

#include "shell/FitPanel.h"
#include "shell/OptimisePanel.h"
#include "shell/RegionPanel.h"
#include "shell/SensitivityPanel.h"
#include "shell/SetupPanel.h"
#include "shell/SweepPanel.h"
#include "shell/TolerancePanel.h"
#include "tests/desktop/WorkbenchUser.h"
#include "tests/support/Places.h"
#include "tests/support/SampleCorners.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>

namespace corvanta::test {

namespace {

constexpr int PageChart = 1; ///< of an answer; the tables follow

/// The worked examples of the help.
class StudyExamples : public WorkbenchUser {
  public:
    using WorkbenchUser::WorkbenchUser;

    void Sensitivity();
    void Sweep();
    void Tolerance();
    void Optimise();
    void Region();
    void Fit();
    void Setup();
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
