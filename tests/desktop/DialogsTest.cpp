#include "desktop/AdjustWindow.h"
#include "desktop/CornerView.h"
#include "desktop/CustomChannelsWindow.h"
#include "desktop/ExportWindow.h"
#include "desktop/GridView.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <algorithm>

namespace corvanta::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class DialogsTest : public testing::Test {
  protected:
    DialogsTest() {
        m_user.Start();
        m_user.Open(SamplePath("formula-front-pushrod.WSP"));
    }

    static void Press(QWidget& window, const char* button) {
        DesktopUser::Child<QPushButton>(window, button).click();
    }

    static void Tick(QWidget& window, const char* list, int row) {
        DesktopUser::Child<QListWidget>(window, list).item(row)->setCheckState(Qt::Checked);
    }

    TemporaryFolder m_folder;
    DiskFileServices m_disk;
    DesktopUser m_user{m_folder / "settings"};
};

TEST_F(DialogsTest, ACustomTableIsComposedAndExported) {
    m_user.Choose(mcDefineCustomTable);
    ASSERT_NE(m_user.Desk.CustomChannelsView(), nullptr);
    Tick(*m_user.Desk.CustomChannelsView(), "tvwChannels", 13);
    Tick(*m_user.Desk.CustomChannelsView(), "tvwChannels", 0);
    Press(*m_user.Desk.CustomChannelsView(), "cmdOk");
    EXPECT_EQ(m_user.Desk.CustomChannelsView(), nullptr);
    m_user.Choose(mcView, vwCustomTable);
    EXPECT_EQ(m_user.Logic().grdDisplay.Cell(0, 1), "Camber Angle");
    EXPECT_EQ(m_user.Logic().grdDisplay.Columns(), 3);

    m_user.Choose(mcExportResults);
    auto& option = DesktopUser::Child<QRadioButton>(*m_user.Desk.ExportView(), "optExport1");
    option.click();
    m_user.Dialog.Paths = {m_folder / "table.txt"};
    Press(*m_user.Desk.ExportView(), "cmdExport");
    EXPECT_EQ(m_user.Desk.ExportView(), nullptr);
    EXPECT_THAT(m_disk.ReadBytes(m_folder / "table.txt"),
                HasSubstr("Wheel Travel\tCamber Angle\tAckerman %"));
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(DialogsTest, TheChannelsOfTheCustomTableArePutInOrder) {
    m_user.Choose(mcDefineCustomTable);
    QDialog& editor = *m_user.Desk.CustomChannelsView();
    QWidget* const channels = editor.focusWidget();
    ASSERT_EQ(channels->objectName(), "tvwChannels");
    for (const int id : {5, 7, 2}) {
        Tick(editor, "tvwChannels", id - 1);
    }
    QTest::keyClick(channels, Qt::Key_Tab);
    EXPECT_EQ(editor.focusWidget(), &DesktopUser::Child<QListWidget>(editor, "lstSelected"));
    auto& selected = DesktopUser::Child<QListWidget>(editor, "lstSelected");
    const auto order = [&] {
        QStringList texts;
        for (int row = 0; row < selected.count(); ++row) {
            texts << selected.item(row)->text();
        }
        return texts;
    };
    const QStringList before = order();
    ASSERT_EQ(before.size(), 3);
    selected.setCurrentRow(2);
    Press(editor, "cmdMoveUp");
    Press(editor, "cmdMoveUp");
    Press(editor, "cmdMoveUp"); // it is at the top
    EXPECT_EQ(order(), (QStringList{before[2], before[0], before[1]}));
    EXPECT_EQ(selected.currentRow(), 0) << "the channel stays selected";
    Press(editor, "cmdMoveDown");
    EXPECT_EQ(order(), (QStringList{before[0], before[2], before[1]}));
    Press(editor, "cmdOk");
    EXPECT_THAT(m_user.Desk.Program().Data().CustomChannels.Ids(), testing::ElementsAre(5, 2, 7));
}

TEST_F(DialogsTest, AWindowOutlivesTheEventThatClosesIt) {
    m_user.Choose(mcDefineCustomTable);
    const QPointer<QWidget> view = m_user.Desk.CustomChannelsView();
    m_user.Desk.Handle([&] {
        m_user.Logic().CustomChannelsDialog->Close();
        QEventLoop loop; // as that of a message that closing brings up
        QTimer::singleShot(0, &loop, [&] {
            m_user.Desk.Show();
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
        });
        loop.exec();
        m_user.Desk.Show();
        EXPECT_TRUE(view != nullptr && !view->isVisible());
        EXPECT_NE(m_user.Logic().CustomChannelsDialog, nullptr);
    });
    QTest::qWait(1);
    m_user.Desk.Show();
    EXPECT_TRUE(view == nullptr);
    EXPECT_EQ(m_user.Logic().CustomChannelsDialog, nullptr);
}

TEST_F(DialogsTest, ComponentAndDrawingAreWritten) {
    m_user.Dialog.Paths = {m_folder / "corner.svr", m_folder / "corner.dxf"};
    m_user.Choose(mcExportComponent);
    m_user.Choose(mcExportDXF);
    EXPECT_THAT(m_disk.ReadBytes(m_folder / "corner.dxf"), HasSubstr("LINE"));
    EXPECT_FALSE(m_disk.ReadBytes(m_folder / "corner.svr").empty());
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(DialogsTest, ATableIsSavedAsCommaSeparatedValues) {
    m_user.Choose(mcView, vwBarDetails);
    m_user.Window().Grid()->SaveCsv(QString::fromStdString(m_folder / "table.csv"));
    const std::string table = m_disk.ReadBytes(m_folder / "table.csv");
    EXPECT_THAT(table, testing::StartsWith("Wheel Travel,ARB Rotation,"));
    EXPECT_THAT(table, HasSubstr("\"")) << "thousands are grouped by commas";
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), m_user.Logic().grdDisplay.Rows());
}

TEST_F(DialogsTest, TheFreeViewIsTurnedAndSaved) {
    m_user.Choose(mcView, vw3d);
    auto& view = *m_user.Window().findChild<CornerView*>();
    const QPoint inFreeView(view.width() * 3 / 4, view.height() * 3 / 4);
    view.SaveAs(QString::fromStdString(m_folder / "standard.svg"));
    QTest::mousePress(&view, Qt::LeftButton, {}, inFreeView);
    QMouseEvent drag(QEvent::MouseMove, inFreeView + QPoint(50, 20),
                     view.mapToGlobal(inFreeView + QPoint(50, 20)), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(&view, &drag);
    EXPECT_NE(m_user.Logic().Wireframe.CurrentFreeView(), FreeView());
    view.SaveAs(QString::fromStdString(m_folder / "turned.svg"));
    EXPECT_NE(m_disk.ReadBytes(m_folder / "turned.svg"),
              m_disk.ReadBytes(m_folder / "standard.svg"));
    QTest::mouseDClick(&view, Qt::LeftButton, {}, inFreeView);
    EXPECT_EQ(m_user.Logic().Wireframe.CurrentFreeView(), FreeView());
    view.SaveAs(QString::fromStdString(m_folder / "again.svg"));
    EXPECT_EQ(m_disk.ReadBytes(m_folder / "again.svg"),
              m_disk.ReadBytes(m_folder / "standard.svg"));
}

TEST_F(DialogsTest, TheRideHeightGoesThereAndBack) {
    const PointSet before = m_user.Desk.Program().Data().Document.StaticPoints();
    for (const char* target : {"137", "132"}) {
        m_user.Choose(mcAdjust);
        auto& field = DesktopUser::Child<QLineEdit>(*m_user.Desk.AdjustView(), "txtTarget");
        field.selectAll();
        QTest::keyClicks(&field, target);
        Press(*m_user.Desk.AdjustView(), "cmdOK");
        EXPECT_EQ(m_user.Desk.AdjustView(), nullptr);
        EXPECT_EQ(m_user.Desk.Program().Data().Document.StaticPoints()[ptRHM].Z, std::stod(target));
        EXPECT_TRUE(m_user.Desk.Program().Data().Document.ResultsValid);
    }
    const PointSet& after = m_user.Desk.Program().Data().Document.StaticPoints();
    for (const PointNumber number : {ptUWO, ptLWO, ptTRO, ptTRI, ptUWIF, ptPRI, ptWC}) {
        EXPECT_LT(Distance(before[number], after[number]), 1e-4) << number;
    }
    EXPECT_TRUE(m_user.Window().isWindowModified());
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(DialogsTest, TheRideHeightIsWorkedByTheKeyboard) {
    m_user.Choose(mcAdjust);
    QWidget& window = *m_user.Desk.AdjustView();
    auto& target = DesktopUser::Child<QLineEdit>(window, "txtTarget");
    const auto type = [&](const char* text) {
        QTest::qWait(1); // for the selection that comes with the focus
        QTest::keyClicks(&target, text);
    };
    for (const char* height : {"137", "136.5"}) {
        type(height);
        QTest::keyClick(&target, Qt::Key_Return);
        EXPECT_EQ(m_user.Desk.Program().Data().Document.StaticPoints()[ptRHM].Z, std::stod(height));
    }
    type("9");
    QTest::keyClick(&target, Qt::Key_Escape);
    EXPECT_EQ(target.text(), "136.50") << "what stood after the last Apply";
    QTest::keyClick(&target, Qt::Key_Escape);
    EXPECT_EQ(m_user.Desk.AdjustView(), nullptr);
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(DialogsTest, AFailedRideHeightIsOnShow) {
    m_user.Choose(mcView, vwCoordinates);
    m_user.Choose(mcAdjust);
    auto& target = DesktopUser::Child<QLineEdit>(*m_user.Desk.AdjustView(), "txtTarget");
    target.selectAll();
    QTest::keyClicks(&target, "900");
    Press(*m_user.Desk.AdjustView(), "cmdOK");
    EXPECT_THAT(m_user.Box.Prompts(), testing::ElementsAre(HasSubstr("Unable to complete")));
    bool shown = false;
    const DataGrid& grid = m_user.Logic().grdDisplay;
    for (int row = 0; row < grid.Rows(); ++row) {
        shown = shown || grid.Cell(row, 3) == "900.00";
    }
    EXPECT_TRUE(shown) << "the height that the reference point has kept";
}

} // namespace
} // namespace corvanta::test
