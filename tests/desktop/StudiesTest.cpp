#include "desktop/GridView.h"
#include "desktop/PointsPanel.h"
#include "desktop/WorkbenchWindow.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include <gtest/gtest.h>

namespace corvanta::test {
namespace {

/// The studies in the real workbench, worked by mouse and keyboard alone.
class StudiesTest : public testing::Test {
  protected:
    StudiesTest() {
        m_user.Start();
        m_user.Open(SamplePath("formula-front-pushrod.WSP"));
        QTest::keyClick(&m_user.Window(), Qt::Key_F6);
        View().resize(1280, 800);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&View()));
        View().activateWindow();
        QTest::keyClick(&View(), Qt::Key_F7);
    }

    [[nodiscard]] WorkbenchWindow& View() { return *m_user.Desk.WorkbenchView(); }
    [[nodiscard]] frmWorkbench& Logic() { return *m_user.Logic().Workbench; }
    [[nodiscard]] CStudyPanel& Panel() {
        return *Logic().Studies.All()[Logic().Studies.Shown().value()];
    }

    void ClickTab(int n) {
        auto& names = DesktopUser::Child<QTabBar>(View(), "tabStudies");
        QTest::mouseClick(&names, Qt::LeftButton, {}, names.tabRect(n).center());
    }

    /// The widget of that name in the study in sight.
    template <typename Widget>
    [[nodiscard]] Widget& InSight(const char* name) {
        for (Widget* const widget : View().findChildren<Widget*>(name)) {
            if (widget->isVisible()) {
                return *widget;
            }
        }
        throw std::runtime_error(std::string("There is no ") + name + " in sight");
    }
    void Click(const char* name) { QTest::mouseClick(&InSight<QPushButton>(name), Qt::LeftButton); }
    void Wait() {
        constexpr int Longest = 60'000;
        EXPECT_TRUE(QTest::qWaitFor([this] { return !Panel().IsRunning(); }, Longest));
        QTest::qWait(20);
    }

    TemporaryFolder m_folder;
    DesktopUser m_user{m_folder / "settings"};
};

TEST_F(StudiesTest, AStudyIsAskedRunAndReportedByHand) {
    enum Tab { Tolerances = 2, Setup = 6 };
    ClickTab(Tolerances);
    Click("cmdFill");
    auto& asked = InSight<GridView>("grdTolerances");
    ASSERT_GT(asked.model()->rowCount(), 20);
    asked.setCurrentIndex(asked.model()->index(0, 0));
    asked.edit(asked.currentIndex());
    auto* const cell = asked.findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    cell->selectAll();
    QTest::keyClicks(cell, "0.35");
    QTest::keyClick(cell, Qt::Key_Return);
    QTest::qWait(20);
    EXPECT_EQ(asked.Model().Text(2, 1), "0.35");
    asked.edit(asked.model()->index(0, 1));
    auto* const list = asked.findChild<QComboBox*>();
    ASSERT_NE(list, nullptr);
    QTest::qWait(20); // it opens by itself
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(asked.Model().Text(2, 2), "uniform");
    Click("cmdRemove");
    QTest::keyClick(&View(), Qt::Key_F5);
    EXPECT_TRUE(InSight<QPushButton>("cmdStop").isEnabled());
    Wait();
    EXPECT_GT(InSight<GridView>("grdShares").model()->rowCount(), 20);
    EXPECT_EQ(Logic().Sheets()[1].Bands.size(), 2U);

    m_user.Dialog.Paths = {m_folder / "spread.pdf", m_folder / "spread.html"};
    Click("cmdReport");
    Click("cmdReport");
    const std::string pdf =
        Output("pdftotext", {"-layout", QString::fromStdString(m_folder / "spread.pdf"), "-"});
    EXPECT_THAT(pdf, AllOf(HasSubstr("500 samples, seed 1"), HasSubstr("What spreads it"),
                           HasSubstr("Static coordinates")));
    const std::string html = m_user.Files.ReadBytes(m_folder / "spread.html");
    EXPECT_THAT(html, AllOf(HasSubstr("<svg"), HasSubstr("Static coordinates")));

    ClickTab(Setup);
    Click("cmdFill");
    Click("cmdRun");
    Wait();
    EXPECT_GT(InSight<GridView>("grdSheet").model()->rowCount(), 10);
    EXPECT_TRUE(Logic().Sheets()[1].Bands.empty()) << "the bands are those of another study";
}

TEST_F(StudiesTest, AClickOnABarSelectsTheCoordinateAndStudiesCloseWhileTheyRun) {
    ClickTab(0);
    Wait();
    auto& slopes = InSight<GridView>("grdSlopes");
    QTest::mouseClick(slopes.viewport(), Qt::LeftButton, {},
                      slopes.visualRect(slopes.model()->index(1, 0)).center());
    QTest::qWait(20);
    const std::string chosen = slopes.Model().Text(3, 0).toStdString();
    const auto selected = Logic().Points.SelectedCoordinates();
    ASSERT_EQ(selected.size(), 1U);
    const Suspension& document = m_user.Desk.Program().Data().Document;
    EXPECT_EQ(ShortenedName(NameOf(document.Data, selected.front())), chosen);
    ClickTab(2);
    Click("cmdFill");
    Click("cmdRun");
    QTest::keyClick(&View(), Qt::Key_F7);
    EXPECT_FALSE(Logic().Studies.Shown());
    View().close();
    EXPECT_TRUE(m_user.Box.Shown.empty());
}

} // namespace
} // namespace corvanta::test
