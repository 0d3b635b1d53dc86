#pragma once

#include "platform/Chart2D.h"
#include "platform/ChartSheet.h"
#include "platform/DataGrid.h"
#include "platform/WindowServices.h"

#include <cstdint>
#include <span>
#include <string>

namespace corvanta {

enum PageOrientation : std::int32_t {
    poPortrait = 0,
    poLandscape = 1,
};

using PageFont = ChartFont;

/// How a paragraph looks. Spaces are in points.
struct ParagraphStyle {
    PageFont Font;
    double SpaceBefore = 0;
    double SpaceAfter = 0;

    /// What of the font's leading parts the lines of a paragraph, per cent: 100 sets them as the
    /// font asks, 0 as close as they go without touching.
    double LineSpacing = 100;

    friend bool operator==(const ParagraphStyle&, const ParagraphStyle&) = default;
};

/// Size and margins of a page as it is held: a landscape page is wider than it is high. mm
struct PageGeometry {
    double Width = 0;
    double Height = 0;
    double LeftMargin = 0;
    double TopMargin = 0;
    double RightMargin = 0;
    double BottomMargin = 0;
};

/// A part of a page, mm right and down from its top left corner.
struct PageRectangle {
    double Left = 0;
    double Top = 0;
    double Width = 0;
    double Height = 0;

    friend bool operator==(const PageRectangle&, const PageRectangle&) = default;
};

/// What heads every page: three texts on one line, at the left margin, in the middle between the
/// margins, and ending at the right margin.
struct RunningHeader {
    std::string Left;
    std::string Centre;
    std::string Right; ///< "%d" in it stands for the number of the page, from 1
    PageFont Font;
};

/// Writes a document page by page and prints it. What is written stands below what was written
/// before; what does not fit goes on at the next page.
///
/// Orientation, margins and header hold for the current page while nothing stands on it, and for
/// every page after it; a page with something on it keeps its own. They stay from one document to
/// the next. A document that ended has at least one page and changes no more; its pages are what a
/// preview shows until the next one is started.
class PageWriter : public virtual WindowService {
  public:
    /// Begins a document with an empty page. The document before it is gone.
    virtual void StartDocument(const std::string& name) = 0;

    /// The document is complete, and may be looked at and printed.
    virtual void EndDocument() = 0;

    /// Throws away the document that was started, if there is one.
    virtual void CancelDocument() noexcept = 0;

    /// Goes to a new page; a page that nothing stands on counts as new.
    virtual void NewPage() = 0;

    [[nodiscard]] virtual PageOrientation Orientation() const = 0;
    virtual void SetOrientation(PageOrientation orientation) = 0;

    /// Margins in mm. The margins above and below are the writer's own, with room for the header.
    virtual void SetSideMargins(double left, double right) = 0;
    virtual void SetHeader(const RunningHeader& header) = 0;

    /// The current page.
    [[nodiscard]] virtual PageGeometry Geometry() const = 0;

    /// Where what comes next begins, mm down from the upper edge of the page.
    [[nodiscard]] virtual double CurrentY() const = 0;

    /// Keeps a style under a name, in the place of the one that had the name.
    virtual void SetStyle(const std::string& name, const ParagraphStyle& style) = 0;

    /// Writes a text in a style that was set. CR, LF or CR LF part its lines, lines wider than the
    /// page are wrapped. An empty text makes an empty line.
    virtual void AddParagraph(const std::string& style, const std::string& text) = 0;

    /// Writes the cells of a grid, its fixed rows again at the top of every page that it reaches.
    /// Columns that the page has no room for follow below as another table with the same fixed
    /// columns.
    virtual void AddTable(const std::string& style, const DataGrid& grid) = 0;

    /// Draws a chart as it is now, dark on white, in the given part of the page. What is written
    /// next does not move.
    virtual void DrawPicture(const Chart2D& chart, const PageRectangle& place) = 0;

    /// Draws charts of the workbench, dark on white, two in a row, as what is written next.
    virtual void AddSheets(std::span<const ChartSheet> sheets) = 0;

    /// A chart of the workbench as an SVG drawing, dark on white.
    [[nodiscard]] virtual std::string SvgOf(const ChartSheet& sheet) const = 0;

    /// The time of the day in the short form, hours and minutes, and the date in the medium form,
    /// day, short name of the month and year.
    [[nodiscard]] virtual std::string ShortTime() const = 0;
    [[nodiscard]] virtual std::string MediumDate() const = 0;

    /// Lets the user set the printer up, the orientation included; it stays when the user cancels.
    /// Not while a document is being written.
    virtual void SetUpPrinter() = 0;

    /// Prints the document that ended, on the printer or into the file that was set up. False when
    /// the user calls it off. Throws Failure when it can't be printed.
    virtual bool Print() = 0;

    /// Writes the document that ended as a PDF file. Throws Failure when it can't be written.
    virtual void SavePdf(const std::string& path) = 0;
};

} // namespace corvanta
