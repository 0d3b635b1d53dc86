#include "desktop/ResultPages.h"

#include "desktop/DrawingView.h"
#include "desktop/GridView.h"
#include "desktop/Icons.h"
#include "desktop/QtServices.h"
#include "results/MDisplay3d.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta {

namespace {

constexpr int PageMargin = 48;
constexpr int LinkIconSize = 20;
constexpr QSize CardPicture(144, 92);
constexpr int CardGap = 8;
constexpr double CardPen = 1.2;

QLabel* Heading(const QString& text, double size, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    label->setFont(font);
    return label;
}

/// A button that looks like a line of text with a picture.
QToolButton* LinkButton(const QIcon& icon, const QString& text, std::function<void()> clicked,
                        QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIcon(icon);
    button->setIconSize({LinkIconSize, LinkIconSize});
    button->setText(QString(text).replace('&', "&&"));
    button->setCursor(Qt::PointingHandCursor);
    button->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(button, &QToolButton::clicked, button, std::move(clicked));
    return button;
}

/// The corner as the editor draws it.
QIcon PictureOf(const Suspension& document, double density) {
    RecordedSurface surface(CardPicture.width(), CardPicture.height(), QApplication::font());
    CWireframe wireframe;
    DrawPreview(wireframe, surface, document.StaticPoints(), document.Data);
    QPixmap picture(CardPicture * density);
    picture.setDevicePixelRatio(density);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    surface.PaintOn(painter, CardPen, Qt::black);
    return picture;
}

/// A page that says something and offers one way out.
QVBoxLayout* NoticeLayout(QWidget* page, const QString& heading) {
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    layout->addWidget(Heading(heading, 1.6, page));
    layout->addSpacing(12);
    return layout;
}

void AddWayOut(QVBoxLayout* layout, const char* icon, const QString& text,
               std::function<void()> clicked, QWidget* page) {
    layout->addSpacing(12);
    auto* button = new QPushButton(ThemedIcon(icon), text, page);
    QObject::connect(button, &QPushButton::clicked, page, std::move(clicked));
    layout->addWidget(button, 0, Qt::AlignLeft);
    layout->addStretch(1);
}

} // namespace

StartPage::StartPage(Actions actions, const std::vector<SampleCard>& samples, QWidget* parent)
    : QScrollArea(parent),
      m_actions(std::move(actions)) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(PageMargin, PageMargin / 2, PageMargin, PageMargin / 2);
    layout->addWidget(Heading(tr("No suspension is open"), 1.6, page));
    layout->addSpacing(8);
    layout->addWidget(BuildLinks());
    m_samples = new QGridLayout;
    m_samples->setHorizontalSpacing(CardGap);
    m_samples->setVerticalSpacing(CardGap);
    if (!samples.empty()) {
        layout->addSpacing(16);
        layout->addWidget(Heading(tr("Samples: a click opens an untitled copy"), 1.15, page));
        layout->addLayout(m_samples);
    }
    layout->addStretch(1);
    for (const SampleCard& sample : samples) {
        AddSample(sample);
    }
    setWidget(page);
}

/// What to do next on the left, the recent files on the right.
QWidget* StartPage::BuildLinks() {
    auto* links = new QWidget(this);
    auto* columns = new QHBoxLayout(links);
    columns->setContentsMargins(0, 0, 0, 0);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    const auto add = [&](const char* icon, const QString& text, const QString& hint,
                         std::function<void()> clicked) {
        const int row = grid->rowCount();
        grid->addWidget(LinkButton(ThemedIcon(icon), text, std::move(clicked), links), row, 0,
                        Qt::AlignLeft);
        grid->addWidget(new QLabel(hint, links), row, 1, Qt::AlignLeft);
    };
    const auto run = [this](int command) {
        return [this, command] { m_actions.Command(command, 0); };
    };
    add("new", tr("New suspension"), tr("Type in a corner from nothing"), run(mcNew));
    add("open", tr("Open..."), tr("A .WSP file; it can be dropped here too"), run(mcOpen));
    if (m_actions.AskForSample) {
        add("3d", tr("Open a sample..."), tr("Those below and corners from published sources"),
            m_actions.AskForSample);
    }
    columns->addLayout(grid);
    columns->addSpacing(PageMargin);
    m_recent = new QWidget(links);
    m_recentLinks = new QVBoxLayout(m_recent);
    m_recentLinks->setContentsMargins(0, 0, 0, 0);
    m_recentLinks->setSpacing(2);
    m_recentLinks->addWidget(Heading(tr("Recent files"), 1.15, m_recent));
    columns->addWidget(m_recent, 0, Qt::AlignTop);
    columns->addStretch(1);
    return links;
}

void StartPage::AddSample(const SampleCard& sample) {
    QToolButton* card = LinkButton(
        PictureOf(sample.Document, devicePixelRatioF()), QString::fromStdString(sample.Title),
        [this, path = sample.Path] { m_actions.OpenSample(path); },
        widget() == nullptr ? this : widget());
    card->setIconSize(CardPicture);
    card->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    card->setToolTip(QString::fromStdString(sample.Document.Data.Description));
    m_cards.push_back(card);
}

void StartPage::PlaceSamples() {
    int width = CardPicture.width();
    for (const QToolButton* card : m_cards) {
        width = std::max(width, card->sizeHint().width());
    }
    const int room = viewport()->width() - 2 * PageMargin + CardGap;
    const int columns = std::max(1, room / (width + CardGap));
    int place = 0;
    for (QToolButton* card : m_cards) {
        card->setFixedWidth(width);
        m_samples->addWidget(card, place / columns, place % columns, Qt::AlignLeft);
        ++place;
    }
    for (int column = 0; column < m_samples->columnCount(); ++column) {
        m_samples->setColumnStretch(column, column == columns - 1 ? 1 : 0);
    }
}

void StartPage::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    PlaceSamples();
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
        // A menu's caption writes an "&" of the path twice; the link does so itself.
        const QString path =
            QString::fromStdString(item.Caption).section("  ", 1).replace("&&", "&");
        QToolButton* button = LinkButton(
            ThemedIcon("recent"), path,
            [this, tag = item.Tag] { m_actions.Command(mcRecentFile, tag); }, m_recent);
        button->setToolTip(QString::fromStdString(item.ToolTip));
        m_recentLinks->addWidget(button, 0, Qt::AlignLeft);
    }
    m_recent->setVisible(!paths.empty());
}

FailurePage::FailurePage(std::function<void()> properties, QWidget* parent) : QWidget(parent) {
    QVBoxLayout* layout = NoticeLayout(this, tr("There are no results"));
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
    AddWayOut(layout, "properties", tr("Suspension Properties..."), std::move(properties), this);
}

EmptyTablePage::EmptyTablePage(std::function<void()> define, QWidget* parent) : QWidget(parent) {
    QVBoxLayout* layout = NoticeLayout(this, tr("The custom table is empty"));
    layout->addWidget(new QLabel(tr("Choose the channels that it shows, in your order."), this));
    AddWayOut(layout, "customtable", tr("Define Custom Table..."), std::move(define), this);
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
