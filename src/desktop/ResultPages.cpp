#include "desktop/ResultPages.h"

#include "desktop/GridView.h"
#include "desktop/Icons.h"
#include "desktop/QtServices.h"

#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace corvanta {

namespace {

constexpr int PageMargin = 48;
constexpr int LinkIconSize = 20;

QLabel* Heading(const QString& text, double size, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    label->setFont(font);
    return label;
}

} // namespace

StartPage::StartPage(Command command, std::function<void()> openSample, QWidget* parent)
    : QWidget(parent),
      m_command(std::move(command)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    layout->addWidget(Heading(tr("No suspension is open"), 1.6, this));
    layout->addSpacing(12);
    AddLink(layout, "new", tr("New suspension"), tr("Type in a corner from nothing"),
            [this] { m_command(mcNew, 0); });
    AddLink(layout, "open", tr("Open..."), tr("A .WSP file; it can be dropped here too"),
            [this] { m_command(mcOpen, 0); });
    if (openSample) {
        AddLink(layout, "3d", tr("Open a sample"), tr("Corners of real and typical cars"),
                std::move(openSample));
    }
    m_recent = new QWidget(this);
    auto* recent = new QVBoxLayout(m_recent);
    recent->setContentsMargins(0, 24, 0, 0);
    recent->addWidget(Heading(tr("Recent files"), 1.15, m_recent));
    m_recentLinks = new QVBoxLayout;
    recent->addLayout(m_recentLinks);
    layout->addWidget(m_recent);
    layout->addStretch(1);
}

void StartPage::AddLink(QVBoxLayout* layout, const char* icon, const QString& text,
                        const QString& hint, std::function<void()> clicked) {
    auto* row = new QHBoxLayout;
    auto* button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIcon(ThemedIcon(icon));
    button->setIconSize({LinkIconSize, LinkIconSize});
    button->setText(text);
    button->setCursor(Qt::PointingHandCursor);
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this, std::move(clicked));
    row->addWidget(button);
    row->addWidget(new QLabel(hint, this));
    row->addStretch(1);
    layout->addLayout(row);
}

void StartPage::Refresh(const std::vector<MenuItem>& recentFiles) {
    std::vector<std::string> paths;
    for (const MenuItem& item : recentFiles) {
        if (item.Command == mcRecentFile && item.Visible) {
            paths.push_back(item.ToolTip);
        }
    }
    if (paths == m_shown && m_recent->isVisibleTo(this) == !paths.empty()) {
        return;
    }
    m_shown = paths;
    const QList<QToolButton*> former = m_recent->findChildren<QToolButton*>();
    for (QToolButton* button : former) {
        button->deleteLater();
    }
    for (const MenuItem& item : recentFiles) {
        if (item.Command != mcRecentFile || !item.Visible) {
            continue;
        }
        auto* button = new QToolButton(m_recent);
        button->setAutoRaise(true);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setIcon(ThemedIcon("recent"));
        button->setText(QString::fromStdString(item.Caption).section("  ", 1));
        button->setToolTip(QString::fromStdString(item.ToolTip));
        button->setCursor(Qt::PointingHandCursor);
        const int tag = item.Tag;
        connect(button, &QToolButton::clicked, this, [this, tag] { m_command(mcRecentFile, tag); });
        m_recentLinks->addWidget(button, 0, Qt::AlignLeft);
    }
    m_recent->setVisible(!paths.empty());
}

FailurePage::FailurePage(std::function<void()> properties, QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    layout->addWidget(Heading(tr("There are no results"), 1.6, this));
    layout->addSpacing(12);
    m_reason = new QLabel(this);
    m_reason->setTextFormat(Qt::PlainText);
    m_reason->setWordWrap(true);
    m_reason->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_reason);
    layout->addSpacing(12);
    m_place = new QLabel(this);
    m_place->setObjectName("labFailurePlace");
    m_place->setWordWrap(true);
    m_place->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_place);
    layout->addSpacing(12);
    auto* button = new QPushButton(ThemedIcon("properties"), tr("Suspension Properties..."), this);
    connect(button, &QPushButton::clicked, this, std::move(properties));
    layout->addWidget(button, 0, Qt::AlignLeft);
    layout->addStretch(1);
}

void FailurePage::Refresh(const std::string& reason, const Control& place) {
    m_reason->setText(MessageText(reason));
    m_place->setText(MessageText(place.Caption));
    m_place->setVisible(place.Visible);
}

ReportView::ReportView(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setFrameShape(QFrame::NoFrame);
    setFont(TableFont());
    setLineWrapMode(QPlainTextEdit::NoWrap);
    document()->setDocumentMargin(24);
    QPalette paper = palette();
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, Qt::black);
    setPalette(paper);
}

void ReportView::Refresh(const PictureBox& picture) {
    const QString text = MessageText(picture.Text);
    if (toPlainText() != text) {
        setPlainText(text);
    }
}

} // namespace corvanta
