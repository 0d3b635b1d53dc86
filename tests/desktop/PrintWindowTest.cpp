#include "desktop/PrintWindow.h"
#include "desktop/PagePreview.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPushButton>
#include <QTest>

namespace corvanta::test {
namespace {

using testing::IsEmpty;

/// A user of the dialog that prints.
class PrintWindowTest : public testing::Test {
  protected:
    PrintWindowTest() {
        m_user.Start();
        m_user.Open(SamplePath("formula-front-pushrod.WSP"));
        m_user.Choose(mcView, vwAngles);
        m_user.Choose(mcPrint);
    }

    [[nodiscard]] PrintWindow& Shown() const { return *m_user.Desk.PrintView(); }
    [[nodiscard]] frmPrint& Logic() { return *m_user.Logic().PrintDialog; }

    void Press(const char* button) const {
        DesktopUser::Child<QPushButton>(Shown(), button).click();
    }

    TemporaryFolder m_folder;
    DesktopUser m_user{m_folder / "settings"};
    WaitingUser m_waiting;
};

TEST_F(PrintWindowTest, AViewIsTickedOnItsBoxBesideItAndByTheKeyboard) {
    auto& tables = DesktopUser::Child<QListWidget>(Shown(), "tvwTables");
    EXPECT_FALSE(tables.isEnabled());
    DesktopUser::Child<QRadioButton>(Shown(), "optSelectedTables").click();
    ASSERT_TRUE(tables.isEnabled());
    const QRect row = tables.visualItemRect(tables.item(1));
    const bool before = Logic().tvwTables.Rows[1].Checked;
    const auto expectTick = [&](bool ticked) {
        EXPECT_EQ(Logic().tvwTables.Rows[1].Checked, ticked);
        EXPECT_EQ(tables.item(1)->checkState() == Qt::Checked, ticked);
    };
    QTest::mouseClick(tables.viewport(), Qt::LeftButton, {},
                      {row.left() + row.height() / 2, row.center().y()});
    expectTick(!before);
    QTest::mouseClick(tables.viewport(), Qt::LeftButton, {}, row.center());
    expectTick(before);
    QTest::keyClick(&tables, Qt::Key_Space);
    expectTick(!before);
}

TEST_F(PrintWindowTest, EscapeAndTheCloseBoxLeaveThePreviewFirst) {
    const auto escape = [this] { QTest::keyClick(&Shown(), Qt::Key_Escape); };
    const auto closeBox = [this] { Shown().close(); };
    for (const std::function<void()>& leave : {std::function<void()>(escape), {closeBox}}) {
        if (m_user.Desk.PrintView() == nullptr) {
            m_user.Choose(mcPrint);
        }
        const QRect settings = Shown().geometry();
        Press("cmdPreview");
        auto& pages = *Shown().findChild<PagePreview*>();
        EXPECT_TRUE(pages.isVisible());
        EXPECT_TRUE(Shown().rect().contains(pages.geometry()));
        EXPECT_EQ(Shown().focusWidget(), &pages) << "the keys turn the pages";
        leave();
        ASSERT_NE(m_user.Desk.PrintView(), nullptr);
        EXPECT_FALSE(pages.isVisible());
        EXPECT_EQ(Shown().geometry(), settings);
        EXPECT_EQ(Shown().focusWidget()->objectName(), "cmdOK");
        leave();
        EXPECT_EQ(m_user.Desk.PrintView(), nullptr);
    }
}

TEST_F(PrintWindowTest, APrinterCalledOffLeavesTheDialogAndOneThatPrintsClosesIt) {
    m_waiting.Expect([](QWidget& waiting) {
        const bool asks = qobject_cast<QPrintDialog*>(&waiting) != nullptr;
        waiting.close();
        return asks;
    });
    Press("cmdOK");
    ASSERT_NE(m_user.Desk.PrintView(), nullptr);
    const QString path = QString::fromStdString(m_folder / "angles.pdf");
    m_waiting.Expect([&](QWidget& waiting) {
        auto* const dialog = qobject_cast<QPrintDialog*>(&waiting);
        if (dialog == nullptr) {
            return false;
        }
        dialog->findChild<QLineEdit*>("filename")->setText(path);
        QTest::keyClick(dialog, Qt::Key_Return);
        return true;
    });
    Press("cmdOK");
    EXPECT_TRUE(m_waiting.Done());
    EXPECT_EQ(m_user.Desk.PrintView(), nullptr);
    QFile printed(path);
    ASSERT_TRUE(printed.open(QIODevice::ReadOnly));
    EXPECT_TRUE(printed.readAll().startsWith("%PDF"));
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

} // namespace
} // namespace corvanta::test
