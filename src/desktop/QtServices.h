#pragma once

#include "platform/MachineServices.h"
#include "platform/Messages.h"
#include "platform/WindowServices.h"

#include <QByteArray>
#include <QLockFile>
#include <QSize>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <string>

class QImage;
class QPainter;
class QWidget;

namespace corvanta {

/// Pixels of a screen at 100 per cent are 15 twips.
inline constexpr int TwipsPerPixel = 15;

/// Dots of a screen at 100 per cent.
inline constexpr int DotsPerInch = 96;

/// The message box of the window system, in front of the active window.
class QtMessageBox final : public MessageBox {
  public:
    int Show(const std::string& prompt, int style, const std::string& title) override;
    int Ask(const std::string& prompt, int style, const AnswerWords& words) override;
    int Choose(const std::string& prompt, const std::vector<std::string>& ways) override;

  private:
    static int Run(const std::string& prompt, int style, const std::string& title,
                   const AnswerWords* words);
};

class QtFileDialog final : public FileDialog {
  public:
    std::optional<FileNameAnswer> Ask(const FileNameRequest& request) override;
};

class QtClipboard final : public Clipboard {
  public:
    void SetText(const std::string& text) override;
    [[nodiscard]] std::string Text() const override;
};

class QtScreenCursor final : public ScreenCursor {
  public:
    [[nodiscard]] int Current() const override { return m_current; }
    void Set(int cursor) override;

  private:
    int m_current = DefaultCursor;
};

/// Locks as files; the one of a program that ended without releasing it is stale and can be taken.
class QtPlaceLocks final : public PlaceLocks {
  public:
    bool Take(const std::string& path) override;
    void Release(const std::string& path) override { m_locks.erase(path); }

  private:
    std::map<std::string, std::unique_ptr<QLockFile>> m_locks;
};

/// The process with the bell of the window system.
class DesktopProcess final : public MachineServices {
  public:
    using MachineServices::MachineServices;

    void Beep() override;
};

/// Asks for a file to save to and saves, unless the user cancels; a name typed without one gets the
/// ending of the chosen kind. `kinds` as the toolkit writes them.
void AskAndSave(QWidget* parent, const QString& title, const QString& kinds,
                const std::function<void(const QString& path)>& save);

/// Writes a whole file the way that every file of the program is written: the old one stays when
/// that fails. Throws Failure then. Whatever the toolkit can write is made in memory first; on a
/// full disk its own files end as they may, and it says nothing.
void WriteFile(const QString& path, const QByteArray& bytes);

/// A picture as a PNG file.
[[nodiscard]] QByteArray PngOf(const QImage& picture);

/// What is painted on an area of the screen's density, as an SVG file.
[[nodiscard]] QByteArray SvgOf(const QSize& size, const std::function<void(QPainter&)>& paint);

/// Filters of a file dialog: the pairs of description and pattern as the toolkit writes them.
[[nodiscard]] QStringList DialogFilters(const std::string& filter);

/// A message's lines, parted by CR or CR LF, as the toolkit parts them.
[[nodiscard]] QString MessageText(const std::string& prompt);

} // namespace corvanta
