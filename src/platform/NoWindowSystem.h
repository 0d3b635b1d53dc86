#pragma once

#include "platform/Messages.h"
#include "platform/PageWriter.h"
#include "platform/WindowServices.h"

namespace corvanta {

/// A message box that nobody sees: a question reads as not answered.
class NoMessageBox final : public MessageBox {
  public:
    int Show(const std::string& /*prompt*/, int /*style*/, const std::string& /*title*/) override {
        return maNone;
    }
};

/// A page writer without paper: what is written is gone, and nothing is ever printed.
class NoPageWriter final : public PageWriter {
  public:
    void StartDocument(const std::string& /*name*/) override {}
    void EndDocument() override {}
    void CancelDocument() noexcept override {}
    void NewPage() override {}
    [[nodiscard]] PageOrientation Orientation() const override { return m_orientation; }
    void SetOrientation(PageOrientation orientation) override { m_orientation = orientation; }
    void SetSideMargins(double /*left*/, double /*right*/) override {}
    void SetHeader(const RunningHeader& /*header*/) override {}
    [[nodiscard]] PageGeometry Geometry() const override { return {}; }
    [[nodiscard]] double CurrentY() const override { return 0; }
    void SetStyle(const std::string& /*name*/, const ParagraphStyle& /*style*/) override {}
    void AddParagraph(const std::string& /*style*/, const std::string& /*text*/) override {}
    void AddTable(const std::string& /*style*/, const DataGrid& /*grid*/) override {}
    void DrawPicture(const Chart2D& /*chart*/, const PageRectangle& /*place*/) override {}
    void AddSheets(std::span<const ChartSheet> /*sheets*/) override {}
    [[nodiscard]] std::string SvgOf(const ChartSheet& /*sheet*/) const override { return {}; }
    [[nodiscard]] std::string ShortTime() const override { return {}; }
    [[nodiscard]] std::string MediumDate() const override { return {}; }
    void SetUpPrinter() override {}
    bool Print() override { return false; }
    void SavePdf(const std::string& /*path*/) override {}

  private:
    PageOrientation m_orientation = poPortrait;
};

/// Window services of a program without a window system: they take everything and answer nothing.
class NoWindowSystem final : private FileDialog,
                             private Clipboard,
                             private HelpViewer,
                             private ScreenCursor,
                             private PlaceLocks,
                             private ScreenUpdate {
  public:
    /// The services; they live as long as this object.
    [[nodiscard]] WindowSystem Services() { return Services(m_pages); }

    /// The same with a page writer that writes.
    [[nodiscard]] WindowSystem Services(PageWriter& pages) {
        return {*this, *this, *this, *this, *this, *this, pages, {}};
    }

  private:
    std::optional<FileNameAnswer> Ask(const FileNameRequest& /*request*/) override {
        return std::nullopt;
    }
    void SetText(const std::string& /*text*/) override {}
    [[nodiscard]] std::string Text() const override { return {}; }
    void ShowContents(const std::string& /*helpFile*/) override {}
    void ShowTopic(const std::string& /*helpFile*/, int /*topic*/) override {}
    [[nodiscard]] int Current() const override { return DefaultCursor; }
    void Set(int /*cursor*/) override {}
    bool Take(const std::string& /*path*/) override { return false; }
    void Release(const std::string& /*path*/) override {}
    void Update() override {}

    NoPageWriter m_pages;
};

} // namespace corvanta
