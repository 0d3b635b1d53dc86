#pragma once

#include "platform/WindowServices.h"

#include <QMainWindow>
#include <QMap>

#include <memory>

class QTextBrowser;

namespace corvanta {

/// The help: pages of the folder "help" beside the help file that is asked for, each topic a page.
class HelpWindow final : public HelpViewer {
  public:
    HelpWindow();
    HelpWindow(const HelpWindow&) = delete;
    HelpWindow& operator=(const HelpWindow&) = delete;
    HelpWindow(HelpWindow&&) = delete;
    HelpWindow& operator=(HelpWindow&&) = delete;
    ~HelpWindow() override;

    void ShowContents(const std::string& helpFile) override;
    void ShowTopic(const std::string& helpFile, int topic) override;

    /// The window, none before it was first shown.
    [[nodiscard]] QMainWindow* View() const { return m_window.get(); }

  private:
    void BuildWindow();
    void ReadTopics(const QString& folder);

    std::unique_ptr<QMainWindow> m_window;
    QTextBrowser* m_browser = nullptr;
    QString m_folder;
    QMap<int, QString> m_pages;
};

} // namespace corvanta
