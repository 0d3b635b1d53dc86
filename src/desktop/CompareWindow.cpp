#include "desktop/CompareWindow.h"

#include "desktop/Desktop.h"
#include "desktop/DialogParts.h"
#include "desktop/GridView.h"
#include "desktop/Icons.h"
#include "desktop/WindowPlaces.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta {

namespace {

constexpr int DesignsHeight = 96; ///< of their list: four rows, more are scrolled to
constexpr int MostColumn = 150;   ///< width of a design, whatever its description says

} // namespace

CompareWindow::CompareWindow(Desktop& desktop, frmCompare& window)
    : QWidget(desktop.OwnerOfNew(), Qt::Dialog | Qt::WindowMinMaxButtonsHint),
      m_desktop(desktop),
      m_window(window),
      m_binder([&desktop](const auto& event) { desktop.Handle(event); }) {
    setObjectName("frmCompare");
    setWindowTitle(QString::fromStdString(window.Caption));
    setWindowIcon(ThemedIcon("customtable"));
    PlaceWindow(*this, window.Frame);
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(this);
    m_binder.Bind(label, window.labDesigns);
    layout->addWidget(label);
    QWidget* const designs = BuildDesigns();
    label->setBuddy(designs);
    layout->addWidget(designs);
    auto* note = new QLabel(this);
    note->setObjectName("labNote");
    note->setWordWrap(true);
    m_binder.Bind(note, window.labNote);
    layout->addWidget(note);
    m_table = new GridView(window.grdCompare, this);
    m_table->setObjectName("grdCompare");
    m_table->BoundColumns(MostColumn);
    layout->addWidget(m_table, 1);
    layout->addWidget(BuildButtons());
    AddHistoryKeys(m_desktop, *this);
    Refresh();
    window.Frame.IsMaximised ? showMaximized() : show();
}

QWidget* CompareWindow::BuildDesigns() {
    auto* designs = new QListWidget(this);
    designs->setObjectName("lstDesigns");
    designs->setFixedHeight(DesignsHeight);
    BindCheckList(m_binder, designs, m_window.lstDesigns,
                  [this](int) { m_window.lstDesigns_Click(); });
    return designs;
}

QWidget* CompareWindow::BuildButtons() {
    auto* buttons = new QDialogButtonBox(this);
    const auto add = [&](const Control& control, QDialogButtonBox::ButtonRole role,
                         const char* name, Binder::Event clicked) {
        AddDialogButton(m_binder, *buttons, control, role, name, std::move(clicked))
            ->setAutoDefault(false);
    };
    add(m_window.cmdCopy, QDialogButtonBox::ActionRole, "cmdCopy",
        [this] { m_window.cmdCopy_Click(); });
    add(m_window.cmdSave, QDialogButtonBox::ActionRole, "cmdSave",
        [this] { m_window.cmdSave_Click(); });
    add(m_window.cmdClose, QDialogButtonBox::RejectRole, "cmdClose",
        [this] { m_window.cmdClose_Click(); });
    add(m_window.cmdHelp, QDialogButtonBox::HelpRole, "cmdHelp",
        [this] { m_window.cmdHelp_Click(); });
    auto* foot = new QWidget(this);
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(0, 0, 0, 0);
    auto* status = new QLabel(foot);
    m_binder.Bind(status, m_window.labStatus);
    row->addWidget(status);
    row->addWidget(buttons, 1);
    return foot;
}

void CompareWindow::Refresh() {
    m_binder.Show();
    m_table->Refresh();
    if (m_window.Raise) {
        m_window.Raise = false;
        if (QWidget* const owner = m_desktop.OwnerOfNew(); owner != parentWidget()) {
            setParent(owner, windowFlags());
            show();
        }
        raise();
        activateWindow();
    }
}

void CompareWindow::closeEvent(QCloseEvent* event) {
    if (m_window.IsOpen) {
        m_desktop.Handle([this] { m_window.cmdClose_Click(); });
    }
    QWidget::closeEvent(event);
}

void CompareWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        m_desktop.Handle([this] { m_window.cmdHelp_Click(); });
    } else if (event->key() == Qt::Key_Escape) {
        m_desktop.Handle([this] { m_window.cmdClose_Click(); });
    } else {
        QWidget::keyPressEvent(event);
    }
}

void CompareWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    RememberPlace(*this, m_window.Frame);
}

void CompareWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    RememberPlace(*this, m_window.Frame);
}

void CompareWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        RememberPlace(*this, m_window.Frame);
    }
}

} // namespace corvanta
