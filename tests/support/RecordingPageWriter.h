#pragma once

#include "model/Failure.h"
#include "platform/PageWriter.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvanta::test {

/// A page writer on A4 that records what stands on which page. Every page is as long as it takes,
/// and every block is `BlockHeight` high.
class RecordingPageWriter final : public PageWriter {
  public:
    static constexpr double BlockHeight = 5;
    static constexpr double EdgeMargin = 25;

    struct Picture {
        std::vector<ChartPoint> Points;
        std::string TitleX;
        PageRectangle Place;
    };
    struct Page {
        PageOrientation Orientation = poPortrait;
        RunningHeader Header;
        double LeftMargin = 0;
        double RightMargin = 0;
        std::vector<std::string> Blocks; ///< the style in brackets, and the text or the grid's text
        std::vector<Picture> Pictures;
        std::vector<std::string> Sheets; ///< the titles of charts of the workbench
    };

    std::string Name;
    std::vector<Page> Pages; ///< of the document that was started last
    bool Writing = false;
    int Started = 0;
    std::map<std::string, ParagraphStyle> Styles;

    std::vector<std::size_t> Printed; ///< the number of pages of each document that was printed
    bool CallOff = false;             ///< the user calls printing off
    std::optional<PageOrientation> Chosen; ///< in the set-up of the printer; none cancels it

    /// The `n`th thing to write from now on, 1 the next one, does not succeed.
    void FailOnBlock(int n) { m_blocksUntilFailure = n; }

    /// The blocks of all pages.
    [[nodiscard]] std::vector<std::string> Blocks() const {
        std::vector<std::string> blocks;
        for (const Page& page : Pages) {
            blocks.insert(blocks.end(), page.Blocks.begin(), page.Blocks.end());
        }
        return blocks;
    }

    void StartDocument(const std::string& name) override {
        EXPECT_FALSE(Writing) << "a document was neither ended nor cancelled";
        Name = name;
        Pages = {Page()};
        Writing = true;
        ++Started;
        ShapeEmptyPage();
    }
    void EndDocument() override {
        EXPECT_TRUE(Writing);
        Writing = false;
    }
    void CancelDocument() noexcept override {
        Pages.clear();
        Writing = false;
    }
    void NewPage() override {
        EXPECT_TRUE(Writing);
        if (!IsEmptyPage()) {
            Pages.emplace_back();
            ShapeEmptyPage();
        }
    }

    [[nodiscard]] PageOrientation Orientation() const override { return m_shape.Orientation; }
    void SetOrientation(PageOrientation orientation) override {
        m_shape.Orientation = orientation;
        ShapeEmptyPage();
    }
    void SetSideMargins(double left, double right) override {
        m_shape.LeftMargin = left;
        m_shape.RightMargin = right;
        ShapeEmptyPage();
    }
    void SetHeader(const RunningHeader& header) override {
        m_shape.Header = header;
        ShapeEmptyPage();
    }
    [[nodiscard]] PageGeometry Geometry() const override {
        constexpr double Short = 210;
        constexpr double Long = 297;
        const Page& page = Pages.back();
        const bool wide = page.Orientation == poLandscape;
        return {wide ? Long : Short, wide ? Short : Long, page.LeftMargin,
                EdgeMargin,          page.RightMargin,    EdgeMargin};
    }
    [[nodiscard]] double CurrentY() const override {
        return EdgeMargin + BlockHeight * static_cast<double>(Pages.back().Blocks.size());
    }

    void SetStyle(const std::string& name, const ParagraphStyle& style) override {
        Styles[name] = style;
    }
    void AddParagraph(const std::string& style, const std::string& text) override {
        Add(style, text);
    }
    void AddTable(const std::string& style, const DataGrid& grid) override {
        EXPECT_GT(grid.Rows(), 0);
        Add(style, "table\r\n" + grid.Text());
    }
    void DrawPicture(const Chart2D& chart, const PageRectangle& place) override {
        CountDown();
        Pages.back().Pictures.push_back({chart.Series.Points, chart.AxisX.Title, place});
    }

    void AddSheets(std::span<const ChartSheet> sheets) override {
        CountDown();
        for (const ChartSheet& sheet : sheets) {
            Pages.back().Sheets.push_back(sheet.Title);
        }
    }
    [[nodiscard]] std::string SvgOf(const ChartSheet& sheet) const override {
        return "<svg>" + sheet.Title + "</svg>";
    }

    /// Goes on by a minute whenever it is read, from 13:05.
    [[nodiscard]] std::string ShortTime() const override {
        return "13:0" + std::to_string(m_minute++);
    }
    [[nodiscard]] std::string MediumDate() const override { return "21-Jul-24"; }

    void SetUpPrinter() override {
        EXPECT_FALSE(Writing);
        SetOrientation(Chosen.value_or(Orientation()));
    }
    bool Print() override {
        EXPECT_FALSE(Writing);
        if (!CallOff) {
            Printed.push_back(Pages.size());
        }
        return !CallOff;
    }

    void SavePdf(const std::string& path) override {
        EXPECT_FALSE(Writing);
        SavedPdf = path;
    }
    std::string SavedPdf;

  private:
    void Add(const std::string& style, const std::string& text) {
        EXPECT_TRUE(Writing);
        EXPECT_TRUE(Styles.contains(style)) << style;
        CountDown();
        Pages.back().Blocks.push_back("[" + style + "] " + text);
    }
    void CountDown() {
        if (m_blocksUntilFailure > 0 && --m_blocksUntilFailure == 0) {
            throw Failure(fnFileAccess, "Out of paper");
        }
    }
    [[nodiscard]] bool IsEmptyPage() const {
        return Pages.back().Blocks.empty() && Pages.back().Pictures.empty();
    }
    void ShapeEmptyPage() {
        if (Writing && IsEmptyPage()) {
            Pages.back() = m_shape;
        }
    }

    Page m_shape; ///< of the pages to come
    int m_blocksUntilFailure = 0;
    mutable int m_minute = 5;
};

} // namespace corvanta::test
