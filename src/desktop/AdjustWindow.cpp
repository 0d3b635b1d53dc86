#include "desktop/AdjustWindow.h"

#include "desktop/Desktop.h"
#include "desktop/DialogParts.h"
#include "desktop/Icons.h"
#include "desktop/NumberField.h"
#include "desktop/WindowPlaces.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>

namespace corvanta {

AdjustWindow::AdjustWindow(Desktop& desktop, frmAdjust& window)
    : QWidget(desktop.MainWidget(), Qt::Dialog),
      m_desktop(desktop),
      m_window(window),
      m_binder([&desktop](const auto& event) { desktop.Handle(event); }) {
    setObjectName("frmAdjust");
    setWindowTitle(QString::fromStdString(window.Caption));
    setWindowIcon(ThemedIcon("wrench2"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(BuildHeights());
    const auto addCheck = [&](CheckBox& check, const char* name) {
        auto* box = new QCheckBox(this);
        box->setObjectName(name);
        m_binder.Bind(box, check, [] {});
        layout->addWidget(box);
    };
    addCheck(window.chkAdjustRHByPushRodLength, "chkAdjustRHByPushRodLength");
    addCheck(window.chkMaintainCamber, "chkMaintainCamber");
    layout->addStretch(1);
    auto* buttons = new QDialogButtonBox(this);
    AddDialogButton(m_binder, *buttons, window.cmdOK, QDialogButtonBox::AcceptRole, "cmdOK",
                    [this] { m_window.cmdOK_Click(); });
    AddDialogButton(m_binder, *buttons, window.cmdCancel, QDialogButtonBox::RejectRole, "cmdCancel",
                    [this] { m_window.cmdCancel_Click(); });
    AddDialogButton(m_binder, *buttons, window.cmdApply, QDialogButtonBox::ApplyRole, "cmdApply",
                    [this] { m_window.cmdApply_Click(); })
        ->setDefault(true); // what Enter does
    AddDialogButton(m_binder, *buttons, window.cmdHelp, QDialogButtonBox::HelpRole, "cmdHelp",
                    [this] { m_window.cmdHelp_Click(); });
    layout->addWidget(buttons);
    AddHistoryKeys(m_desktop, *this);
    Refresh();
    PlaceWindow(*this, window.Frame, sizeHint(), false);
    show();
}

QWidget* AdjustWindow::BuildHeights() {
    auto* group = new QGroupBox(QString::fromStdString(m_window.fraStaticRideHeight.Caption), this);
    auto* grid = new QGridLayout(group);
    grid->setColumnStretch(3, 1);
    const auto addRow = [&](int row, const std::string& caption, QWidget* value,
                            const std::string& unit) {
        grid->addWidget(new QLabel(QString::fromStdString(caption), group), row, 0);
        grid->addWidget(value, row, 1);
        grid->addWidget(new QLabel(QString::fromStdString(unit), group), row, 2);
    };
    const auto shown = [&](const NumberLabel& number) {
        auto* label = new QLabel(group);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setToolTip(QString::fromStdString(number.ToolTip));
        m_binder.OnShow(
            [label, &number] { SetTextOnce(label, QString::fromStdString(number.Text)); });
        return label;
    };
    m_target = new NumberField(
        m_binder, m_window.txtTarget, [this] { m_window.txtTarget_Changed(); },
        [this] { m_window.txtTarget_LostFocus(); }, group);
    m_target->setObjectName("txtTarget");
    addRow(0, m_window.labCurrent.Caption, shown(m_window.labCurrent), m_window.labCurrent.Unit);
    addRow(1, m_window.txtTarget.Caption, m_target, m_window.txtTarget.Unit);
    addRow(2, m_window.labDifference.Caption, shown(m_window.labDifference),
           m_window.labDifference.Unit);
    return group;
}

void AdjustWindow::Refresh() {
    m_binder.Show();
    if (m_window.Focus == &m_window.txtTarget) {
        m_target->setFocus();
        if (m_window.txtTarget.Text == m_window.labCurrent.Text) {
            m_target->Begin(); // from the height that stands
        } else {
            m_target->selectAll();
        }
    }
    m_window.Focus = nullptr;
    if (m_window.Raise) {
        m_window.Raise = false;
        raise();
        activateWindow();
    }
}

void AdjustWindow::closeEvent(QCloseEvent* event) {
    if (m_window.IsOpen) {
        m_desktop.Handle([this] { m_window.cmdCancel_Click(); });
    }
    QWidget::closeEvent(event);
}

void AdjustWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        m_desktop.Handle([this] { m_window.cmdHelp_Click(); });
    } else if (event->key() == Qt::Key_Escape) {
        m_desktop.Handle([this] { m_window.cmdCancel_Click(); });
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* button = qobject_cast<QPushButton*>(focusWidget())) {
            button->click();
        } else {
            m_desktop.Handle([this] { m_window.cmdApply_Click(); });
        }
    } else {
        QWidget::keyPressEvent(event);
    }
}

void AdjustWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    RememberPlace(*this, m_window.Frame);
}

} // namespace corvanta
