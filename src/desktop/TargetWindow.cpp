#include "desktop/TargetWindow.h"

#include "desktop/NumberField.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta {

TargetWindow::TargetWindow(Desktop& desktop, frmTarget& window)
    : ModalDialog(desktop, window, "frmTarget"),
      m_window(window) {
    auto* layout = new QVBoxLayout(this);
    auto* curve = new QLabel(this);
    QFont bold = curve->font();
    bold.setBold(true);
    curve->setFont(bold);
    m_binder.Bind(curve, window.labCurve);
    layout->addWidget(curve);
    auto* band = new QLabel(this);
    band->setObjectName("labBand");
    band->setWordWrap(true);
    m_binder.Bind(band, window.labBand);
    layout->addWidget(band);
    auto* replace = new QCheckBox(this);
    replace->setObjectName("chkReplace");
    m_binder.Bind(replace, window.chkReplace, [this] { m_window.chkReplace_Click(); });
    layout->addWidget(replace);
    layout->addWidget(BuildFields());
    layout->addStretch(1);
    QDialogButtonBox* buttons = Foot(
        window.cmdOK, "cmdOK", [this] { m_window.cmdOK_Click(); }, window.cmdCancel,
        window.cmdHelp);
    AddButton(*buttons, window.cmdRemove, QDialogButtonBox::DestructiveRole, "cmdRemove", [this] {
        m_window.cmdRemove_Click();
    })->setAutoDefault(false);
    layout->addWidget(buttons);
    Refresh();
    ShowInPlace(false);
}

QWidget* TargetWindow::BuildFields() {
    auto* fields = new QWidget(this);
    auto* grid = new QGridLayout(fields);
    grid->setContentsMargins({});
    grid->setColumnStretch(3, 1);
    const auto add = [&](NumberBox& box, const char* name) {
        const int row = grid->rowCount();
        auto* label = new QLabel(QString::fromStdString(box.Caption), fields);
        auto* field = new NumberField(
            m_binder, box, [this, &box] { m_window.NumberBox_Changed(box); },
            [this, &box] { m_window.NumberBox_LostFocus(box); }, fields);
        field->setObjectName(name);
        label->setBuddy(field);
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row, 1);
        grid->addWidget(new QLabel(QString::fromStdString(box.Unit), fields), row, 2);
    };
    add(m_window.txtValue, "txtValue");
    add(m_window.txtTolerance, "txtTolerance");
    add(m_window.txtFrom, "txtFrom");
    add(m_window.txtTo, "txtTo");
    add(m_window.txtWeight, "txtWeight");
    return fields;
}

void TargetWindow::Refresh() {
    m_binder.Show();
    if (QWidget* const widget = m_binder.WidgetOf(m_window.Focus); widget != nullptr) {
        widget->setFocus();
    }
    m_window.Focus = nullptr;
}

} // namespace corvanta
