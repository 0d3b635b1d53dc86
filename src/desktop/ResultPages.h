#pragma once

#include "shell/MainControls.h"

#include <QFrame>
#include <QPlainTextEdit>

#include <functional>

class QLabel;
class QVBoxLayout;

namespace corvanta {

/// What stands in the result area while there is no document: what to do next.
class StartPage final : public QWidget {
    Q_OBJECT

  public:
    using Command = std::function<void(int command, int tag)>;

    /// `openSample` is empty when there are no samples.
    StartPage(Command command, std::function<void()> openSample, QWidget* parent = nullptr);

    /// Shows the recent files as links.
    void Refresh(const std::vector<MenuItem>& recentFiles);

  private:
    void AddLink(QVBoxLayout* layout, const char* icon, const QString& text, const QString& hint,
                 std::function<void()> clicked);

    Command m_command;
    QWidget* m_recent;
    QVBoxLayout* m_recentLinks;
    std::vector<std::string> m_shown;
};

/// What stands in the result area after a calculation that failed: its reason.
class FailurePage final : public QWidget {
    Q_OBJECT

  public:
    explicit FailurePage(std::function<void()> properties, QWidget* parent = nullptr);

    /// The message of the failure, and `place`, the rows and the position that it is about.
    void Refresh(const std::string& reason, const Control& place);

  private:
    QLabel* m_reason;
    QLabel* m_place;
};

/// The dynamics report: black on white, as it prints.
class ReportView final : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit ReportView(QWidget* parent = nullptr);

    void Refresh(const PictureBox& picture);
};

} // namespace corvanta
