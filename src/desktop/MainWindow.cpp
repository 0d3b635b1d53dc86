#include "desktop/MainWindow.h"

#include "desktop/ChartView.h"
#include "desktop/CornerView.h"
#include "desktop/Desktop.h"
#include "desktop/GridView.h"
#include "desktop/Icons.h"
#include "desktop/ResultPages.h"
#include "desktop/WindowPlaces.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHash>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

namespace corvanta {

namespace {

constexpr QSize LeastSize{800, 500};
constexpr QSize ComfortableSize{1100, 720};
constexpr int ToolIconSize = 22;
constexpr int StepIconSize = 14;

QList<QKeySequence> ShortcutsOf(int command) {
    switch (command) {
    case mcUndo:
        return {QKeySequence(Qt::CTRL | Qt::Key_Z)};
    case mcRedo:
        return {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)};
    case mcWorkbench:
        return {QKeySequence(Qt::Key_F6)};
    case mcNew:
        return {QKeySequence::New};
    case mcOpen:
        return {QKeySequence::Open};
    case mcSave:
        return {QKeySequence::Save};
    case mcSaveAs:
        return {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)};
    case mcPrint:
        return {QKeySequence::Print};
    case mcCopy:
        return {QKeySequence::Copy};
    case mcExit:
        return {QKeySequence::Quit};
    default:
        return {};
    }
}

int Pixels(int twips) {
    return twips / TwipsPerPixel;
}

} // namespace

MainWindow::MainWindow(Desktop& desktop)
    : m_desktop(desktop),
      m_window(desktop.Main()),
      m_binder([&desktop](const auto& event) { desktop.Handle(event); }) {
    setObjectName("frmMain");
    setWindowIcon(ThemedIcon("corvanta"));
    setMinimumSize(LeastSize);
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    BuildMenus();
    BuildToolbar();
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(BuildStrip());
    layout->addWidget(BuildBanner());
    layout->addWidget(BuildResultArea(), 1);
    setCentralWidget(centre);
    BuildStatusBar();
    TakePlace();
    qApp->installEventFilter(this);
}

void MainWindow::TakePlace() {
    const WindowPlacement& stored = m_window.Frame.Placement;
    QSize size(Pixels(stored.Width), Pixels(stored.Height));
    // A size below the least usable one is no size that a user left.
    if (size.width() < LeastSize.width() || size.height() < LeastSize.height()) {
        size = ComfortableSize;
    }
    PlaceWindow(*this, m_window.Frame, size);
}

void MainWindow::BuildMenus() {
    BuildMenu(m_window.mnuFile);
    BuildMenu(m_window.mnuEdit);
    BuildMenu(m_window.mnuView);
    BuildMenu(m_window.mnuTools);
    BuildMenu(m_window.mnuHelp);
}

QMenu* MainWindow::BuildMenu(Menu& menu) {
    QMenu* shown = menuBar()->addMenu(QString::fromStdString(menu.Caption));
    for (const MenuItem& item : menu.Items) {
        if (item.Command == mcExportMenu) {
            QMenu* exports = shown->addMenu(QString::fromStdString(item.Caption));
            for (const MenuItem& entry : m_window.mnuExport.Items) {
                AddItem(exports, entry);
            }
            m_menuTies.push_back({exports->menuAction(), &item});
            continue;
        }
        AddItem(shown, item);
        if (item.Command == mcExit) {
            AddRecentFiles(shown, shown->actions().constLast());
        }
    }
    return shown;
}

void MainWindow::AddItem(QMenu* menu, const MenuItem& item) {
    if (item.Caption == "-") {
        menu->addSeparator();
        return;
    }
    QAction* action = menu->addAction(QString::fromStdString(item.Caption));
    action->setShortcuts(ShortcutsOf(item.Command));
    action->setCheckable(item.Command == mcView);
    if (item.Command == mcExit) {
        action->setMenuRole(QAction::QuitRole);
    }
    const int command = item.Command;
    const int tag = item.Tag;
    action->setData(QPoint(command, tag)); // what it is, for whoever looks for it
    connect(action, &QAction::triggered, this, [this, command, tag] {
        if (command == mcExit) {
            close();
        } else {
            m_desktop.Handle([&] { m_window.Execute(command, tag); });
        }
    });
    m_menuTies.push_back({action, &item});
}

void MainWindow::AddRecentFiles(QMenu* menu, QAction* before) {
    menu->setToolTipsVisible(true); // of the files, their whole paths
    // The lines stand at both ends of the list; the first is the item 0.
    for (const MenuItem& item : m_window.mnuFMRU) {
        auto* action = new QAction(menu);
        action->setSeparator(item.Caption == "-");
        menu->insertAction(before, action);
        connect(action, &QAction::triggered, this,
                [this, &item] { m_desktop.Handle([&] { m_window.Execute(item); }); });
        m_menuTies.push_back({action, &item});
    }
}

void MainWindow::BuildToolbar() {
    QToolBar* bar = addToolBar(tr("Toolbar"));
    bar->setObjectName("tbrMain");
    bar->setMovable(false);
    bar->setIconSize({ToolIconSize, ToolIconSize});
    for (std::size_t n = 0; n < m_window.tbrMain.size(); ++n) {
        const ToolButton& button = m_window.tbrMain[n];
        if (button.Key.empty()) {
            bar->addSeparator();
            continue;
        }
        QAction* action = bar->addAction(ThemedIcon(QString::fromStdString(button.Image)),
                                         QString::fromStdString(button.ToolTip));
        action->setObjectName("tbr_" + QString::fromStdString(button.Key));
        action->setCheckable(button.TwoState);
        const int command = button.Command;
        const int tag = button.Tag;
        connect(action, &QAction::triggered, this, [this, command, tag] {
            m_desktop.Handle([&] { m_window.Execute(command, tag); });
        });
        m_buttons.emplace_back(action, static_cast<int>(n));
    }
}

QToolButton* MainWindow::StepButton(const char* icon, QComboBox* box, int direction) {
    auto* button = new QToolButton(m_strip);
    button->setIcon(ThemedIcon(icon));
    button->setIconSize({StepIconSize, StepIconSize});
    button->setAutoRaise(true);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setToolTip(box->toolTip());
    connect(button, &QToolButton::clicked, this, [box, direction] { Step(box, direction); });
    return button;
}

QWidget* MainWindow::BuildStrip() {
    m_strip = new QWidget(this);
    auto* layout = new QHBoxLayout(m_strip);
    const auto addLabel = [&](const Control& control) {
        auto* label = new QLabel(m_strip);
        m_binder.Bind(label, control);
        layout->addWidget(label);
    };
    const auto addList = [&](ListControl& list, const char* name, Binder::Event changed) {
        auto* box = new QComboBox(m_strip);
        box->setObjectName(name);
        box->setMinimumWidth(Pixels(list.Width) + 24);
        box->setMaxVisibleItems(25);
        box->setToolTip(QString::fromStdString(list.ToolTip));
        m_binder.Bind(box, list, std::move(changed));
        layout->addWidget(box);
        return box;
    };
    const auto addArrows = [&](const Control& control, QComboBox* box, const char* previous,
                               const char* next) {
        auto* group = new QWidget(m_strip);
        auto* arrows = new QHBoxLayout(group);
        arrows->setContentsMargins(0, 0, 8, 0);
        arrows->setSpacing(0);
        arrows->addWidget(StepButton(previous, box, -1));
        arrows->addWidget(StepButton(next, box, 1));
        m_binder.Bind(group, control);
        layout->addWidget(group);
    };
    addLabel(m_window.labType);
    addList(m_window.cboType, "cboType", [this] { m_window.cboType_Changed(); });
    addLabel(m_window.labWheel);
    m_wheel = addList(m_window.cboWheel, "cboWheel", [this] { m_window.cboWheel_Changed(); });
    addArrows(m_window.labUpDown, m_wheel, "up", "down");
    addLabel(m_window.labRack);
    m_rack = addList(m_window.cboRack, "cboRack", [this] { m_window.cboRack_Changed(); });
    addArrows(m_window.labLeftRight, m_rack, "left", "right");
    const auto addChoice = [&](auto* widget, auto& control, const char* name,
                               Binder::Event clicked) {
        widget->setObjectName(name);
        m_binder.Bind(widget, control, std::move(clicked));
        layout->addWidget(widget);
    };
    addChoice(new QCheckBox(m_strip), m_window.chk3dDrawAxes, "chk3dDrawAxes",
              [this] { m_window.chk3dDrawAxes_Click(); });
    addChoice(new QCheckBox(m_strip), m_window.chk3dAutoScale, "chk3dAutoScale",
              [this] { m_window.chk3dAutoScale_Click(); });
    addChoice(new QRadioButton(m_strip), m_window.optRack, "optRack",
              [this] { m_window.optRack_Click(); });
    addChoice(new QRadioButton(m_strip), m_window.optWheel, "optWheel",
              [this] { m_window.optWheel_Click(); });
    layout->addStretch(1);
    m_binder.Bind(m_strip, m_window.picComboContainer);
    return m_strip;
}

QWidget* MainWindow::BuildBanner() {
    auto* banner = new QLabel(this);
    banner->setObjectName("labBanner");
    banner->setWordWrap(true);
    banner->setMargin(8);
    banner->setTextInteractionFlags(Qt::TextSelectableByMouse);
    banner->setAutoFillBackground(true);
    QPalette colours = banner->palette();
    colours.setColor(QPalette::Window, DoubtColour(colours));
    banner->setPalette(colours);
    m_binder.Bind(banner, m_window.labBanner);
    return banner;
}

QWidget* MainWindow::BuildResultArea() {
    auto* area = new QWidget(this);
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    m_grid = new GridView(m_window.grdDisplay, area);
    m_grid->setObjectName("grdDisplay");
    m_report = new ReportView(area);
    m_corner = new CornerView(m_desktop, area);
    m_window.picSurface = &m_corner->Surface();
    m_chart = new ChartView(
        [this](double x, double y) { m_desktop.Handle([&] { m_window.chtChart_Click(x, y); }); },
        area);
    m_window.chtSurface = m_chart;
    m_binder.Bind(static_cast<QWidget*>(m_chart), m_window.chtChart);
    m_binder.OnShow([this] {
        if (m_window.chtChart.Visible) {
            m_chart->Refresh();
        }
    });
    StartPage::Actions actions;
    actions.Command = [this](int command, int tag) {
        m_desktop.Handle([&] { m_window.Execute(command, tag); });
    };
    if (m_window.Files.HasSamples()) {
        actions.AskForSample = [this] { m_desktop.Handle([&] { m_window.OpenSample(); }); };
    }
    actions.OpenSample = [this](const std::string& path) {
        m_desktop.Handle([&] { m_window.OpenFile(path); });
    };
    m_start = new StartPage(std::move(actions), m_window.Samples(), area);
    auto* emptyTable = new EmptyTablePage(
        [this] { m_desktop.Handle([&] { m_window.Execute(mcDefineCustomTable, 0); }); }, area);
    m_binder.Bind(static_cast<QWidget*>(emptyTable), m_window.panEmptyTable);
    m_failure = new FailurePage(
        [this] { m_desktop.Handle([&] { m_window.Execute(mcProperties, 0); }); }, area);
    for (QWidget* widget : {static_cast<QWidget*>(m_grid), static_cast<QWidget*>(m_report),
                            static_cast<QWidget*>(m_corner), static_cast<QWidget*>(m_chart),
                            static_cast<QWidget*>(m_start), static_cast<QWidget*>(m_failure),
                            static_cast<QWidget*>(emptyTable)}) {
        layout->addWidget(widget);
    }
    m_binder.Bind(static_cast<QWidget*>(m_start), m_window.panStart);
    m_binder.Bind(static_cast<QWidget*>(m_failure), m_window.panFailure);
    m_binder.OnShow([this] {
        const PictureBox& picture = m_window.picResults;
        m_report->setVisible(picture.Visible && !picture.Inverted);
        m_corner->setVisible(picture.Visible && picture.Inverted);
        m_corner->update();
    });
    m_binder.OnShow([this] {
        m_grid->setVisible(m_window.grdDisplay.Visible);
        if (m_window.grdDisplay.Visible) {
            m_grid->Refresh();
        }
    });
    return area;
}

void MainWindow::BuildStatusBar() {
    m_document = new QLabel(this);
    m_note = new QLabel(this);
    m_position = new QLabel(this);
    m_units = new QToolButton(this);
    m_units->setObjectName("stbUnits");
    m_units->setAutoRaise(true);
    m_units->setToolTip(tr("Units in force; a click opens the options"));
    connect(m_units, &QToolButton::clicked, this,
            [this] { m_desktop.Handle([&] { m_window.Execute(mcOptions, 0); }); });
    m_note->setIndent(16);
    statusBar()->addWidget(m_document);
    statusBar()->addWidget(m_note, 1);
    statusBar()->addPermanentWidget(m_position);
    statusBar()->addPermanentWidget(m_units);
}

void MainWindow::Refresh() {
    ShowMenus();
    m_binder.Show();
    m_report->Refresh(m_window.picResults);
    m_start->Refresh(m_window.mnuFMRU);
    m_failure->Refresh(m_window.panFailure.Caption, m_window.labFailurePlace);
    ShowStatus();
    setWindowTitle(QString::fromStdString(m_window.Caption).replace("[*]", "[*][*]") + "[*]");
    setWindowModified(m_desktop.Program().Data().Modified);
    GiveFocus();
}

void MainWindow::ShowMenus() {
    for (const MenuTie& tie : m_menuTies) {
        ShowAction(*tie.Action, *tie.Item);
        tie.Action->setChecked(tie.Item->Checked);
    }
    for (const auto& [action, place] : m_buttons) {
        const ToolButton& button = m_window.tbrMain[static_cast<std::size_t>(place)];
        action->setEnabled(button.Enabled);
        action->setChecked(button.Pressed);
    }
}

void MainWindow::ShowStatus() {
    const StatusBar& status = m_window.stbMain;
    SetTextOnce(m_document, QString::fromStdString(status.Document));
    SetTextOnce(m_note, QString::fromStdString(status.Note));
    SetTextOnce(m_position, QString::fromStdString(status.Position));
    SetTextOnce(m_units, QString::fromStdString(status.Units));
}

void MainWindow::GiveFocus() {
    if (QWidget* widget = m_binder.WidgetOf(m_window.Focus); widget != nullptr) {
        widget->setFocus();
    }
    m_window.Focus = nullptr; // given once; from here on it is the user's
}

void MainWindow::Step(QComboBox* box, int direction) {
    const int index = box->currentIndex() + direction;
    if (index >= 0 && index < box->count()) {
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
}

bool MainWindow::TakeKey(QKeyEvent* event) {
    static const QHash<int, MainKey> Keys{
        {Qt::Key_F1, MainKey::F1},     {Qt::Key_F5, MainKey::F5},
        {Qt::Key_Up, MainKey::Up},     {Qt::Key_Down, MainKey::Down},
        {Qt::Key_Left, MainKey::Left}, {Qt::Key_Right, MainKey::Right}};
    const auto found = Keys.find(event->key());
    if (found == Keys.end()) {
        return false;
    }
    const MainKey key = *found;
    const Qt::KeyboardModifiers pressed = event->modifiers();
    const KeyModifiers modifiers{pressed.testFlag(Qt::ShiftModifier),
                                 pressed.testFlag(Qt::ControlModifier),
                                 pressed.testFlag(Qt::AltModifier)};
    const bool plain = !modifiers.Shift && !modifiers.Ctrl && !modifiers.Alt;
    const bool arrow = plain && key != MainKey::F1 && key != MainKey::F5;
    bool swallowed = false;
    m_binder.Run(
        [&] { swallowed = m_window.KeyDown(key, modifiers, m_binder.ControlOf(focusWidget())); });
    if (arrow && !swallowed) {
        QComboBox* box = key == MainKey::Up || key == MainKey::Down ? m_wheel : m_rack;
        if (box->hasFocus() || focusWidget() == box) {
            Step(box, key == MainKey::Up || key == MainKey::Left ? -1 : 1);
            return true;
        }
    }
    return swallowed;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    const bool acts =
        event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
    if (acts && m_window.About.IsSplash) { // whoever has begun to work needs no greeting
        m_desktop.Handle([this] { m_window.TakeDownSplash(); });
    }
    if (event->type() == QEvent::KeyPress && watched->isWidgetType() &&
        QApplication::activePopupWidget() == nullptr &&
        QApplication::activeModalWidget() == nullptr) {
        auto* widget = static_cast<QWidget*>(watched);
        if (widget->window() == this && widget == focusWidget() &&
            TakeKey(static_cast<QKeyEvent*>(event))) {
            return true;
        }
        if (widget == this && focusWidget() == nullptr && TakeKey(static_cast<QKeyEvent*>(event))) {
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    bool closed = false;
    m_desktop.Handle([&] { closed = m_desktop.Program().CloseMainWindow(); });
    event->setAccepted(closed);
    if (closed) {
        QApplication::quit();
    }
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    RememberPlace(*this, m_window.Frame);
    if (!m_resizePending && isVisible()) {
        m_resizePending = true; // many sizes on the way, one refresh
        QTimer::singleShot(0, this, [this] {
            m_resizePending = false;
            m_desktop.Handle([&] { m_window.Resized(); });
        });
    }
}

void MainWindow::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    RememberPlace(*this, m_window.Frame);
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        RememberPlace(*this, m_window.Frame);
    }
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        QTimer::singleShot(0, this, [this] { // once the click that activated it is taken
            if (m_desktop.IsIdle() && QApplication::activeModalWidget() == nullptr &&
                m_window.Files.HasNewsOnDisk()) {
                m_desktop.Handle([this] { m_window.Activated(); });
            }
        });
    }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.constFirst().isLocalFile()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1) {
        event->acceptProposedAction();
        const std::string path = urls.constFirst().toLocalFile().toStdString();
        m_desktop.Handle([&] { m_window.OpenFile(path); });
    }
}

} // namespace corvanta
