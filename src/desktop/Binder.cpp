#include "desktop/Binder.h"

#include <QAbstractButton>
#include <QSignalBlocker>

namespace corvanta {

namespace {

QString Caption(const Control& control) {
    return QString::fromStdString(control.Caption);
}

void ShowState(QWidget* widget, const Control& control) {
    if (widget->isVisibleTo(widget->parentWidget()) != control.Visible) {
        widget->setVisible(control.Visible);
    }
    if (widget->isEnabledTo(widget->parentWidget()) != control.Enabled) {
        widget->setEnabled(control.Enabled);
    }
    const QString toolTip = QString::fromStdString(control.ToolTip);
    if (!toolTip.isEmpty() && widget->toolTip() != toolTip) {
        widget->setToolTip(toolTip);
    }
}

bool SameEntries(const QComboBox& box, const ListControl& list) {
    if (box.count() != list.Count()) {
        return false;
    }
    for (int n = 0; n < list.Count(); ++n) {
        if (box.itemText(n) != QString::fromStdString(list.Entry(n).Text)) {
            return false;
        }
    }
    return true;
}

void ShowList(QComboBox* box, const ListControl& list) {
    const QSignalBlocker quiet(box);
    if (!SameEntries(*box, list)) {
        QStringList texts;
        for (const ListEntry& entry : list.Entries()) {
            texts << QString::fromStdString(entry.Text);
        }
        box->clear();
        box->addItems(texts);
    }
    if (box->currentIndex() != list.Index()) {
        box->setCurrentIndex(list.Index());
    }
    ShowState(box, list);
}

} // namespace

Binder::~Binder() {
    for (const Tie& tie : m_ties) {
        if (tie.Widget) {
            tie.Widget->blockSignals(true);
        }
    }
}

void Binder::Remember(QWidget* widget, const Control& control) {
    m_ties.push_back({widget, &control});
}

void Binder::Bind(QWidget* widget, const Control& control) {
    Remember(widget, control);
    m_show.emplace_back([widget, &control] { ShowState(widget, control); });
}

void Binder::Bind(QLabel* label, const Control& control) {
    Bind(static_cast<QWidget*>(label), control);
    m_show.emplace_back([label, &control] { SetTextOnce(label, Caption(control)); });
}

void Binder::Bind(QComboBox* box, ListControl& list, Event changed) {
    Remember(box, list);
    m_show.emplace_back([box, &list] { ShowList(box, list); });
    QObject::connect(box, &QComboBox::activated, box,
                     [this, &list, changed = std::move(changed)](int index) {
                         Run([&] {
                             list.Select(index);
                             changed();
                         });
                     });
}

void Binder::Bind(QRadioButton* button, OptionButton& option, Event clicked) {
    Bind(static_cast<QWidget*>(button), option);
    m_show.emplace_back([button, &option] {
        const QSignalBlocker quiet(button);
        SetTextOnce(button, Caption(option));
        button->setAutoExclusive(option.Selected);
        button->setChecked(option.Selected);
        button->setAutoExclusive(true);
    });
    QObject::connect(button, &QRadioButton::clicked, button,
                     [this, &option, clicked = std::move(clicked)] {
                         Run([&] {
                             option.Selected = true;
                             clicked();
                         });
                     });
}

void Binder::Bind(QCheckBox* box, CheckBox& check, Event clicked) {
    Bind(static_cast<QWidget*>(box), check);
    m_show.emplace_back([box, &check] {
        const QSignalBlocker quiet(box);
        SetTextOnce(box, Caption(check));
        box->setChecked(check.Checked);
    });
    QObject::connect(box, &QCheckBox::clicked, box,
                     [this, &check, clicked = std::move(clicked)](bool checked) {
                         Run([&] {
                             check.Checked = checked;
                             clicked();
                         });
                     });
}

void Binder::Bind(QAbstractButton* button, const Control& control, Event clicked) {
    Bind(static_cast<QWidget*>(button), control);
    m_show.emplace_back([button, &control] { SetTextOnce(button, Caption(control)); });
    QObject::connect(button, &QAbstractButton::clicked, button,
                     [this, clicked = std::move(clicked)] { Run(clicked); });
}

void Binder::Show() const {
    for (const Event& show : m_show) {
        show();
    }
}

QWidget* Binder::WidgetOf(const Control* control) const {
    for (const Tie& tie : m_ties) {
        if (tie.Bound == control) {
            return tie.Widget;
        }
    }
    return nullptr;
}

const Control* Binder::ControlOf(const QWidget* widget) const {
    for (const Tie& tie : m_ties) {
        if (widget != nullptr && (tie.Widget == widget || tie.Widget->isAncestorOf(widget))) {
            return tie.Bound;
        }
    }
    return nullptr;
}

void ShowAction(QAction& action, const Control& control) {
    const QString caption = Caption(control);
    if (!action.isSeparator() && !caption.isEmpty() && action.text() != caption) {
        action.setText(caption);
    }
    action.setToolTip(QString::fromStdString(control.ToolTip));
    action.setVisible(control.Visible);
    action.setEnabled(control.Enabled);
}

} // namespace corvanta
