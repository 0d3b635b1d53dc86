#include "desktop/AboutWindow.h"
#include "desktop/GridView.h"
#include "desktop/RecoveryWindow.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

#include <stdexcept>

namespace corvanta::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A user in front of the program, with a folder of their own.
class MainWindowTest : public testing::Test {
  protected:
    MainWindowTest() { m_user.Start(); }

    /// A copy of a sample in the user's folder.
    std::string Copied(const std::string& sample, const std::string& name) {
        std::string path = m_folder / name;
        m_disk.WriteBytes(path, m_disk.ReadBytes(SamplePath(sample)));
        return path;
    }

    /// What a cell of the table on the screen shows: row and column count from 0 behind the heads.
    [[nodiscard]] std::string Shown(int row, int column) const {
        const GridView& grid = *m_user.Window().Grid();
        return grid.model()->index(row, column).data().toString().toStdString();
    }

    [[nodiscard]] QWidget& Editor() const { return *m_user.Desk.EditorView(); }

    static void Press(QWidget& window, const char* button) {
        QTest::mouseClick(&DesktopUser::Child<QPushButton>(window, button), Qt::LeftButton);
    }

    void ChooseUnit(const char* name) const {
        DesktopUser::Child<QRadioButton>(*m_user.Desk.OptionsView(), name).click();
    }

    void TurnTo(EditorPage page) const { Editor().findChild<QTabWidget*>()->setCurrentIndex(page); }

    /// Types a text into a cell of the editor's table, as over what stands there.
    void TypeCell(int row, int column, const QString& text) const {
        GridView& grid = *m_user.Desk.EditorView()->Points();
        grid.setFocus();
        grid.setCurrentIndex(grid.model()->index(row, column));
        QTest::keyClicks(&grid, text.left(1)); // opens the cell
        QWidget* cell = grid.indexWidget(grid.currentIndex());
        ASSERT_NE(cell, nullptr) << row << " " << column << " " << text.toStdString();
        QTest::keyClicks(cell, text.mid(1));
        QTest::keyClick(cell, Qt::Key_Return);
        QApplication::processEvents(); // the toolkit takes the text in an event of its own
    }

    /// Steps a list from its head to an entry.
    void StepTo(const char* list, int entry) const {
        auto& box = DesktopUser::Child<QComboBox>(Editor(), list);
        QTest::keyClick(&box, Qt::Key_Home);
        for (int n = 0; n < entry; ++n) {
            QTest::keyClick(&box, Qt::Key_Down);
        }
    }

    void TypeField(const QString& label, const QString& text) const {
        for (QLineEdit* field : Editor().findChildren<QLineEdit*>()) {
            if (field->accessibleName() == label) {
                field->setFocus();
                field->selectAll();
                QTest::keyClicks(field, text);
                return;
            }
        }
        FAIL() << "no field " << label.toStdString();
    }

    TemporaryFolder m_folder;
    DiskFileServices m_disk;
    DesktopUser m_user{m_folder / "settings"};
};

TEST_F(MainWindowTest, AUserWalksThroughTheTablesOfASample) {
    m_user.Open(SamplePath("formula-front-pushrod.WSP"));
    for (const MenuItem& item : m_user.Logic().mnuView.Items) {
        if (item.Command != mcView || !item.Enabled) {
            continue;
        }
        m_user.Choose(mcView, item.Tag);
        const DataGrid& grid = m_user.Logic().grdDisplay;
        const GridView& shown = *m_user.Window().Grid();
        ASSERT_EQ(shown.isVisible(), grid.Visible) << item.Caption;
        if (!grid.Visible) {
            continue;
        }
        ASSERT_EQ(shown.model()->rowCount(), grid.Rows() - grid.FixedRows()) << item.Caption;
        ASSERT_EQ(shown.model()->columnCount(), grid.Columns() - grid.FixedColumns());
        if (item.Tag != vwCustomTable) { // which has no channel yet
            EXPECT_EQ(Shown(0, 0), grid.Cell(grid.FixedRows(), grid.FixedColumns()));
        }
    }
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(MainWindowTest, ArrowKeysStepTheFixedPosition) {
    m_user.Open(SamplePath("touring-front-wishbone.WSP"));
    m_user.Choose(mcView, vwCoordinates);
    const ViewSettings& settings = m_user.Desk.Program().Data().Settings;
    const int wheel = settings.ViewWheel;
    const int rack = settings.ViewRack;
    const std::string before = Shown(1, 2);
    const auto press = [&](Qt::Key key) { QTest::keyClick(m_user.Window().focusWidget(), key); };
    press(Qt::Key_Up); // the rack has the focus: the first key only moves it
    EXPECT_EQ(settings.ViewWheel, wheel);
    EXPECT_EQ(m_user.Window().focusWidget()->objectName(), "cboWheel");
    press(Qt::Key_Up);
    EXPECT_EQ(settings.ViewWheel, wheel - 1) << "up is into bump";
    EXPECT_NE(Shown(1, 2), before);
    EXPECT_THAT(m_user.Logic().stbMain.Position, HasSubstr("Bump +"));
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(settings.ViewRack, rack - 1);
}

TEST_F(MainWindowTest, ACellThatIsStillOpenIsTakenByTheAccessKeyOfApply) {
    m_user.Open(SamplePath("touring-front-wishbone.WSP"));
    m_user.Choose(mcProperties);
    TurnTo(pgStaticPoints);
    GridView& grid = *m_user.Desk.EditorView()->Points();
    grid.setCurrentIndex(grid.model()->index(0, 0));
    QTest::keyClicks(&grid, "9");
    DesktopUser::Child<QPushButton>(Editor(), "cmdApply").click(); // takes no focus
    EXPECT_EQ(m_user.Desk.Program().Data().Document.StaticPoints()[ptWTCP].X, 9);
}

TEST_F(MainWindowTest, WindowsOpenWithinTheScreen) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const auto fits = [&](const QWidget& window) { // but for the frame of the system
        return screen.contains(QRect(window.pos(), window.size()));
    };
    EXPECT_TRUE(fits(m_user.Window())) << "it would like to be wider";
    m_user.Open(SamplePath("touring-front-wishbone.WSP"));
    for (int opened = 0; opened < 2; ++opened) {
        m_user.Choose(mcProperties);
        EXPECT_TRUE(fits(Editor())) << opened;
        Editor().move(screen.bottomRight() - QPoint(50, 50)); // where it opens the next time
        EXPECT_TRUE(Editor().close());
    }
}

TEST_F(MainWindowTest, AnAccessKeyOfTheFootIsItsAlone) {
    m_user.Open(SamplePath("touring-front-wishbone.WSP"));
    m_user.Choose(mcProperties);
    TurnTo(pgTravel); // with an "Axle" beside "Apply"
    TypeField("Maximum bump travel of tyre contact patch:", "21");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Editor()));
    QTest::keyClick(Editor().windowHandle(), Qt::Key_A, Qt::AltModifier);
    QTest::qWait(200); // the button is seen to go down
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
    EXPECT_EQ(m_user.Desk.Program().Data().Document.Data.Bump, 21);
    EXPECT_FALSE(m_user.Logic().EditGeometry->HasUnappliedChanges());
}

TEST_F(MainWindowTest, TheCloseBoxOfTheEditorAsksBeforeTypedValuesGo) {
    m_user.Open(SamplePath("touring-front-wishbone.WSP"));
    m_user.Choose(mcProperties);
    TurnTo(pgStaticPoints);
    TypeCell(0, 0, "3");
    m_user.Box.Answers = {maNo};
    EXPECT_FALSE(Editor().close());
    ASSERT_NE(m_user.Desk.EditorView(), nullptr);
    m_user.Box.Answers = {maYes};
    EXPECT_TRUE(Editor().close());
    EXPECT_EQ(m_user.Desk.EditorView(), nullptr);
    EXPECT_EQ(m_user.Box.Shown.size(), 2U);
    m_user.Choose(mcProperties);
    EXPECT_TRUE(Editor().close()) << "nothing was typed";
    EXPECT_EQ(m_user.Box.Shown.size(), 2U);
}

TEST_F(MainWindowTest, OKOnAnUntouchedDocumentSavesTheSameBytesInEitherUnit) {
    std::string bytes = m_disk.ReadBytes(SamplePath("published/DWSWEEP.WSP"));
    for (const char* unit : {"mm", "in"}) {
        const std::string path = Copied("published/DWSWEEP.WSP", "sweep.WSP");
        m_user.Choose(mcOptions);
        ChooseUnit(std::string(unit) == "in" ? "optInches" : "optMillimetres");
        Press(*m_user.Desk.OptionsView(), "cmdOK");
        m_user.Open(path);
        m_user.Choose(mcSave);
        const std::string before = m_disk.ReadBytes(path);
        m_user.Choose(mcProperties);
        for (int page = pgDescription; page >= pgType; --page) {
            TurnTo(static_cast<EditorPage>(page));
        }
        Press(Editor(), "cmdOK");
        EXPECT_FALSE(m_user.Desk.Program().Data().Modified);
        m_user.Choose(mcSave);
        EXPECT_EQ(m_disk.ReadBytes(path), before) << unit;
    }
}

TEST_F(MainWindowTest, ACornerIsTypedInFromNothing) {
    const Suspension wanted = LoadSample("touring-front-wishbone.WSP");
    m_user.Box.Answers = {maYes};
    m_user.Choose(mcNew);
    ASSERT_NE(m_user.Desk.EditorView(), nullptr);
    StepTo("cboSpringMechanism", wanted.Data.SpringMechanism);
    StepTo("cboARB", m_user.Logic().EditGeometry->cboARB.FindData(wanted.Data.ARBMechanism));
    m_user.Box.Answers = {maYes}; // the page can't be undone
    TurnTo(pgStaticPoints);
    int row = 0;
    for (const PointNumber number : AllPoints) {
        if (wanted.Catalogue[number].Enabled) {
            const SuspPoint& point = wanted.StaticPoints()[number];
            TypeCell(row, 0, QString::number(point.X));
            TypeCell(row, 1, QString::number(point.Y));
            TypeCell(row++, 2, QString::number(point.Z));
        }
    }
    TurnTo(pgTravel);
    TypeField("Maximum bump travel of tyre contact patch:", "20");
    Press(Editor(), "cmdOK");
    ASSERT_TRUE(m_user.Desk.Program().Data().Document.ResultsValid)
        << testing::PrintToString(m_user.Box.Prompts());
    EXPECT_EQ(m_user.Desk.Program().Data().Document.Data.Bump, 20);
    m_user.Dialog.Paths = {m_folder / "typed"};
    m_user.Choose(mcSaveAs);
    Suspension typed = m_user.Desk.Program().Data().Document;
    m_user.Open(m_folder / "typed.WSP");
    const Suspension& read = m_user.Desk.Program().Data().Document;
    for (const PointNumber number : AllPoints) {
        if (wanted.Catalogue[number].Enabled) {
            EXPECT_EQ(read.StaticPoints()[number], typed.StaticPoints()[number]);
        }
    }
}

TEST_F(MainWindowTest, ClosingWithUnsavedChangesAsksAndEachAnswerIsTaken) {
    const std::string path = Copied("touring-front-wishbone.WSP", "front.WSP");
    const std::string before = m_disk.ReadBytes(path);
    m_user.Open(path);
    m_user.Choose(mcProperties);
    TurnTo(pgStaticPoints);
    TypeCell(0, 0, "3");
    m_user.Box.Answers = {maCancel};
    EXPECT_FALSE(m_user.Window().close()) << "typed and not applied is unsaved too";
    Press(Editor(), "cmdOK");
    m_user.Box.Answers = {maCancel};
    EXPECT_FALSE(m_user.Window().close());
    EXPECT_EQ(m_disk.ReadBytes(path), before);
    EXPECT_THAT(m_user.Box.Prompts(), ElementsAre("Save changes?", "Save changes?"));
    m_user.Box.Answers = {maYes};
    EXPECT_TRUE(m_user.Window().close());
    EXPECT_NE(m_disk.ReadBytes(path), before);
}

TEST_F(MainWindowTest, CtrlSInTheEditorSavesWhatIsTypedAndAChangeByAnotherIsOffered) {
    const std::string path = Copied("touring-front-wishbone.WSP", "front.WSP");
    m_user.Open(path);
    m_user.Choose(mcProperties);
    TurnTo(pgStaticPoints);
    TypeCell(0, 0, "3");
    QTest::keyClick(&Editor(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(m_disk.ReadBytes(path), HasSubstr("[ptWTCP]\t3\t"));
    EXPECT_FALSE(m_user.Window().isWindowModified());

    m_disk.WriteBytes(path, m_disk.ReadBytes(SamplePath("saloon-front-strut.WSP")));
    m_user.Box.Answers = {0};
    m_user.Window().activateWindow();
    QTRY_COMPARE(m_user.Desk.Program().Data().Document.Data.SpringMechanism, smMacPhersonStrut);
    EXPECT_THAT(m_user.Box.Prompts(), ElementsAre(HasSubstr("changed by another program")));
}

TEST_F(MainWindowTest, UnsavedWorkIsOfferedAtTheNextStart) {
    const std::string path = Copied("touring-front-wishbone.WSP", "front.WSP");
    const std::string before = m_disk.ReadBytes(path);
    {
        DesktopUser crashing(m_folder / "settings");
        crashing.Start();
        crashing.Open(path);
        crashing.Choose(mcProperties);
        frmEditGeometry& editor = *crashing.Logic().EditGeometry;
        crashing.Desk.Handle([&] {
            editor.grdPoints_Edited(2, 1, "7.5");
            editor.cmdOK_Click();
        });
    } // gone without a word
    EXPECT_EQ(m_disk.ReadBytes(path), before);
    DesktopUser next(m_folder / "settings");
    next.Start();
    ASSERT_NE(next.Desk.RecoveryView(), nullptr);
    EXPECT_EQ(next.Desk.RecoveryView()->findChild<QTreeWidget*>()->topLevelItem(0)->text(0),
              "front.WSP");
    Press(*next.Desk.RecoveryView(), "cmdOpen");
    EXPECT_EQ(next.Desk.Program().Data().Document.StaticPoints()[ptWTCP].X, 7.5);
    EXPECT_EQ(next.Desk.Program().Data().DocumentPath, path);
    EXPECT_TRUE(next.Window().isWindowModified());
    next.Choose(mcSave);
    EXPECT_NE(m_disk.ReadBytes(path), before);
    EXPECT_TRUE(next.Window().close());

    DesktopUser third(m_folder / "settings");
    third.Start();
    EXPECT_THAT(third.Box.Prompts(), IsEmpty()) << "what was saved is not offered again";
}

TEST_F(MainWindowTest, AnExceptionInAnEventIsReportedAndTheNextEventWorks) {
    m_user.Desk.Handle([] { throw std::runtime_error("out of nowhere"); });
    m_user.Desk.Handle([] { throw 1; });
    EXPECT_EQ(m_user.Box.Shown.size(), 2U);
    EXPECT_THAT(m_user.Box.Prompts().front(), HasSubstr("out of nowhere"));
    m_user.Open(SamplePath("touring-front-wishbone.WSP"));
    EXPECT_TRUE(m_user.Desk.Program().Data().Document.ResultsValid);
    // Out of an event that does not go through the program's own handling.
    QTimer::singleShot(0, &m_user.Window(), [] { throw std::runtime_error("in the toolkit"); });
    QTest::qWait(20);
    EXPECT_THAT(m_user.Box.Prompts().back(), HasSubstr("in the toolkit"));
}

TEST_F(MainWindowTest, AFileDroppedOnTheWindowOpens) {
    const std::string path = Copied("touring-front-wishbone.WSP", "front.WSP");
    const auto drop = [this](const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint at = m_user.Window().rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&m_user.Window(), &enter);
        if (enter.isAccepted()) {
            QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(&m_user.Window(), &event);
        }
        return enter.isAccepted();
    };
    const QUrl file = QUrl::fromLocalFile(QString::fromStdString(path));
    EXPECT_FALSE(drop({file, file}));
    EXPECT_FALSE(drop({QUrl("https://example.org/front.WSP")}));
    EXPECT_EQ(m_user.Desk.Program().Data().DocumentPath, "");
    EXPECT_TRUE(drop({file}));
    EXPECT_EQ(m_user.Desk.Program().Data().DocumentPath, path);
    EXPECT_TRUE(m_user.Desk.Program().Data().Document.ResultsValid);
    EXPECT_TRUE(drop({QUrl::fromLocalFile("/no/such/corner.WSP")}));
    EXPECT_EQ(m_user.Box.Shown.size(), 1U);
}

} // namespace
} // namespace corvanta::test
