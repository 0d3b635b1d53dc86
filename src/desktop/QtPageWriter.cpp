#include "desktop/QtPageWriter.h"

#include "desktop/ChartSheetView.h"
#include "desktop/ChartView.h"
#include "desktop/QtServices.h"
#include "model/Failure.h"

#include <QApplication>
#include <QBuffer>
#include <QDateTime>
#include <QFont>
#include <QFontMetricsF>
#include <QLocale>
#include <QPageSetupDialog>
#include <QPdfWriter>
#include <QPrintDialog>

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

constexpr double UnitsPerMillimetre = QtPageWriter::UnitsPerInch / 25.4;
constexpr double UnitsPerPoint = 10;
constexpr double TopMargin = 22 * UnitsPerMillimetre; ///< with the header in it
constexpr double BottomMargin = 15 * UnitsPerMillimetre;
constexpr double HeaderTop = 10 * UnitsPerMillimetre;
constexpr double PixelsPerInch = 96;
constexpr int RowsBelowHeads = 3;  ///< at least, at the foot of a page
constexpr double SheetHeight = 58; ///< of a chart of the workbench, mm
constexpr double SheetGap = 4;     ///< between two of them, mm
constexpr QSize SheetSize{480, 300};

QFont PageFontOf(const PageFont& font) {
    QFont shown(QString::fromStdString(font.Family));
    shown.setStyleHint(QFont::SansSerif);
    shown.setPixelSize(static_cast<int>(font.Size * UnitsPerPoint));
    shown.setBold(font.Bold);
    return shown;
}

} // namespace

QtPageWriter::~QtPageWriter() {
    CancelDocument();
}

QPrinter& QtPageWriter::Printer() {
    if (!m_printer) {
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        m_printer->setFullPage(true); // the margins are those of the report
        m_printer->setCreator("Corvanta");
    }
    return *m_printer;
}

void QtPageWriter::TakePaper() {
    m_paper = Printer().pageLayout().pageSize();
}

void QtPageWriter::StartDocument(const std::string& name) {
    CancelDocument();
    TakePaper();
    m_name = QString::fromStdString(name);
    BeginPage();
}

void QtPageWriter::BeginPage() {
    FinishPage();
    m_pages.push_back(std::make_unique<Page>());
    ApplySetting();
}

void QtPageWriter::ApplySetting() {
    if (!m_pages.empty() && !Current().Written) {
        Current().Orientation = m_orientation;
        Current().Left = m_left;
        Current().Right = m_right;
        Current().Header = m_header;
        m_y = TopMargin;
    }
}

void QtPageWriter::FinishPage() {
    m_brush.reset(); // ends the record of the page
}

void QtPageWriter::EndDocument() {
    WriteWaiting();
    FinishPage();
}

void QtPageWriter::CancelDocument() noexcept {
    m_waiting.clear();
    m_brush.reset();
    m_pages.clear();
}

void QtPageWriter::NewPage() {
    WriteWaiting();
    if (Current().Written) {
        BeginPage();
    }
}

void QtPageWriter::SetOrientation(PageOrientation orientation) {
    m_orientation = orientation;
    ApplySetting();
}

void QtPageWriter::SetSideMargins(double left, double right) {
    m_left = left * UnitsPerMillimetre;
    m_right = right * UnitsPerMillimetre;
    ApplySetting();
}

void QtPageWriter::SetHeader(const RunningHeader& header) {
    m_header = header;
    ApplySetting();
}

QSizeF QtPageWriter::SizeOf(const Page& page) const {
    QSizeF size = m_paper.size(QPageSize::Point) * UnitsPerPoint;
    const bool landscape = page.Orientation == poLandscape;
    return landscape == (size.width() > size.height()) ? size : size.transposed();
}

QSizeF QtPageWriter::PageSize(int page) const {
    return SizeOf(*m_pages.at(static_cast<std::size_t>(page)));
}

double QtPageWriter::LineEnd() const {
    return SizeOf(Current()).width() - Current().Right;
}

double QtPageWriter::PageEnd() const {
    return SizeOf(Current()).height() - BottomMargin;
}

PageGeometry QtPageWriter::Geometry() const {
    Page page;
    page.Orientation = m_orientation;
    page.Left = m_left;
    page.Right = m_right;
    const Page& shown = m_pages.empty() ? page : Current();
    const QSizeF size = SizeOf(shown);
    return {size.width() / UnitsPerMillimetre, size.height() / UnitsPerMillimetre,
            shown.Left / UnitsPerMillimetre,   TopMargin / UnitsPerMillimetre,
            shown.Right / UnitsPerMillimetre,  BottomMargin / UnitsPerMillimetre};
}

double QtPageWriter::CurrentY() const {
    return (m_y + WaitingHeight()) / UnitsPerMillimetre;
}

void QtPageWriter::SetStyle(const std::string& name, const ParagraphStyle& style) {
    m_styles[name] = style;
}

QPainter& QtPageWriter::Brush() {
    if (!m_brush) {
        m_brush = std::make_unique<QPainter>(&Current().Content);
        m_brush->setPen(Qt::black);
    }
    Current().Written = true;
    return *m_brush;
}

double QtPageWriter::LineHeight(const ParagraphStyle& look, const QString& line) const {
    const QFontMetricsF metrics(PageFontOf(look.Font));
    const QRectF room(0, 0, LineEnd() - Current().Left, 1e6);
    const double height = metrics.height() + metrics.leading() * look.LineSpacing / 100;
    return std::max(
        height, metrics.boundingRect(room, Qt::TextWordWrap | Qt::TextExpandTabs, line).height());
}

double QtPageWriter::HeightOf(const Paragraph& paragraph) const {
    const ParagraphStyle& look = m_styles.at(paragraph.Style);
    double height = (look.SpaceBefore + look.SpaceAfter) * UnitsPerPoint;
    for (const QString& line : MessageText(paragraph.Text).split('\n')) {
        height += LineHeight(look, line);
    }
    return height;
}

double QtPageWriter::WaitingHeight() const {
    double height = 0;
    for (const Paragraph& paragraph : m_waiting) {
        height += HeightOf(paragraph);
    }
    return height;
}

void QtPageWriter::AddParagraph(const std::string& style, const std::string& text) {
    const bool title = m_styles.at(style).Font.Bold;
    if (title) {
        WriteWaiting();
    }
    if (title || !m_waiting.empty()) {
        m_waiting.push_back({style, text});
    } else {
        WriteParagraph({style, text});
    }
}

/// Writes what waits, on a new page where it fits there together with all of what comes below, and
/// does not here; what no page holds needs room for its beginning.
void QtPageWriter::WriteWaiting(double wholeBelow, double leastBelow) {
    const double waits = WaitingHeight();
    const bool holdsWhole = TopMargin + waits + wholeBelow <= PageEnd();
    if (m_y + waits + (holdsWhole ? wholeBelow : leastBelow) > PageEnd() && Current().Written) {
        BeginPage();
    }
    const std::vector<Paragraph> waiting = std::exchange(m_waiting, {});
    for (const Paragraph& paragraph : waiting) {
        WriteParagraph(paragraph);
    }
}

void QtPageWriter::WriteParagraph(const Paragraph& paragraph) {
    const ParagraphStyle& look = m_styles.at(paragraph.Style);
    m_y += look.SpaceBefore * UnitsPerPoint;
    for (const QString& line : MessageText(paragraph.Text).split('\n')) {
        const double height = LineHeight(look, line);
        const bool full = m_y + height > PageEnd() && Current().Written;
        if (full && line.trimmed().isEmpty()) {
            continue; // an empty line begins no page
        }
        if (full) {
            BeginPage();
        }
        Brush().setFont(PageFontOf(look.Font));
        Brush().drawText(QRectF(Current().Left, m_y, LineEnd() - Current().Left, height),
                         Qt::TextWordWrap | Qt::TextExpandTabs, line);
        m_y += height;
    }
    m_y += look.SpaceAfter * UnitsPerPoint;
}

void QtPageWriter::WriteBlock(const PageTable& table, const PageTable::Block& block) {
    const auto writeRow = [&](int row) {
        m_y += table.PaintRow(Brush(), {Current().Left, m_y}, row, block);
    };
    const auto writeHeads = [&] {
        for (int row = 0; row < table.Heads(); ++row) {
            writeRow(row);
        }
    };
    writeHeads();
    for (int row = table.Heads(); row < table.Heads() + table.Rows(); ++row) {
        if (m_y + table.RowHeight() > PageEnd()) {
            BeginPage();
            writeHeads();
        }
        writeRow(row);
    }
}

void QtPageWriter::AddTable(const std::string& style, const DataGrid& grid) {
    if (grid.Rows() == 0 || grid.Columns() == 0) {
        return;
    }
    const ParagraphStyle& look = m_styles.at(style);
    const PageTable table(grid, PageFontOf(look.Font));
    for (const PageTable::Block& block : table.Blocks(LineEnd() - Current().Left)) {
        const double before = look.SpaceBefore * UnitsPerPoint;
        // A table that fits on a page is not cut, and its title goes with it.
        WriteWaiting(before + table.Height(table.Rows(), block),
                     before + table.Height(std::min(table.Rows(), RowsBelowHeads), block));
        m_y += before;
        WriteBlock(table, block);
        m_y += look.SpaceAfter * UnitsPerPoint;
    }
}

void QtPageWriter::DrawPicture(const Chart2D& chart, const PageRectangle& place) {
    const auto* view = dynamic_cast<const ChartView*>(&chart);
    if (view == nullptr) {
        return; // a chart that no window shows has no picture
    }
    WriteWaiting();
    constexpr double Scale = UnitsPerInch / PixelsPerInch;
    // The report asks for the height of an empty page; below titles the picture is lower, or its
    // axis would run off the paper.
    const double top = place.Top * UnitsPerMillimetre;
    const double height = std::min(place.Height * UnitsPerMillimetre, PageEnd() - top);
    const QSize size(static_cast<int>(place.Width * UnitsPerMillimetre / Scale),
                     static_cast<int>(height / Scale));
    QPainter& brush = Brush();
    brush.save();
    brush.translate(place.Left * UnitsPerMillimetre, top);
    brush.scale(Scale, Scale);
    view->PaintOnPaper(brush, size);
    brush.restore();
}

void QtPageWriter::AddSheets(std::span<const ChartSheet> sheets) {
    constexpr double Scale = UnitsPerInch / PixelsPerInch;
    const double gap = SheetGap * UnitsPerMillimetre;
    const double height = SheetHeight * UnitsPerMillimetre;
    for (std::size_t n = 0; n < sheets.size(); ++n) {
        if (n % 2 == 0) {
            WriteWaiting(height);
            if (m_y + height > PageEnd()) {
                BeginPage();
            }
        }
        const double width = (LineEnd() - Current().Left - gap) / 2;
        QPainter& brush = Brush();
        brush.save();
        brush.translate(Current().Left + static_cast<double>(n % 2) * (width + gap), m_y);
        brush.scale(Scale, Scale);
        PaintSheet(sheets[n], brush, QSizeF(width / Scale, height / Scale).toSize());
        brush.restore();
        if (n % 2 == 1 || n + 1 == sheets.size()) {
            m_y += height + gap;
        }
    }
}

std::string QtPageWriter::SvgOf(const ChartSheet& sheet) const {
    return corvanta::SvgOf(SheetSize,
                           [&](QPainter& painter) { PaintSheet(sheet, painter, SheetSize); })
        .toStdString();
}

std::string QtPageWriter::ShortTime() const {
    QString format = QLocale().timeFormat(QLocale::ShortFormat);
    format.remove(":ss"); // some locales have no format without seconds
    return QLocale().toString(QTime::currentTime(), format).toStdString();
}

std::string QtPageWriter::MediumDate() const {
    return QLocale().toString(QDate::currentDate(), "dd-MMM-yy").toStdString();
}

void QtPageWriter::SetUpPrinter() {
    QPrinter& printer = Printer();
    printer.setPageOrientation(m_orientation == poLandscape ? QPageLayout::Landscape
                                                            : QPageLayout::Portrait);
    QPageSetupDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() == QDialog::Accepted) {
        m_orientation =
            printer.pageLayout().orientation() == QPageLayout::Landscape ? poLandscape : poPortrait;
    }
}

bool QtPageWriter::Print() {
    QPrintDialog dialog(&Printer(), QApplication::activeWindow());
    dialog.setOptions(QAbstractPrintDialog::PrintToFile);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    if (!Printer().pageLayout().pageSize().isEquivalentTo(m_paper)) {
        throw Failure(fnFileAccess,
                      "The pages were laid out for " + m_paper.name().toStdString() +
                          ". Print once more to have them laid out for the paper just chosen.");
    }
    const QString file = Printer().outputFileName();
    if (Printer().outputFormat() == QPrinter::PdfFormat && !file.isEmpty()) {
        SavePdf(file.toStdString());
    } else {
        Printer().setDocName(m_name);
        PaintAll(Printer());
    }
    return true;
}

void QtPageWriter::SavePdf(const std::string& path) {
    QBuffer file;
    if (!file.open(QIODevice::WriteOnly)) {
        throw Failure(fnInternal, "The report could not be made");
    }
    QPdfWriter pdf(&file);
    pdf.setTitle(m_name);
    pdf.setCreator("Corvanta");
    pdf.setPageSize(m_paper);
    pdf.setPageMargins({});
    PaintAll(pdf);
    WriteFile(QString::fromStdString(path), file.data());
}

void QtPageWriter::PaintAll(QPagedPaintDevice& paper) const {
    QPainter painter;
    for (int page = 0; page < PageCount(); ++page) {
        const bool landscape = PageSize(page).width() > PageSize(page).height();
        paper.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
        if (page == 0 ? !painter.begin(&paper) : !paper.newPage()) {
            throw Failure(fnFileAccess, "The report could not be printed");
        }
        painter.resetTransform();
        const double scale = paper.logicalDpiX() / UnitsPerInch;
        painter.scale(scale, scale);
        PaintPage(painter, page);
    }
    if (!painter.end()) {
        throw Failure(fnFileAccess, "The report could not be printed");
    }
}

void QtPageWriter::PaintPage(QPainter& painter, int page) const {
    // The toolkit enlarges a picture by the resolutions of the device and of the picture, which
    // the scale of the painter has in it already.
    const QPicture& content = m_pages.at(static_cast<std::size_t>(page))->Content;
    const double resolution =
        static_cast<double>(content.logicalDpiX()) / painter.device()->logicalDpiX();
    painter.save();
    painter.setPen(Qt::black); // a picture does not record what a new painter has
    painter.scale(resolution, resolution);
    painter.drawPicture(0, 0, content);
    painter.restore();
    PaintHeader(painter, page);
}

void QtPageWriter::PaintHeader(QPainter& painter, int page) const {
    const Page& shown = *m_pages.at(static_cast<std::size_t>(page));
    const QSizeF size = SizeOf(shown);
    const QFont font = PageFontOf(shown.Header.Font);
    const QRectF line(shown.Left, HeaderTop, size.width() - shown.Left - shown.Right,
                      QFontMetricsF(font).height());
    const QString right =
        QString::fromStdString(shown.Header.Right).replace("%d", QString::number(page + 1));
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(line, Qt::AlignLeft, QString::fromStdString(shown.Header.Left));
    const QString centre = QFontMetricsF(font).elidedText(
        QString::fromStdString(shown.Header.Centre), Qt::ElideMiddle, line.width() / 3);
    painter.drawText(line, Qt::AlignHCenter, centre);
    painter.drawText(line, Qt::AlignRight, right);
    painter.setPen(QPen(Qt::gray, 4));
    painter.drawLine(line.bottomLeft() + QPointF(0, 20), line.bottomRight() + QPointF(0, 20));
}

} // namespace corvanta
