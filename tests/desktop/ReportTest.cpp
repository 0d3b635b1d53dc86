#include "desktop/ChartView.h"
#include "desktop/PrintWindow.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>

#include <filesystem>

namespace corvanta::test {
namespace {

using testing::HasSubstr;

/// The words of a text, in their order.
QStringList Words(const std::string& text) {
    return QString::fromStdString(text).split(QRegularExpression("\\s+"), Qt::SkipEmptyParts);
}

/// A user who prints reports into files, which a reader of PDF looks at.
class ReportTest : public testing::TestWithParam<std::string> {
  protected:
    ReportTest() { m_user.Start(); }

    /// Builds the report as the preview does; `change` sets the dialog.
    template <typename Change>
    QString Report(const Change& change) {
        m_user.Choose(mcPrint);
        m_user.Desk.Handle([&] {
            change(*m_user.Logic().PrintDialog);
            m_user.Logic().PrintDialog->cmdPreview_Click();
        });
        QString path = QString::fromStdString(m_folder / "report.pdf");
        m_user.Desk.Pages().SavePdf(path.toStdString());
        m_user.Desk.Handle([&] { m_user.Logic().PrintDialog->Close(); });
        return path;
    }

    static std::string TextOf(const QString& pdf) {
        // Letters that are printed joined count as the letters that they are.
        return QString::fromStdString(Output("pdftotext", {"-layout", pdf, "-"}))
            .normalized(QString::NormalizationForm_KC)
            .toStdString();
    }

    TemporaryFolder m_folder;
    DesktopUser m_user{m_folder / "settings"};
};

TEST_P(ReportTest, HoldsTheTitlesAndEveryNumberOfTheViews) {
    m_user.Open(GetParam());
    const QString pdf = Report([](frmPrint& dialog) {
        dialog.optSelectedTables.Selected = true;
        dialog.optPrintCurrent.Selected = false;
        for (CheckListRow& row : dialog.tvwTables.Rows) {
            row.Checked = row.Tag != vwCustomTable && row.Tag != vwDynamicsReport;
        }
        dialog.chkPrintCoordinates.Checked = true;
        dialog.chkChassisDetails.Checked = true;
    });
    const std::string text = TextOf(pdf);
    EXPECT_THAT(text, HasSubstr("Static coordinates"));
    EXPECT_THAT(text, HasSubstr("Chassis details"));
    const int pages = m_user.Desk.Pages().PageCount();
    EXPECT_THAT(text, HasSubstr("Page " + std::to_string(pages)));
    EXPECT_THAT(Output("pdfinfo", {pdf}),
                testing::ContainsRegex("Pages: +" + std::to_string(pages) + "\n"));
    const QStringList words = Words(text);
    for (const std::int32_t view : {vwAntis, vwLateralGeometry, vwAngles, vwCoordinates,
                                    vwLinkLengths, vwQuadraticCoefficients}) {
        m_user.Choose(mcView, view);
        if (m_user.Desk.Program().Data().Settings.View != view) {
            continue; // this mechanism does not have it
        }
        const DataGrid& grid = m_user.Logic().grdDisplay;
        EXPECT_TRUE(QString::fromStdString(text).contains(
            QString::fromUtf8(ViewName(view).data(), static_cast<int>(ViewName(view).size()))))
            << view;
        for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
            for (int column = grid.FixedColumns(); column < grid.Columns(); ++column) {
                ASSERT_TRUE(words.contains(QString::fromStdString(grid.Cell(row, column))))
                    << ViewName(view) << " " << row << " " << column << " "
                    << grid.Cell(row, column);
            }
        }
    }
}

TEST_F(ReportTest, APlotFillsALandscapePage) {
    m_user.Open(SamplePath("formula-front-pushrod.WSP"));
    m_user.Choose(mcView, vwPlot);
    ASSERT_EQ(m_user.Window().Chart()->Series.Points.size(), 21U);
    const QString pdf = Report([](frmPrint&) {});
    const QSizeF page = m_user.Desk.Pages().PageSize(0);
    EXPECT_GT(page.width(), page.height());
    const std::string text = TextOf(pdf);
    EXPECT_THAT(text, HasSubstr("Wheel Travel [mm]"));
    EXPECT_THAT(text, HasSubstr("Page 1"));
    EXPECT_EQ(m_user.Desk.Program().Data().Settings.View, vwPlot);
}

TEST_F(ReportTest, AnEmptySelectionStillMakesAPage) {
    m_user.Open(SamplePath("roadster-front-links.WSP"));
    Report([](frmPrint& dialog) {
        dialog.optSelectedTables.Selected = true;
        dialog.optPrintCurrent.Selected = false;
        dialog.chkChassisDetails.Checked = false;
    });
    EXPECT_EQ(m_user.Desk.Pages().PageCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(Samples, ReportTest, testing::ValuesIn(AllSamplePaths()),
                         [](const auto& sample) {
                             std::string name = std::filesystem::path(sample.param).stem();
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace
} // namespace corvanta::test
