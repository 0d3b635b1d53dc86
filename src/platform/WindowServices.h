#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// What the windows ask of a window system. A program without one has services that answer nothing;
/// a test has services that record what was asked and answer from a script.
class WindowService {
  public:
    WindowService() = default;
    WindowService(const WindowService&) = delete;
    WindowService& operator=(const WindowService&) = delete;
    WindowService(WindowService&&) = delete;
    WindowService& operator=(WindowService&&) = delete;
    virtual ~WindowService() = default;
};

/// What a file name is asked for.
enum class FileNameMode { Open = 1, Save, SaveAs, Import, Export };

struct FileNameRequest {
    FileNameMode Mode = FileNameMode::Open;
    std::string Title;
    std::string Filter; ///< a description and a pattern, then another pair, all parted by "|"
    std::string StartFolder;
    std::string InitialName;
    std::string Extension; ///< of a name typed without one, when writing
    bool Passing = false;  ///< the folder is no place for later dialogs to start in
    bool Several = false;  ///< any number of files may be chosen, to be read
};

struct FileNameAnswer {
    std::string Path;
    int FilterIndex = 1;              ///< the pair of the filter that was chosen, from 1
    std::vector<std::string> Paths{}; ///< all of them, where several may be chosen
};

class FileDialog : public virtual WindowService {
  public:
    /// Asks for a file name; nothing when the user cancels. Modes for writing ask before
    /// overwriting.
    virtual std::optional<FileNameAnswer> Ask(const FileNameRequest& request) = 0;
};

class Clipboard : public virtual WindowService {
  public:
    virtual void SetText(const std::string& text) = 0;
    [[nodiscard]] virtual std::string Text() const = 0;
};

/// The viewer of the help pages.
class HelpViewer : public virtual WindowService {
  public:
    virtual void ShowContents(const std::string& helpFile) = 0;
    virtual void ShowTopic(const std::string& helpFile, int topic) = 0;
};

/// Numbers of cursors.
inline constexpr int DefaultCursor = 0;
inline constexpr int HourglassCursor = 11;

/// The cursor of the whole screen.
class ScreenCursor : public virtual WindowService {
  public:
    [[nodiscard]] virtual int Current() const = 0;
    virtual void Set(int cursor) = 0;
};

/// Place and size of a window on the screen, twips (1440 to the inch).
struct WindowPlacement {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;

    friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

/// Locks that end with the program that holds them, however it ends.
class PlaceLocks : public virtual WindowService {
  public:
    /// Takes the lock with a path as its name; false while another program holds it.
    virtual bool Take(const std::string& path) = 0;
    virtual void Release(const std::string& path) = 0;
};

/// What the windows of the program are to the user's eyes.
class ScreenUpdate : public virtual WindowService {
  public:
    /// Brings the windows as they are now to the screen, without waiting for the next event.
    virtual void Update() = 0;
};

/// The frame of one window: where it stands. A window system moves it there and keeps it up to
/// date.
struct WindowFrame {
    std::string Name; ///< the window's name in the settings store, for instance "frmMain"
    WindowPlacement Placement;
    bool IsNormal = true;     ///< false while the window is maximised or minimised
    bool IsMaximised = false; ///< whether it fills the screen, or did before it was minimised
    bool IsPlaced = false;    ///< false until somebody has put the window where it is
};

class PageWriter;

/// One window system.
struct WindowSystem {
    FileDialog& Files;
    Clipboard& Board;
    HelpViewer& Help;
    ScreenCursor& Cursor;
    PlaceLocks& Locks;
    ScreenUpdate& Screen;
    PageWriter& Pages;
    WindowPlacement ScreenSize; ///< its place is not used
};

} // namespace corvanta
