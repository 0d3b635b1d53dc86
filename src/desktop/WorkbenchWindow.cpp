#include "desktop/WorkbenchWindow.h"

#include "desktop/ChartsPanel.h"
#include "desktop/CornerPanelView.h"
#include "desktop/Desktop.h"
#include "desktop/DialogParts.h"
#include "desktop/GridView.h"
#include "desktop/Guard.h"
#include "desktop/Icons.h"
#include "desktop/NumberField.h"
#include "desktop/PointsPanel.h"
#include "desktop/StepsPanel.h"
#include "desktop/StudiesPanel.h"
#include "desktop/TourBubble.h"
#include "desktop/TravelPanel.h"
#include "desktop/WindowPlaces.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace corvanta {

namespace {

constexpr QSize LeastSize{800, 480};
constexpr int IconSize = 20;

/// Widths of the three columns and heights at the left as they are at first, in parts.
constexpr std::array FirstColumns{394, 866};
constexpr std::array FirstViews{523, 343};
constexpr std::array FirstLeft{430, 190};
constexpr std::array FirstRight{340, 280};

QString SizesText(const QSplitter& splitter) {
    QStringList parts;
    for (const int size : splitter.sizes()) {
        parts << QString::number(size);
    }
    return parts.join(' ');
}

template <std::size_t Count>
void SetSizes(QSplitter& splitter, const QString& text, const std::array<int, Count>& otherwise) {
    QList<int> sizes;
    for (const QString& part : text.split(' ', Qt::SkipEmptyParts)) {
        sizes << std::max(0, part.toInt());
    }
    splitter.setSizes(sizes.size() == static_cast<qsizetype>(Count)
                          ? sizes
                          : QList<int>(otherwise.begin(), otherwise.end()));
}

} // namespace

WorkbenchWindow::WorkbenchWindow(Desktop& desktop, frmWorkbench& window)
    : m_desktop(desktop),
      m_window(window),
      m_binder([&desktop](const auto& event) { desktop.Handle(event); }) {
    setObjectName("frmWorkbench");
    setWindowIcon(ThemedIcon("corvanta"));
    setMinimumSize(LeastSize);
    setContextMenuPolicy(Qt::NoContextMenu);
    BuildPanels();
    BuildTools();
    BuildKeys();
    PlaceWindow(*this, window.Frame);
    RestorePanels();
    m_points->Table().setFocus();
    Refresh();
    window.Frame.IsMaximised ? showMaximized() : show();
}

void WorkbenchWindow::BuildPanels() {
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->setSpacing(2);
    m_head = new QLabel(centre);
    m_head->setObjectName("labHead");
    m_head->setMargin(3);
    m_head->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    // Its line is always there, so that nothing moves under the hand when it has something to say.
    m_head->setFixedHeight(m_head->fontMetrics().height() + 8);
    layout->addWidget(m_head);
    m_columns = new QSplitter(Qt::Horizontal, centre);
    m_left = new QSplitter(Qt::Vertical, m_columns);
    m_points = new PointsPanel(m_desktop, m_window, m_binder, m_left);
    m_left->addWidget(m_points);
    m_left->addWidget(BuildLists());
    m_columns->addWidget(m_left);
    m_columns->addWidget(BuildViews());
    m_columns->setStretchFactor(0, 0);
    m_columns->setStretchFactor(1, 1);
    m_columns->setChildrenCollapsible(false);
    m_left->setStretchFactor(0, 1);
    layout->addWidget(m_columns, 1);
    m_travel = new TravelPanel(m_desktop, m_window, m_binder, centre);
    m_travel->setObjectName("panTravel");
    layout->addWidget(m_travel);
    layout->addWidget(BuildEmptyPage(), 1);
    m_binder.OnShow([this] {
        m_columns->setVisible(!m_window.panEmpty.Visible);
        m_travel->setVisible(!m_window.panEmpty.Visible);
    });
    connect(m_points, &PointsPanel::SpacePressed, m_travel, &TravelPanel::TogglePlay);
    setCentralWidget(centre);
    m_tour = new TourBubble(m_binder, m_window.Tour, this);
    for (QSplitter* splitter : {m_columns, m_left, m_views, m_right}) {
        connect(splitter, &QSplitter::splitterMoved, this, [this] { RememberPanels(); });
    }
}

QWidget* WorkbenchWindow::BuildViews() {
    m_right = new QSplitter(Qt::Vertical, m_columns);
    m_views = new QSplitter(Qt::Horizontal, m_right);
    m_charts = new ChartsPanel(m_desktop, m_window, m_views);
    m_corner = new CornerPanelView(
        m_window.Corner, [this](const auto& event) { m_desktop.HandleMotion(event); }, m_views);
    m_views->addWidget(m_charts);
    m_views->addWidget(m_corner);
    m_views->setStretchFactor(0, 3);
    m_views->setStretchFactor(1, 2);
    m_views->setChildrenCollapsible(false);
    m_studies = new StudiesPanel(m_desktop, m_window, m_right);
    connect(m_studies, &StudiesPanel::Changed, this, &WorkbenchWindow::RefreshSoon);
    m_right->addWidget(m_views);
    m_right->addWidget(m_studies);
    m_right->setStretchFactor(0, 1);
    m_right->setChildrenCollapsible(false);
    return m_right;
}

/// What stands there while no document is open.
QWidget* WorkbenchWindow::BuildEmptyPage() {
    auto* page = new QWidget(this);
    page->setObjectName("panEmpty");
    auto* layout = new QVBoxLayout(page);
    auto* words = new QLabel(QString::fromStdString(m_window.panEmpty.Caption), page);
    words->setAlignment(Qt::AlignCenter);
    words->setWordWrap(true);
    auto* buttons = new QHBoxLayout;
    const auto add = [&](const QString& caption, int command) {
        auto* button = new QPushButton(caption, page);
        connect(button, &QPushButton::clicked, this, [this, command] {
            m_desktop.Handle([&] { m_desktop.Main().Execute(command, 0); });
        });
        buttons->addWidget(button);
    };
    buttons->addStretch(1);
    add(tr("&Open..."), mcOpen);
    add(tr("&New"), mcNew);
    buttons->addStretch(1);
    layout->addStretch(1);
    layout->addWidget(words);
    layout->addLayout(buttons);
    layout->addStretch(2);
    m_binder.Bind(page, m_window.panEmpty);
    return page;
}

QWidget* WorkbenchWindow::BuildLists() {
    m_lists = new QTabWidget(m_left);
    m_history = new HistoryPanel(m_desktop, m_window, m_lists);
    m_variants = new VariantsPanel(m_desktop, m_window, m_lists);
    m_lists->setObjectName("tabLists");
    m_lists->addTab(m_history, tr("History"));
    m_lists->addTab(m_variants, tr("Variants"));
    m_lists->setTabToolTip(0, tr("The steps of the document (Ctrl+4)"));
    m_lists->setTabToolTip(1, tr("Designs kept beside the document (Ctrl+5)"));
    m_lists->setDocumentMode(true);
    return m_lists;
}

QAction* WorkbenchWindow::AddTool(const Control& control, const char* icon,
                                  const QKeySequence& keys, Binder::Event chosen) {
    auto* action = new QAction(ThemedIcon(icon), QString(), this);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [this, chosen = std::move(chosen)] {
        m_points->Table().CommitTyping();
        m_desktop.Handle(chosen);
    });
    m_binder.OnShow([action, &control, keys] {
        ShowAction(*action, control);
        QString hint =
            QString::fromStdString(control.ToolTip.empty() ? control.Caption : control.ToolTip);
        if (!keys.isEmpty() && !hint.contains('(')) {
            hint += " (" + keys.toString(QKeySequence::NativeText) + ")";
        }
        action->setToolTip(hint);
    });
    return action;
}

QAction* WorkbenchWindow::AddCommand(const QString& caption, const QString& hint, const char* icon,
                                     const QKeySequence& keys, int command) {
    auto* action = new QAction(ThemedIcon(icon), caption, this);
    action->setShortcut(keys);
    action->setToolTip(
        keys.isEmpty() ? hint : hint + " (" + keys.toString(QKeySequence::NativeText) + ")");
    connect(action, &QAction::triggered, this, [this, command] {
        m_points->Table().CommitTyping();
        m_desktop.Handle([&] { m_desktop.Main().Execute(command, 0); });
    });
    return action;
}

void WorkbenchWindow::BuildTools() {
    auto* bar = addToolBar(tr("Workbench"));
    bar->setMovable(false);
    bar->setIconSize({IconSize, IconSize});
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addAction(
        AddTool(m_window.cmdUndo, "undo", Qt::CTRL | Qt::Key_Z, [this] { m_window.Undo(); }));
    QAction* redo = AddTool(m_window.cmdRedo, "redo", Qt::CTRL | Qt::SHIFT | Qt::Key_Z,
                            [this] { m_window.Redo(); });
    redo->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    bar->addAction(redo);
    bar->addSeparator();
    bar->addAction(AddTool(m_window.cmdSetBaseline, "baseline", Qt::CTRL | Qt::Key_B,
                           [this] { m_window.SetBaseline(); }));
    bar->addAction(AddTool(m_window.cmdKeepVariant, "variant", Qt::CTRL | Qt::Key_D, [this] {
        m_window.KeepVariant();
        m_lists->setCurrentWidget(m_variants);
    }));
    bar->addAction(AddCommand(tr("Add Files..."), tr("Add documents as variants"), "open",
                              Qt::CTRL | Qt::SHIFT | Qt::Key_D, mcAddVariants));
    bar->addAction(AddCommand(tr("Compare..."), tr("List what differs"), "customtable",
                              Qt::CTRL | Qt::Key_E, mcCompare));
    bar->addSeparator();
    bar->addAction(AddCommand(tr("Open Study..."), tr("Open a study file with its document"),
                              "open", Qt::CTRL | Qt::SHIFT | Qt::Key_O, mcOpenStudy));
    QAction* save = AddCommand(tr("Save Study"), tr("Save variants, targets and charts"), "save",
                               Qt::CTRL | Qt::SHIFT | Qt::Key_S, mcSaveStudy);
    bar->addAction(save);
    auto* button = static_cast<QToolButton*>(bar->widgetForAction(save));
    auto* more = new QMenu(button);
    more->addAction(AddCommand(tr("Save Study As..."), tr("Save under another name"), "save", {},
                               mcSaveStudyAs));
    button->setMenu(more);
    button->setPopupMode(QToolButton::MenuButtonPopup);
    bar->addSeparator();
    bar->addAction(
        AddTool(m_window.cmdStudies, "studies", Qt::Key_F7, [this] { m_window.ToggleStudies(); }));
    bar->addSeparator();
    auto* charts = new QLabel(tr(" &Charts "), bar);
    bar->addWidget(charts);
    m_count = new QSpinBox(bar);
    charts->setBuddy(m_count);
    m_count->setRange(1, frmWorkbench::MostCharts);
    m_count->setToolTip(tr("Number of charts (Alt+C)"));
    connect(m_count, &QSpinBox::valueChanged, this, [this](int count) {
        m_desktop.Handle([&] { m_window.SetChartCount(static_cast<std::size_t>(count)); });
    });
    bar->addWidget(m_count);
}

/// Keys that have no button.
void WorkbenchWindow::BuildKeys() {
    const auto add = [this](const QKeySequence& keys, auto action) {
        auto* shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add(Qt::CTRL | Qt::Key_F, [this] { m_points->FocusFilter(); });
    for (const auto& [keys, command] : {std::pair{QKeySequence::New, mcNew},
                                        {QKeySequence::Open, mcOpen},
                                        {QKeySequence::Save, mcSave}}) {
        add(keys, [this, command = command] {
            m_points->Table().CommitTyping();
            m_desktop.Handle([&] { m_desktop.Main().Execute(command, 0); });
        });
    }
    add(Qt::CTRL | Qt::Key_1, [this] { m_points->Table().setFocus(); });
    add(Qt::CTRL | Qt::Key_2, [this] { m_charts->Chart(0)->setFocus(); });
    add(Qt::CTRL | Qt::Key_3, [this] { m_corner->Canvas().setFocus(); });
    add(Qt::CTRL | Qt::Key_4, [this] {
        m_lists->setCurrentWidget(m_history);
        m_history->findChild<QWidget*>("lstHistory")->setFocus();
    });
    add(Qt::CTRL | Qt::Key_5, [this] {
        m_lists->setCurrentWidget(m_variants);
        m_variants->findChild<QWidget*>("lstVariants")->setFocus();
    });
    for (NumberField* const field : findChildren<NumberField*>()) {
        field->installEventFilter(this);
    }
    add(Qt::Key_F5, [this] { m_desktop.Handle([this] { m_window.RunStudy(); }); });
    add(Qt::Key_F6, [this] { m_desktop.MainWidget()->activateWindow(); });
}

void WorkbenchWindow::Refresh() {
    m_refreshAsked = false;
    Guarded(m_desktop.Program().MessageService(), [this] { m_window.Update(); });
    m_binder.Show();
    ShowHead();
    m_points->Refresh();
    m_charts->Refresh();
    m_corner->Refresh();
    m_travel->Refresh();
    m_studies->Refresh();
    m_history->Refresh();
    m_variants->Refresh();
    const QSignalBlocker quiet(m_count);
    m_count->setValue(static_cast<int>(m_window.Charts().size()));
    setWindowTitle(QString::fromStdString(m_window.Caption) + "[*]");
    setWindowModified(m_desktop.Program().Data().Modified);
    ShowTour();
    if (m_window.Raise) {
        m_window.Raise = false;
        raise();
        activateWindow();
    }
}

void WorkbenchWindow::ShowHead() {
    const QString words = QString::fromStdString(m_window.labHead.Caption);
    m_head->setToolTip(words);
    SetTextOnce(m_head,
                m_head->fontMetrics().elidedText(words, Qt::ElideRight, m_head->width() - 8));
    QPalette colours = palette();
    if (!words.isEmpty()) {
        colours.setColor(QPalette::Window, DoubtColour(colours));
    }
    m_head->setAutoFillBackground(!words.isEmpty());
    m_head->setPalette(colours);
}

void WorkbenchWindow::ShowTour() {
    QWidget* part = nullptr;
    switch (m_window.Tour.Step().Part) {
    case TourPart::Points:
        part = m_points;
        break;
    case TourPart::Charts:
        part = m_charts;
        break;
    case TourPart::Corner:
        part = m_corner;
        break;
    case TourPart::Travel:
        part = m_travel;
        break;
    case TourPart::Lists:
        part = m_lists;
        break;
    }
    m_tour->Refresh(part, !m_window.panEmpty.Visible);
}

void WorkbenchWindow::RefreshSoon() {
    if (!m_refreshAsked) {
        m_refreshAsked = true;
        QTimer::singleShot(0, this, [this] {
            if (m_refreshAsked) {
                Refresh();
            }
        });
    }
}

void WorkbenchWindow::RestorePanels() {
    const QStringList parts = QString::fromStdString(m_window.Panels).split(';');
    SetSizes(*m_columns, parts.value(0), FirstColumns);
    SetSizes(*m_left, parts.value(1), FirstLeft);
    SetSizes(*m_views, parts.value(2), FirstViews);
    SetSizes(*m_right, parts.value(3), FirstRight);
}

void WorkbenchWindow::RememberPanels() {
    QStringList sizes;
    for (const QSplitter* const splitter : {m_columns, m_left, m_views, m_right}) {
        sizes << SizesText(*splitter);
    }
    m_window.Panels = sizes.join(';').toStdString();
}

void WorkbenchWindow::closeEvent(QCloseEvent* event) {
    m_desktop.Handle([this] { m_window.Close(); });
    event->accept();
}

void WorkbenchWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        m_desktop.Handle([this] { m_window.cmdHelp_Click(); });
    } else if (event->key() == Qt::Key_Space) {
        m_travel->TogglePlay();
    } else if (event->key() == Qt::Key_Escape && m_window.Tour.IsOpen()) {
        m_desktop.Handle([this] { m_window.Tour.cmdSkip_Click(); });
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

/// Space stops and plays in the fields of numbers too; a sum that is being typed may hold blanks.
bool WorkbenchWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        const auto* const field = qobject_cast<NumberField*>(watched);
        if (field != nullptr && (m_window.Playing() != PlayMode::None || !field->isModified())) {
            m_travel->TogglePlay();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void WorkbenchWindow::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    RememberPlace(*this, m_window.Frame);
}

void WorkbenchWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    RememberPlace(*this, m_window.Frame);
}

void WorkbenchWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        RememberPlace(*this, m_window.Frame);
    }
}

} // namespace corvanta
