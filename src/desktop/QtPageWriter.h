#pragma once

#include "desktop/PageTable.h"
#include "platform/PageWriter.h"

#include <QPageSize>
#include <QPainter>
#include <QPicture>
#include <QPrinter>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace corvanta {

/// Pages kept as drawings, to be looked at, printed or written as PDF. Inside, a page is measured
/// in tenths of a point, right and down from its top left corner.
class QtPageWriter : public PageWriter {
  public:
    static constexpr double UnitsPerInch = 720;

    QtPageWriter() = default;
    QtPageWriter(const QtPageWriter&) = delete;
    QtPageWriter& operator=(const QtPageWriter&) = delete;
    QtPageWriter(QtPageWriter&&) = delete;
    QtPageWriter& operator=(QtPageWriter&&) = delete;
    ~QtPageWriter() override;

    void StartDocument(const std::string& name) override;
    void EndDocument() override;
    void CancelDocument() noexcept override;
    void NewPage() override;
    [[nodiscard]] PageOrientation Orientation() const override { return m_orientation; }
    void SetOrientation(PageOrientation orientation) override;
    void SetSideMargins(double left, double right) override;
    void SetHeader(const RunningHeader& header) override;
    [[nodiscard]] PageGeometry Geometry() const override;
    [[nodiscard]] double CurrentY() const override;
    void SetStyle(const std::string& name, const ParagraphStyle& style) override;
    void AddParagraph(const std::string& style, const std::string& text) override;
    void AddTable(const std::string& style, const DataGrid& grid) override;
    void DrawPicture(const Chart2D& chart, const PageRectangle& place) override;
    void AddSheets(std::span<const ChartSheet> sheets) override;
    [[nodiscard]] std::string SvgOf(const ChartSheet& sheet) const override;
    [[nodiscard]] std::string ShortTime() const override;
    [[nodiscard]] std::string MediumDate() const override;
    void SetUpPrinter() override;
    bool Print() override;
    void SavePdf(const std::string& path) override;

    [[nodiscard]] int PageCount() const { return static_cast<int>(m_pages.size()); }

    /// Size of a page, tenths of a point; pages count from 0.
    [[nodiscard]] QSizeF PageSize(int page) const;

    /// Paints a page; the painter is scaled to tenths of a point.
    void PaintPage(QPainter& painter, int page) const;

  private:
    /// Where and how a page is written. The header is drawn when the page is done.
    struct Page {
        PageOrientation Orientation = poPortrait;
        double Left = 0;
        double Right = 0;
        RunningHeader Header;
        bool Written = false;
        QPicture Content;
    };

    struct Paragraph {
        std::string Style;
        std::string Text;
    };

    /// Made at its first use: asking the system for its printers takes time that a start has not.
    [[nodiscard]] QPrinter& Printer();
    void TakePaper();

    [[nodiscard]] Page& Current() { return *m_pages.back(); }
    [[nodiscard]] const Page& Current() const { return *m_pages.back(); }
    void BeginPage();
    void ApplySetting();
    [[nodiscard]] QSizeF SizeOf(const Page& page) const;
    [[nodiscard]] double LineEnd() const;
    [[nodiscard]] double PageEnd() const;
    [[nodiscard]] QPainter& Brush();
    [[nodiscard]] double LineHeight(const ParagraphStyle& look, const QString& line) const;
    [[nodiscard]] double HeightOf(const Paragraph& paragraph) const;
    [[nodiscard]] double WaitingHeight() const;
    void WriteWaiting(double wholeBelow = 0, double leastBelow = 0);
    void WriteParagraph(const Paragraph& paragraph);
    void FinishPage();
    void WriteBlock(const PageTable& table, const PageTable::Block& block);
    void PaintAll(QPagedPaintDevice& paper) const;
    void PaintHeader(QPainter& painter, int page) const;

    std::unique_ptr<QPrinter> m_printer; ///< see `Printer`
    QString m_name;
    std::map<std::string, ParagraphStyle> m_styles;
    std::vector<std::unique_ptr<Page>> m_pages;
    std::unique_ptr<QPainter> m_brush; ///< on the current page
    QPageSize m_paper{QPageSize::A4};  ///< of the printer, once there is one
    PageOrientation m_orientation = poPortrait;
    double m_left = 0;
    double m_right = 0;
    RunningHeader m_header;
    double m_y = 0;

    /// A title and what follows it, which wait for the table below them: they never stand alone at
    /// the foot of a page.
    std::vector<Paragraph> m_waiting;
};

} // namespace corvanta
