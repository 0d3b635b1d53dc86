#include "desktop/HelpWindow.h"

#include "desktop/Icons.h"
#include "model/Failure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextBrowser>
#include <QTextStream>
#include <QToolBar>

namespace corvanta {

namespace {

constexpr int ContentsTopic = 1;
constexpr QSize DesignSize{860, 640};

} // namespace

HelpWindow::HelpWindow() = default;
HelpWindow::~HelpWindow() = default;

void HelpWindow::ShowContents(const std::string& helpFile) {
    ShowTopic(helpFile, ContentsTopic);
}

void HelpWindow::ShowTopic(const std::string& helpFile, int topic) {
    ReadTopics(QFileInfo(QString::fromStdString(helpFile)).dir().filePath("help"));
    const QString page = m_pages.value(topic, m_pages.value(ContentsTopic));
    if (page.isEmpty()) {
        throw Failure(fnFileNotFound, "File not found");
    }
    BuildWindow();
    m_browser->setSource(QUrl::fromLocalFile(m_folder + "/" + page));
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void HelpWindow::ReadTopics(const QString& folder) {
    if (folder == m_folder) {
        return;
    }
    m_folder = folder;
    m_pages.clear();
    QFile file(folder + "/topics.txt");
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return;
    }
    QTextStream lines(&file);
    for (QString line = lines.readLine(); !line.isNull(); line = lines.readLine()) {
        const QStringList cells = line.split('\t');
        if (cells.size() == 2) {
            m_pages[cells[0].toInt()] = cells[1];
        }
    }
}

void HelpWindow::BuildWindow() {
    if (m_window) {
        return;
    }
    m_window = std::make_unique<QMainWindow>();
    m_window->setWindowTitle("Corvanta Help");
    m_window->setWindowIcon(ThemedIcon("help"));
    m_window->resize(DesignSize);
    m_browser = new QTextBrowser(m_window.get());
    m_browser->setOpenExternalLinks(false);
    m_browser->document()->setDocumentMargin(18);
    m_browser->setFrameShape(QFrame::NoFrame);
    m_window->setCentralWidget(m_browser);
    QToolBar* bar = m_window->addToolBar("Pages");
    bar->setMovable(false);
    QAction* back = bar->addAction(ThemedIcon("left"), "Back", m_browser, &QTextBrowser::backward);
    QAction* forward =
        bar->addAction(ThemedIcon("right"), "Forward", m_browser, &QTextBrowser::forward);
    bar->addAction("Contents", m_browser, [this] {
        m_browser->setSource(QUrl::fromLocalFile(m_folder + "/" + m_pages.value(ContentsTopic)));
    });
    back->setShortcut(QKeySequence::Back);
    forward->setShortcut(QKeySequence::Forward);
    back->setEnabled(false);
    forward->setEnabled(false);
    auto* close = new QAction(m_window.get());
    close->setShortcut(Qt::Key_Escape);
    QObject::connect(close, &QAction::triggered, m_window.get(), &QWidget::close);
    m_window->addAction(close);
    QObject::connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    QObject::connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
}

} // namespace corvanta
