#pragma once

#include <QObject>

namespace corvanta {

/// What holds for every widget of the program, wherever it is made: a text is shown as it is
/// written, also one that looks like markup (the name of a file may), and the mouse wheel changes
/// no list that is closed. It watches the events of the application as long as it lives.
class WidgetRules final : public QObject {
    Q_OBJECT

  public:
    WidgetRules();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace corvanta
