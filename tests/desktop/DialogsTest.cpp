#include "desktop/AdjustWindow.h"
#include "desktop/CompareWindow.h"
#include "desktop/CornerView.h"
#include "desktop/CustomChannelsWindow.h"
#include "desktop/ExportWindow.h"
#include "desktop/GridView.h"
#include "desktop/QtServices.h"
#include "desktop/TargetWindow.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>

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

TEST_F(DialogsTest, DesignsAreComparedAndATargetIsTyped) {
    m_user.Choose(mcCompare);
    QWidget& compare = *m_user.Desk.CompareView();
    auto& designs = DesktopUser::Child<QListWidget>(compare, "lstDesigns");
    auto& table = DesktopUser::Child<GridView>(compare, "grdCompare");
    ASSERT_EQ(designs.count(), 2);
    EXPECT_EQ(table.Model().columnCount(), 4); // unit, two designs, difference
    designs.item(1)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(table.Model().columnCount(), 2);
    Press(compare, "cmdCopy");
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("As it stands"));

    m_user.Desk.Handle([&] { m_user.Logic().EditTarget(chCamberAngle, vvAlongWheelTravel); });
    QWidget& target = *m_user.Desk.TargetView();
    auto& value = DesktopUser::Child<QLineEdit>(target, "txtValue");
    value.selectAll();
    QTest::keyClicks(&value, "-3/2");
    QTest::keyClick(&value, Qt::Key_Return);
    EXPECT_EQ(m_user.Desk.TargetView(), nullptr);
    m_user.Desk.Handle([&] { m_user.Logic().EditTarget(chCamberAngle, vvAlongWheelTravel); });
    EXPECT_EQ(m_user.Logic().TargetDialog->txtValue.Text, "-1.500");
    Press(*m_user.Desk.TargetView(), "cmdRemove");
    compare.close();
    EXPECT_EQ(m_user.Desk.CompareView(), nullptr);
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(DialogsTest, ThePreviewFollowsEveryKeyInACell) {
    m_user.Choose(mcProperties);
    m_user.Desk.Handle([&] { m_user.Logic().EditGeometry->tabPages_Changed(pgStaticPoints); });
    const auto solid = [&] {
        return m_user.Logic().EditGeometry->Preview.Sheet().Curves.front().Points;
    };
    const std::vector<ChartPoint> document = solid();
    GridView& table = *m_user.Desk.EditorView()->Points();
    table.setCurrentIndex(table.Model().index(2, 0));
    table.edit(table.currentIndex());
    auto* const line = table.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->selectAll();
    QTest::keyClicks(line, "-1");
    const std::vector<ChartPoint> first = solid();
    QTest::keyClicks(line, "0");
    EXPECT_NE(first, document);
    EXPECT_NE(solid(), first);
    EXPECT_EQ(line->text(), "-10");
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_EQ(solid(), document);
    EXPECT_FALSE(m_user.Logic().EditGeometry->HasUnappliedChanges());
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

TEST_F(DialogsTest, ARefusedRideHeightGoesWithItsWindow) {
    m_user.Choose(mcView, vwCoordinates);
    m_user.Choose(mcAdjust);
    auto& target = DesktopUser::Child<QLineEdit>(*m_user.Desk.AdjustView(), "txtTarget");
    const auto shows = [&](const char* height) {
        return m_user.Logic().grdDisplay.Text().find(height) != std::string::npos;
    };
    target.selectAll();
    QTest::keyClicks(&target, "900");
    Press(*m_user.Desk.AdjustView(), "cmdApply");
    EXPECT_THAT(m_user.Box.Prompts(), testing::ElementsAre(HasSubstr("Unable to complete")));
    EXPECT_TRUE(shows("\t900.00")) << "the reference point keeps it";
    Press(*m_user.Desk.AdjustView(), "cmdCancel");
    EXPECT_TRUE(shows("\t132.00") && !shows("\t900.00"));
}

TEST_F(DialogsTest, TheWheelChangesNoClosedListAndTextsAreShownAsTheyAreWritten) {
    m_user.Choose(mcProperties);
    QWidget& editor = *m_user.Desk.EditorView();
    for (QWidget* const window : {&editor, static_cast<QWidget*>(&m_user.Window())}) {
        const QList<QComboBox*> lists = window->findChildren<QComboBox*>();
        EXPECT_FALSE(lists.isEmpty());
        for (QComboBox* const list : lists) {
            const int chosen = list->currentIndex();
            for (const int way : {-120, 120}) {
                QWheelEvent wheel({5, 5}, list->mapToGlobal(QPointF(5, 5)), {}, {0, way},
                                  Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(list, &wheel);
                EXPECT_EQ(list->currentIndex(), chosen) << list->objectName().toStdString();
            }
        }
    }
    EXPECT_FALSE(m_user.Logic().EditGeometry->HasUnappliedChanges());

    const QString name = "<img src='a.png'><b>a</b>";
    QLabel label(name);
    label.show();
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    QToolTip::showText({10, 10}, name, &label);
    for (const QWidget* const top : QApplication::topLevelWidgets()) {
        const auto* const tip = qobject_cast<const QLabel*>(top);
        EXPECT_TRUE(tip == nullptr || tip->textFormat() == Qt::PlainText);
    }
    EXPECT_EQ(QToolTip::text(), name);
}

TEST_F(DialogsTest, TheTableOfPointsTakesCellsByTheKeyboard) {
    m_user.Choose(mcProperties);
    frmEditGeometry& logic = *m_user.Logic().EditGeometry;
    m_user.Desk.Handle([&] { logic.tabPages_Changed(pgStaticPoints); });
    auto& table = DesktopUser::Child<GridView>(*m_user.Desk.EditorView(), "grdPoints");
    table.setCurrentIndex(table.Model().index(1, 1));
    QApplication::clipboard()->setText("-701\t281");
    QTest::keyClick(&table, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(logic.grdPoints.Cell(3, 2) + logic.grdPoints.Cell(3, 3), "-701281");
    EXPECT_TRUE(logic.labPointNotes.Visible);
    EXPECT_TRUE(DesktopUser::Child<QLabel>(*m_user.Desk.EditorView(), "labPointNotes").isVisible());
}

TEST_F(DialogsTest, SeveralFilesCanBeChosenWhereSeveralAreAskedFor) {
    const TemporaryFolder folder;
    m_user.Files.WriteBytes(folder / "a.WSP", "");
    m_user.Files.WriteBytes(folder / "b.WSP", "");
    FileNameRequest request;
    request.Filter = "WSP files (*.wsp)|*.wsp";
    request.StartFolder = folder.Path();
    request.Several = true;
    WaitingUser waiting;
    waiting.Expect([](QWidget& window) {
        auto* const dialog = qobject_cast<QFileDialog*>(&window);
        if (dialog == nullptr) {
            return false;
        }
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText("\"a.WSP\" \"b.WSP\"");
        dialog->findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open)->click();
        return true;
    });
    const std::optional<FileNameAnswer> answer = QtFileDialog().Ask(request);
    ASSERT_TRUE(answer);
    EXPECT_THAT(answer->Paths, testing::ElementsAre(folder / "a.WSP", folder / "b.WSP"));
}

TEST_F(DialogsTest, ANewCornersTableOfPointsFitsTheNamesOfItsMechanism) {
    m_user.Choose(mcNew);
    m_user.Choose(mcProperties);
    m_user.Box.Answers = {maYes};
    m_user.Desk.Handle([&] {
        frmEditGeometry& editor = *m_user.Logic().EditGeometry;
        editor.cboSpringMechanism.Select(smPushrodToLowerWishbone);
        editor.tabPages_Changed(pgStaticPoints);
    });
    QTest::qWait(40); // a table is laid out once it is seen
    EXPECT_EQ(m_user.Desk.EditorView()->Points()->horizontalScrollBar()->maximum(), 0);
}

} // namespace
} // namespace corvanta::test
