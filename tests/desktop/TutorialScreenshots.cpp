#include "tests/desktop/TutorialScreenshots.h"

#include "shell/OptimisePanel.h"
#include "shell/SensitivityPanel.h"
#include "shell/SetupPanel.h"
#include "tests/desktop/WorkbenchUser.h"
#include "tests/support/Places.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>
#include <QMap>

#include <array>
#include <string>
#include <utility>

namespace corvanta::test {

namespace {

constexpr int PageTables = 2; ///< of an answer, behind its charts
constexpr int PictureWidth = 1000;

/// The fields of the document that the page has its reader write, by name: "0,700,0" of "ptWTCP".
QMap<QString, QString> FieldsOfThePage() {
    QFile page(QString::fromStdString(SourceFolder() + "/docs/tutorial.md"));
    static_cast<void>(page.open(QIODevice::ReadOnly | QIODevice::Text));
    QMap<QString, QString> fields;
    for (const QString& line : QString::fromUtf8(page.readAll()).split('\n')) {
        if (line.startsWith("> [")) {
            fields[line.section('[', 1).section(']', 0, 0)] = line.section("],", 1);
        }
    }
    return fields;
}

class Tutorial : public WorkbenchUser {
  public:
    Tutorial(DesktopUser& user, const Photographer& camera, std::string folder)
        : WorkbenchUser(user, camera),
          m_folder(std::move(folder)) {}

    void ChooseUnits();
    void EnterTheCorner();
    void ReadResults();
    void Tune();
    void AskWhatMoves();
    void Optimise();
    void SetUp();

  private:
    void TakeWindow(const QString& name) const {
        m_camera.Take(m_user.Desk.WorkbenchView(), name, PictureWidth);
    }
    void Type(NumberBox& box, const QString& text) const {
        box.Text = text.toStdString();
        m_user.Logic().EditGeometry->NumberBox_Changed(box);
    }

    std::string m_folder; ///< of the documents
};

void Tutorial::ChooseUnits() {
    m_camera.Take(&m_user.Window(), "tutorial-start", PictureWidth);
    m_user.Choose(mcOptions);
    frmOptions& options = *m_user.Logic().OptionsDialog;
    options.optPoundsPerInch.Selected = false;
    options.optNewtonsPerMillimetre.Selected = true;
    m_user.Desk.Handle([&] { options.cmdOK_Click(); });
}

void Tutorial::EnterTheCorner() {
    m_user.Choose(mcNew);
    m_user.Box.Answers = {maYes}; // to leaving the page of mechanisms
    const QMap<QString, QString> fields = FieldsOfThePage();
    frmEditGeometry& editor = *m_user.Logic().EditGeometry;
    QTest::qWait(40); // a window that has just come up is fitted to the screen
    m_user.Desk.EditorView()->resize(1000, 640);
    m_user.Desk.Handle([&] {
        editor.cboSpringMechanism.Select(fields["SpringMechanism"].toInt());
        editor.cboSpringMechanism_Changed();
    });
    m_camera.Take(m_user.Desk.EditorView(), "tutorial-type");
    m_user.Desk.Handle([&] {
        editor.tabPages_Changed(pgStaticPoints);
        for (int row = 0; row < editor.grdPoints.Rows(); ++row) {
            const auto point = editor.PointAtRow(row);
            for (int axis = 0; point && axis < 3; ++axis) {
                const QString name = QString::fromStdString(std::string(PointShortName(*point)));
                editor.grdPoints_Edited(row, axis + 1,
                                        fields[name].section(',', axis, axis).toStdString());
            }
        }
    });
    m_camera.Take(m_user.Desk.EditorView(), "tutorial-points");
    const std::array<std::pair<const char*, NumberBox*>, 14> boxes{{
        {"Bump", &editor.txtBump},
        {"Droop", &editor.txtDroop},
        {"WheelTravelStepSize", &editor.txtWheelStep},
        {"RackTravel", &editor.txtRackTravel},
        {"RackTravelStepSize", &editor.txtRackStep},
        {"CGX", &editor.txtCoGX},
        {"CGZ", &editor.txtCoGZ},
        {"Wheelbase", &editor.txtWheelbase},
        {"Mass", &editor.txtTotalMass},
        {"KTyre", &editor.txtTyreStiffness},
        {"KLink", &editor.txtLinkStiffness},
        {"KSpring", &editor.txtSpringStiffness},
        {"GBrake", &editor.txtBraking},
        {"FrontBrakeBalanceSplitPC", &editor.txtBrakeBalance},
    }};
    m_user.Desk.Handle([&] {
        for (const auto& [name, box] : boxes) {
            Type(*box, fields[name]);
        }
        editor.cmdOK_Click();
    });
    m_user.Dialog.Paths = {m_folder + "/first-corner"};
    m_user.Choose(mcSave);
}

void Tutorial::ReadResults() {
    m_user.Choose(mcView, vwLateralGeometry);
    m_camera.Take(&m_user.Window(), "tutorial-table", PictureWidth);
    m_user.Choose(mcView, vwPlot);
    m_user.Desk.Handle([&] {
        m_user.Logic().cboType.Select(m_user.Logic().cboType.FindData(chSteerAngleBump));
        m_user.Logic().cboType_Changed();
    });
    m_camera.Take(&m_user.Window(), "tutorial-plot", PictureWidth);
}

void Tutorial::Tune() {
    MakeReady();
    m_user.Desk.Handle([&] { Bench().SetBaseline(); });
    Charts(chSteerAngleBump, chCamberAngle);
    Demand(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.05, -40, 40));
    Demand(PlainTarget(chCamberAngle, vvAlongWheelTravel, -2.9, 0.1, 50, 50));
    Move({ptTRI, 2}, "1", -9);
    TakeWindow("tutorial-workbench");
}

void Tutorial::AskWhatMoves() {
    m_user.Desk.Handle([&] { Bench().Chart_TakenInHand(1); });
    auto& panel = Show<SensitivityPanel>();
    m_user.Desk.Handle([&] {
        panel.cboFigure.Select(1);
        panel.Field_Changed(0);
    });
    Wait();
    Take("tutorial-what-moves", PageTables, Seen::Panel);
}

void Tutorial::Optimise() {
    Show<OptimisePanel>();
    Add({ptTRI, 2});
    Add({ptUWIR, 2});
    Add({ptUWIF, 2});
    Run();
    m_user.Desk.Handle([&] { m_shown->cmdKeep_Click(); });
    Take("tutorial-optimise", PageTables + 1, Seen::WithCharts);
    m_user.Desk.Handle([&] { Bench().RestoreVariant(0); });
}

void Tutorial::SetUp() {
    Show<SetupPanel>();
    m_user.Desk.Handle([&] { m_shown->cmdFill_Click(0); });
    m_user.Desk.Handle([&] { m_shown->cmdFill_Click(1); });
    Remove(0, 6, m_shown->Asked[0]->Grid.Rows() - 2); // the shims
    Remove(0, 0, 3);                                  // the wishbones; track rod and spring stay
    Run();
    Take("tutorial-setup", PageTables, Seen::Panel);
}

} // namespace

void TakeTutorial(const Photographer& camera) {
    const TemporaryFolder folder;
    DesktopUser user(folder.Path());
    user.Start();
    user.Window().resize(1100, 720);
    Tutorial tutorial(user, camera, folder.Path());
    tutorial.ChooseUnits();
    tutorial.EnterTheCorner();
    tutorial.ReadResults();
    tutorial.Tune();
    tutorial.AskWhatMoves();
    tutorial.Optimise();
    tutorial.SetUp();
    tutorial.Close();
}

} // namespace corvanta::test
