#pragma once

#include "shell/MainControls.h"
#include "shell/MechanismExample.h"

#include <QFrame>
#include <QPlainTextEdit>
#include <QScrollArea>

#include <functional>
#include <string>
#include <vector>

class QGridLayout;
class QLabel;
class QToolButton;
class QVBoxLayout;

namespace corvanta {

/// What stands in the result area while there is no document: what to do next, with a picture of
/// every sample.
class StartPage final : public QScrollArea {
    Q_OBJECT

  public:
    struct Actions {
        std::function<void(int command, int tag)> Command;
        std::function<void()> AskForSample; ///< empty when there are no samples
        std::function<void(const std::string& path)> OpenSample;
    };

    StartPage(Actions actions, const std::vector<SampleCard>& samples, QWidget* parent = nullptr);

    /// Shows the recent files as links.
    void Refresh(const std::vector<MenuItem>& recentFiles);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    [[nodiscard]] QWidget* BuildLinks();
    void AddSample(const SampleCard& sample);
    void PlaceSamples();

    Actions m_actions;
    QWidget* m_recent = nullptr;
    QVBoxLayout* m_recentLinks = nullptr;
    QGridLayout* m_samples = nullptr;
    std::vector<QToolButton*> m_cards;
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

/// What stands in the place of a custom table without a channel.
class EmptyTablePage final : public QWidget {
    Q_OBJECT

  public:
    explicit EmptyTablePage(std::function<void()> define, QWidget* parent = nullptr);
};

/// The dynamics report: black on white, as it prints.
class ReportView final : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit ReportView(QWidget* parent = nullptr);

    void Refresh(const PictureBox& picture);
};

} // namespace corvanta
