#include "desktop/ChartView.h"
#include "desktop/CornerView.h"
#include "desktop/GridView.h"
#include "model/Failure.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QSvgRenderer>

#include <qcustomplot.h>

namespace corvanta::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A user of the menus that the right mouse button brings up on the views.
class ContextMenuTest : public testing::Test {
  protected:
    ContextMenuTest() {
        m_user.Start();
        m_user.Open(SamplePath("formula-front-pushrod.WSP"));
    }

    static void RightClick(QWidget& view) {
        const QPoint at = view.rect().center();
        QContextMenuEvent click(QContextMenuEvent::Mouse, at, view.mapToGlobal(at));
        QApplication::sendEvent(&view, &click);
    }

    [[nodiscard]] QString PathOf(const char* name) const {
        return QString::fromStdString(m_folder / name);
    }

    [[nodiscard]] static QByteArray Contents(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }

    /// Picks "Save As..." on a view and answers the dialog.
    void Save(QWidget& view, const char* entry, const QString& path, const QString& kind) {
        m_waiting.Pick(entry);
        m_waiting.SaveAs(path, kind);
        RightClick(view);
        EXPECT_TRUE(m_waiting.Done()) << path.toStdString();
    }

    TemporaryFolder m_folder;
    DesktopUser m_user{m_folder / "settings"};
    WaitingUser m_waiting;
};

TEST_F(ContextMenuTest, ATableIsCopiedAndSaved) {
    m_user.Choose(mcView, vwAngles);
    GridView& table = *m_user.Window().Grid();
    for (const char* entry : {"Select All", "Copy with Heads"}) {
        m_waiting.Pick(entry);
        RightClick(*table.viewport());
    }
    const QString copied = QApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith("Wheel Travel\t")) << copied.toStdString();
    EXPECT_EQ(copied.count('\n'), m_user.Logic().grdDisplay.Rows());

    const char* const entry = "Save Table As CSV...";
    Save(*table.viewport(), entry, PathOf("angles"), "CSV");
    QByteArray expected = copied.toUtf8();
    EXPECT_EQ(Contents(PathOf("angles.csv")), expected.replace('\t', ',').replace("\n", "\r\n"))
        << "the name typed has got its ending";
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(ContextMenuTest, AFileOfTheCompletedNameIsReplacedOnlyWhenToldSo) {
    m_user.Choose(mcView, vwAngles);
    QFile kept(PathOf("angles.v2.csv"));
    ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
    kept.write("mine");
    kept.close();
    for (const auto& [answer, stays] :
         {std::pair{QMessageBox::No, true}, std::pair{QMessageBox::Yes, false}}) {
        m_waiting.Pick("Save Table As CSV...");
        m_waiting.SaveAs(PathOf("angles.v2"), "CSV");
        m_waiting.Press(answer);
        RightClick(*m_user.Window().Grid()->viewport());
        EXPECT_TRUE(m_waiting.Done());
        EXPECT_EQ(Contents(PathOf("angles.v2.csv")) == "mine", stays);
    }
}

TEST_F(ContextMenuTest, APlotIsCopiedSavedInEachKindAndShownWhole) {
    m_user.Choose(mcView, vwPlot);
    ChartView& chart = *m_user.Window().Chart();
    QCustomPlot& plot = chart.Plot();
    m_waiting.Pick("Copy Data");
    RightClick(plot);
    const QString data = QApplication::clipboard()->text();
    EXPECT_EQ(data.count('\n'), 1 + static_cast<int>(chart.Series.Points.size()));
    QPalette dark = chart.palette();
    dark.setColor(QPalette::Base, Qt::black);
    chart.setPalette(dark);
    m_waiting.Pick("Copy Picture");
    RightClick(plot);
    EXPECT_EQ(QApplication::clipboard()->image().pixelColor(2, 2), QColor(Qt::white));

    Save(plot, "Save As...", PathOf("plot"), "Data");
    EXPECT_EQ(Contents(PathOf("plot.txt")), data.toUtf8());
    Save(plot, "Save As...", PathOf("plot"), "PNG");
    EXPECT_FALSE(QImage(PathOf("plot.png")).isNull());
    Save(plot, "Save As...", PathOf("plot.svg"), "PNG");
    EXPECT_TRUE(QSvgRenderer(PathOf("plot.svg")).isValid()) << "a typed ending decides";

    const QCPRange whole = plot.xAxis->range();
    plot.xAxis->setRange(1, 2);
    m_waiting.Pick("Whole Plot");
    RightClick(plot);
    EXPECT_EQ(plot.xAxis->range(), whole);
    EXPECT_TRUE(m_waiting.Done());
    EXPECT_THAT(m_user.Box.Prompts(), IsEmpty());
}

TEST_F(ContextMenuTest, AFileThatCanNotBeWrittenIsToldAndLeavesTheOldOne) {
    m_user.Choose(mcPrint);
    m_user.Desk.Handle([&] { m_user.Logic().PrintDialog->cmdPreview_Click(); });
    m_user.Desk.Handle([&] { m_user.Logic().PrintDialog->Close(); });
    auto& corner = *m_user.Window().findChild<CornerView*>();
    ChartView& chart = *m_user.Window().Chart();
    struct Writer {
        std::int32_t View;
        QString Name;
        std::function<void(const QString&)> Write;
    };
    const auto plot = [&](const QString& path) { chart.SaveAs(path); };
    const auto drawing = [&](const QString& path) { corner.SaveAs(path); };
    const auto table = [&](const QString& path) { m_user.Window().Grid()->SaveCsv(path); };
    const auto report = [&](const QString& path) {
        m_user.Desk.Pages().SavePdf(path.toStdString());
    };
    for (const auto& [view, name, write] : std::vector<Writer>{{vwAngles, "table.csv", table},
                                                               {vwPlot, "plot.txt", plot},
                                                               {vwPlot, "plot.png", plot},
                                                               {vwPlot, "plot.svg", plot},
                                                               {vwPlot, "report.pdf", report},
                                                               {vw3d, "corner.png", drawing},
                                                               {vw3d, "corner.svg", drawing}}) {
        m_user.Choose(mcView, view);
        const QString path = PathOf(name.toLatin1());
        QFile old(path);
        ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
        old.close();
        bool told = false;
        {
            const FileSizeLimit full(100);
            try {
                write(path);
            } catch (const Failure&) {
                told = true;
            }
        }
        EXPECT_TRUE(told) << name.toStdString();
        EXPECT_EQ(Contents(path), "old");
        write(path);
        EXPECT_GT(Contents(path).size(), 100) << name.toStdString();
    }
    m_waiting.Pick("Copy Picture");
    RightClick(corner);
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasImage());
    Save(corner, "Save As...", "/proc/corner.png", "PNG");
    EXPECT_THAT(m_user.Box.Prompts(), ElementsAre(HasSubstr("No such file or directory: /proc/")));
}

} // namespace
} // namespace corvanta::test
