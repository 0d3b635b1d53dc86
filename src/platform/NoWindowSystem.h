#pragma once

#include "platform/Messages.h"
#include "platform/WindowServices.h"

namespace corvanta {

/// A message box that nobody sees: a question reads as not answered.
class NoMessageBox final : public MessageBox {
  public:
    int Show(const std::string& /*prompt*/, int /*style*/, const std::string& /*title*/) override {
        return maNone;
    }
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
    [[nodiscard]] WindowSystem Services() { return {*this, *this, *this, *this, *this, *this, {}}; }

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
};

} // namespace corvanta
