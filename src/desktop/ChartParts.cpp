#include "desktop/ChartParts.h"

#include "desktop/ContextMenu.h"
#include "desktop/QtServices.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QPalette>
#include <QPicture>

#include <qcustomplot.h>

namespace corvanta {

namespace {

constexpr QSize PictureSize(1200, 800);
constexpr int PictureDensity = 2; ///< dots of a picture in a file in one of the screen
constexpr int DotsPerMetre = PictureDensity * DotsPerInch * 10000 / 254;

} // namespace

QColor ColourOf(const Colour& colour) {
    return {colour.Red, colour.Green, colour.Blue};
}

/// A chart that was not set up yet has no fonts, and one without a family can't be recorded.
QFont FontOf(const ChartFont& font) {
    QFont shown = QApplication::font();
    if (!font.Family.empty()) {
        shown.setFamily(QString::fromStdString(font.Family));
    }
    if (font.Size > 0) {
        shown.setPointSize(font.Size);
    }
    shown.setBold(font.Bold);
    return shown;
}

ChartPaper ThemePaper(const QPalette& palette, const QColor& grid) {
    ChartPaper paper{palette.color(QPalette::Base), palette.color(QPalette::Text), grid};
    if (paper.IsDark()) {
        paper.Grid = QColor(62, 64, 70);
    }
    return paper;
}

void SetPaper(QCustomPlot& plot, const ChartPaper& paper) {
    plot.setBackground(paper.Background);
    const QColor zero = paper.IsDark() ? paper.Grid.lighter(160) : paper.Grid.darker(140);
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis, plot.xAxis2, plot.yAxis2}) {
        const QPen pen(paper.Ink);
        axis->setBasePen(pen);
        axis->setTickPen(pen);
        axis->setSubTickPen(pen);
        axis->setTickLabelColor(paper.Ink);
        axis->setLabelColor(paper.Ink);
        axis->grid()->setPen(QPen(paper.Grid, 1));
        axis->grid()->setZeroLinePen(QPen(zero, 1.6));
    }
}

void PaintPlot(QCustomPlot& plot, QPainter& painter, const QSize& size) {
    QPicture picture; // the library paints on devices of its own kind of painter
    QCPPainter paper;
    paper.begin(&picture);
    plot.toPainter(&paper, size.width(), size.height());
    paper.end();
    // The toolkit enlarges a picture by the resolutions of the device and of the picture.
    const double resolution =
        static_cast<double>(picture.logicalDpiX()) / painter.device()->logicalDpiX();
    painter.save();
    painter.scale(resolution, resolution);
    painter.drawPicture(0, 0, picture);
    painter.restore();
}

int PaintNamedLine(QPainter& painter, const QPoint& at, const QPen& pen, const QString& name) {
    const QFontMetrics metrics(painter.font());
    const QPen ink = painter.pen();
    const int middle = at.y() + metrics.height() / 2;
    painter.setPen(pen);
    painter.drawLine(QPointF(at.x(), middle), QPointF(at.x() + SwatchWidth, middle));
    painter.setPen(ink);
    painter.drawText(at.x() + SwatchWidth + SwatchDistance, at.y() + metrics.ascent(), name);
    return SwatchWidth + SwatchDistance + metrics.horizontalAdvance(name);
}

QImage PictureOf(const QSize& size, double density, const PaintOnArea& paint) {
    QImage picture(size * density, QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.scale(density, density);
    paint(painter, size);
    return picture;
}

QByteArray PictureFileOf(const QString& path, const PaintOnArea& paint) {
    if (path.endsWith(".svg", Qt::CaseInsensitive)) {
        return SvgOf(PictureSize, [&](QPainter& painter) { paint(painter, PictureSize); });
    }
    if (path.endsWith(".png", Qt::CaseInsensitive)) {
        QImage picture = PictureOf(PictureSize, PictureDensity, paint);
        picture.setDotsPerMeterX(DotsPerMetre);
        picture.setDotsPerMeterY(DotsPerMetre);
        return PngOf(picture);
    }
    return {};
}

void AddChartCommands(ContextMenu& menu, QWidget* chart, const ChartCommands& commands) {
    menu.Add(QObject::tr("Copy Picture"), [chart, picture = commands.Picture] {
        QApplication::clipboard()->setImage(picture(chart->size(), chart->devicePixelRatioF()));
    });
    menu.Add(QObject::tr("Copy Data"),
             [data = commands.Data] { QApplication::clipboard()->setText(data()); });
    menu.Add(QObject::tr("Save As..."), [chart, save = commands.SaveAs] {
        AskAndSave(chart, QObject::tr("Save Plot"),
                   QObject::tr("PNG picture (*.png);;SVG drawing (*.svg);;Data (*.txt)"), save);
    });
}

} // namespace corvanta
