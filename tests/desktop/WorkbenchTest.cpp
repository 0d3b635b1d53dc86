#include "desktop/WorkbenchWindow.h"

#include "desktop/ChartsPanel.h"
#include "desktop/CornerPanelView.h"
#include "desktop/PointsPanel.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <QListWidget>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <cmath>

namespace corvanta::test {
namespace {

/// The real workbench beside the real main window, worked by mouse and keyboard alone.
class WorkbenchTest : public testing::Test {
  protected:
    WorkbenchTest() {
        m_user.Start();
        m_user.Open(SamplePath("formula-front-pushrod.WSP"));
        QTest::keyClick(&m_user.Window(), Qt::Key_F6);
        View().resize(1280, 800);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&View()));
    }

    [[nodiscard]] WorkbenchWindow& View() { return *m_user.Desk.WorkbenchView(); }
    [[nodiscard]] frmWorkbench& Logic() { return *m_user.Logic().Workbench; }
    [[nodiscard]] const Suspension& Document() { return m_user.Desk.Program().Data().Document; }
    [[nodiscard]] double Z(PointNumber number) { return Document().StaticPoints()[number].Z; }

    /// Waits until all windows have followed.
    void Settle() {
        QTest::qWait(20);
        EXPECT_TRUE(QTest::qWaitFor([this] { return Document().ResultsValid; }));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        View().activateWindow();
        QTest::keyClick(View().focusWidget(), key, modifiers);
        QTest::qWait(5);
    }
    [[nodiscard]] QPoint PlaceOf(PointNumber number) {
        const Point2D at = Logic().Corner.PlaceOf(number);
        return QPointF(at.X, at.Y).toPoint();
    }
    /// The main window's cell of a point's Z at static.
    [[nodiscard]] std::string ClassicCell(PointNumber number) {
        const DataGrid& grid = m_user.Logic().Grid();
        for (int row = 0; row < grid.Rows(); ++row) {
            if (grid.RowData(row) == PointShortName(number)) {
                return grid.Cell(row, 3);
            }
        }
        return "";
    }

    TemporaryFolder m_folder;
    DesktopUser m_user{m_folder.Path()};
};

TEST_F(WorkbenchTest, ADraggedPointMovesCurvesTablesAndTheMainWindow) {
    m_user.Choose(mcView, vwCoordinates);
    CornerCanvas& canvas = View().Corner().Canvas();
    QTest::keyClick(&canvas, Qt::Key_1); // from the front: up is Z
    const double before = Z(ptTRI);
    const ChartSheet drawn = Logic().Sheets()[1];
    const QPoint start = PlaceOf(ptTRI);
    QTest::mousePress(&canvas, Qt::LeftButton, {}, start);
    for (int move = 1; move <= 6; ++move) {
        QTest::mouseMove(&canvas, start - QPoint(0, 2 * move));
        QTest::qWait(1);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return Z(ptTRI) > before; }));
    EXPECT_NEAR(Z(ptTRI) * 100, std::round(Z(ptTRI) * 100), 1e-9) << "digits that show";
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return Logic().Sheets()[1].Curves.front().Points != drawn.Curves.front().Points; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Document().ResultsValid; })) << "it follows the hand";
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, start - QPoint(0, 12));
    Settle();
    EXPECT_EQ(ClassicCell(ptTRI),
              FormatChannelValue(m_user.Desk.Program().Data().Units, Z(ptTRI), ucDisplacement));
    const double dragged = Z(ptTRI);
    const double force = Document().Data.XForce;

    // The editor is the other hand in the same history.
    m_user.Choose(mcProperties);
    m_user.Logic().EditGeometry->txtForceX.Text = "250";
    m_user.Desk.Handle([&] { m_user.Logic().EditGeometry->cmdOK_Click(); });
    View().Points().Table().setFocus();
    Key(Qt::Key_End); // from X, where the corner selected the point, to Z
    Key(Qt::Key_Up, Qt::ControlModifier);
    Settle();
    EXPECT_NEAR(Z(ptTRI), dragged + Logic().Points.Step(), 1e-9);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Z(ptTRI), dragged);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Document().Data.XForce, force);
    m_user.Window().activateWindow();
    QTest::keyClick(&m_user.Window(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Z(ptTRI), before);
    EXPECT_FALSE(View().isWindowModified() || m_user.Window().isWindowModified());
    QTest::keyClick(&m_user.Window(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Z(ptTRI), dragged);
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(WorkbenchTest, ADragThroughADesignThatFailsRecoversAndEscTakesItBack) {
    CornerCanvas& canvas = View().Corner().Canvas();
    QTest::keyClick(&canvas, Qt::Key_1);
    const double before = Z(ptTRI);
    const QPoint start = PlaceOf(ptTRI);
    QTest::mousePress(&canvas, Qt::LeftButton, {}, start);
    QTest::mouseMove(&canvas, start + QPoint(3, 0));
    QTest::mouseMove(&canvas, 2 * PlaceOf(ptTRO) - start); // out beyond its other end
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return Logic().labHead.Caption.starts_with("Can't be solved"); }));
    QTest::mouseMove(&canvas, start + QPoint(0, 4));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Logic().labHead.Caption.empty(); }));
    QTest::keyClick(&canvas, Qt::Key_Escape);
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, start);
    Settle();
    EXPECT_EQ(Z(ptTRI), before);
    EXPECT_FALSE(View().isWindowModified());
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(WorkbenchTest, TheKeyboardAloneGoesFromThePointsToAKeptVariant) {
    Key(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(View().focusWidget(), "trackrod inb");
    Key(Qt::Key_1, Qt::ControlModifier);
    Key(Qt::Key_End);
    const double before = Z(ptTRI);
    Key(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_NEAR(Z(ptTRI), before + 10 * Logic().Points.Step(), 1e-9);
    Key(Qt::Key_D, Qt::ControlModifier);
    ASSERT_EQ(Logic().Variants.size(), 1U);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Z(ptTRI), before);
    Key(Qt::Key_5, Qt::ControlModifier);
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_NEAR(Z(ptTRI), before + 10 * Logic().Points.Step(), 1e-9);
    Key(Qt::Key_F2);
    QTest::keyClicks(View().focusWidget(), "High rod");
    Key(Qt::Key_Return);
    EXPECT_EQ(Logic().Variants[0].Name, "High rod");
    m_user.Dialog.Paths = {m_folder.Path() + "/rods.study"};
    Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(m_user.Files.ReadBytes(m_folder.Path() + "/rods.study"), HasSubstr("High rod"));
}

TEST_F(WorkbenchTest, FilesBecomeVariantsAndTravelPlaysInAllWindows) {
    m_user.Dialog.Paths = {SamplePath("formula-front-pullrod.WSP"),
                           SamplePath("published/FSPUSHF.WSP"),
                           SamplePath("touring-front-wishbone.WSP")};
    for (int file = 0; file < 3; ++file) {
        Key(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    }
    ASSERT_EQ(Logic().Variants.size(), 3U);
    EXPECT_EQ(Logic().Sheets()[0].Curves.size(), 4U);
    EXPECT_EQ(DesktopUser::Child<QListWidget>(View(), "lstVariants").count(), 3);

    View().Points().Table().setFocus();
    const int before = m_user.Desk.Program().Data().Settings.ViewWheel;
    Key(Qt::Key_Space);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return m_user.Desk.Program().Data().Settings.ViewWheel != before; }));
    Key(Qt::Key_Space);
    EXPECT_EQ(Logic().Playing(), PlayMode::None);
    const int stopped = m_user.Desk.Program().Data().Settings.ViewWheel;
    QTest::qWait(100);
    EXPECT_EQ(m_user.Desk.Program().Data().Settings.ViewWheel, stopped);
    EXPECT_EQ(m_user.Logic().cboWheel.Index(), stopped - 2) << "the main window stands there too";
}

} // namespace
} // namespace corvanta::test
