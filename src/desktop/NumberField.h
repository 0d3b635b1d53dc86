#pragma once

#include "desktop/Binder.h"

#include <QLineEdit>

namespace corvanta {

/// A field for a number: focus selects all of it, Escape restores what stood when it came (and is
/// the window's where that stands), and a text that is no number shows as a fault at once.
class NumberField final : public QLineEdit {
    Q_OBJECT

  public:
    /// `typed` is the event of each keystroke, `left` that of the end of typing.
    NumberField(Binder& binder, NumberBox& box, Binder::Event typed, Binder::Event left,
                QWidget* parent);

    /// What stands now is what Escape restores, and is selected, as when the focus comes.
    void Begin();

  protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void ShowBox();

    const Binder& m_binder;
    NumberBox& m_box;
    Binder::Event m_typed;
    QString m_former; ///< the text when the focus came
};

} // namespace corvanta
