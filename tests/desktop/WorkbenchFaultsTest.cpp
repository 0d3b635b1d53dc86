#include "desktop/ChartSheetView.h"
#include "desktop/CompareWindow.h"
#include "desktop/GridView.h"
#include "desktop/TargetWindow.h"
#include "desktop/WorkbenchWindow.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <QTest>

#include <qcustomplot.h>

namespace corvanta::test {
namespace {

class WorkbenchFaultsTest : public testing::Test {
  protected:
    WorkbenchFaultsTest() {
        m_user.Start();
        m_user.Open(SamplePath("touring-front-wishbone.WSP"));
        m_user.Choose(mcWorkbench);
        m_user.Desk.Handle([this] { Bench().Tour.cmdSkip_Click(); });
        Window().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
    }

    frmWorkbench& Bench() { return *m_user.Logic().Workbench; }
    WorkbenchWindow& Window() { return *m_user.Desk.WorkbenchView(); }

    template <typename Widget>
    Widget& Part(const char* name) {
        return DesktopUser::Child<Widget>(Window(), name);
    }

    [[nodiscard]] QPoint MiddleOf(int row, int column) {
        GridView& table = Part<GridView>("grdWorkbenchPoints");
        return table.visualRect(table.model()->index(row, column)).center();
    }

    TemporaryFolder m_folder;
    DesktopUser m_user{m_folder.Path()};
};

TEST_F(WorkbenchFaultsTest, SelectedCellsAreScrubbedTogetherAndTakenBackWithWhatWasUndone) {
    GridView& table = Part<GridView>("grdWorkbenchPoints");
    table.SelectRange({4, 2, 4, 2});
    QTest::keyClick(&table, Qt::Key_Up, Qt::ControlModifier);
    QTest::qWait(1);
    ASSERT_EQ(Bench().Steps.size(), 2U) << Bench().Points.Selection.FirstRow;
    QTest::keyClick(&Window(), Qt::Key_Z, Qt::ControlModifier);
    ASSERT_EQ(Bench().Steps.size(), 2U);
    table.SelectRange({4, 2, 7, 2});
    const QPoint from = MiddleOf(4, 1);
    QTest::mousePress(table.viewport(), Qt::LeftButton, {}, from);
    for (const int way : {2, 4, 6, 16, 24}) {
        QTest::mouseMove(table.viewport(), from + QPoint(way, 0));
    }
    QTest::qWait(1);
    EXPECT_EQ(Bench().Points.Selection, (CellRange{4, 2, 7, 2}));
    EXPECT_EQ(Bench().Steps.back().Name, "Move 4 points Y");
    QTest::keyClick(&table, Qt::Key_Escape);
    QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, from);
    ASSERT_EQ(Bench().Steps.size(), 2U);
    EXPECT_TRUE(Bench().Steps.back().IsUndone) << "it can still be done again";
}

TEST_F(WorkbenchFaultsTest, SpaceStopsThePlayFromTheTableAndTheFields) {
    GridView& table = Part<GridView>("grdWorkbenchPoints");
    auto& bump = Part<QLineEdit>("txtBump");
    for (QWidget* const at : {static_cast<QWidget*>(&table), static_cast<QWidget*>(&bump)}) {
        m_user.Desk.Handle([this] { Bench().Play(PlayMode::Both); });
        at->setFocus();
        QTest::keyClick(at, Qt::Key_Space);
        EXPECT_EQ(Bench().Playing(), PlayMode::None);
    }
    QTest::keyClicks(&bump, "10 + 2");
    EXPECT_TRUE(bump.text().endsWith("10 + 2"));
    EXPECT_EQ(Bench().Playing(), PlayMode::None);
}

TEST_F(WorkbenchFaultsTest, TheListOfVariantsHearsItsKeysAndShowsWhatThereIs) {
    auto& list = Part<QListWidget>("lstVariants");
    QTest::keyClick(&Window(), Qt::Key_D, Qt::ControlModifier);
    list.setCurrentRow(0);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_D, Qt::ControlModifier);
    ASSERT_EQ(list.count(), 2);
    QTest::keyClick(&list, Qt::Key_F2);
    auto* editor = list.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->setText("Variant 2");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return !Bench().labHead.Caption.empty() && list.item(0)->text() == "Variant 1";
    })) << "no two have the same name";
    QTest::keyClick(&list, Qt::Key_Delete);
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(WorkbenchFaultsTest, DialogsBelongToTheWorkbenchTheyAreOpenedFrom) {
    m_user.Desk.Handle([this] { m_user.Logic().EditTarget(chCamberAngle, vvAlongWheelTravel); });
    EXPECT_EQ(m_user.Desk.TargetView()->parentWidget(), &Window());
    m_user.Desk.Handle([this] { m_user.Logic().TargetDialog->cmdCancel_Click(); });
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    m_user.Choose(mcCompare);
    CompareWindow* const compare = m_user.Desk.CompareView();
    EXPECT_EQ(compare->parentWidget(), &Window());
    Window().close();
    QTest::qWait(1);
    ASSERT_EQ(m_user.Desk.CompareView(), compare);
    EXPECT_TRUE(compare->isVisible());
    EXPECT_EQ(compare->parentWidget(), &m_user.Window());
}

TEST_F(WorkbenchFaultsTest, AChartAloneFillsThePanelWithAxesOfItsSize) {
    auto& chart = Part<ChartSheetView>("chart4");
    const QWidget& panel = *chart.parentWidget();
    QTest::mouseDClick(&chart.Plot(), Qt::LeftButton, {}, chart.Plot().rect().center());
    QTest::qWait(1);
    EXPECT_GT(chart.width(), panel.width() * 0.95);
    EXPECT_GT(chart.height(), panel.height() * 0.95);
    EXPECT_GT(chart.Plot().yAxis->ticker()->tickCount(), 8);
    int late = 0;
    QObject::connect(&chart.Plot(), &QCustomPlot::afterReplot, [&] { late = chart.height(); });
    Window().resize(Window().size() - QSize(0, 100));
    QTest::qWait(1);
    EXPECT_EQ(late, chart.height()) << "painted after it has its size";
}

TEST_F(WorkbenchFaultsTest, ALongTextWidensNoColumnOfAComparison) {
    m_user.Dialog.Paths = {SamplePath("formula-front-pushrod.WSP")};
    m_user.Desk.Handle([this] { m_user.Logic().Execute(mcAddVariants, 0); });
    m_user.Choose(mcCompare);
    auto& table = DesktopUser::Child<GridView>(*m_user.Desk.CompareView(), "grdCompare");
    ASSERT_GE(table.model()->columnCount(), 3);
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        EXPECT_LE(table.columnWidth(column), 200);
    }
}

} // namespace
} // namespace corvanta::test
