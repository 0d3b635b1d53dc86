#pragma once

#include "platform/Controls.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QRadioButton>

#include <functional>
#include <vector>

class QAbstractButton;

namespace corvanta {

/// Ties the controls of a window to widgets: `Show` brings every control as it is now to its
/// widget, and what the user chooses goes into the control before its event is told. The controls
/// outlive the binder.
class Binder {
  public:
    /// Runs an event of the window and brings its outcome to the screen.
    using Handle = std::function<void(const std::function<void()>&)>;
    using Event = std::function<void()>;

    explicit Binder(Handle handle) : m_handle(std::move(handle)) {}
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;
    Binder(Binder&&) = delete;
    Binder& operator=(Binder&&) = delete;

    /// The widgets fall silent: what they still tell while they go away has nobody to hear it.
    ~Binder();

    void Bind(QLabel* label, const Control& control);
    void Bind(QComboBox* box, ListControl& list, Event changed);
    void Bind(QRadioButton* button, OptionButton& option, Event clicked);
    void Bind(QCheckBox* box, CheckBox& check, Event clicked);
    void Bind(QAbstractButton* button, const Control& control, Event clicked);

    /// Visible and enabled alone.
    void Bind(QWidget* widget, const Control& control);

    /// Whatever else follows a control.
    void OnShow(Event show) { m_show.push_back(std::move(show)); }

    void Show() const;

    /// The widget of a control, none when it is not bound.
    [[nodiscard]] QWidget* WidgetOf(const Control* control) const;

    /// The control of a widget or of one of its parents, none when there is none.
    [[nodiscard]] const Control* ControlOf(const QWidget* widget) const;

    /// Runs an event through the handle of the binder.
    void Run(const Event& event) const { m_handle(event); }

  private:
    struct Tie {
        QPointer<QWidget> Widget;
        const Control* Bound = nullptr;
    };

    void Remember(QWidget* widget, const Control& control);

    Handle m_handle;
    std::vector<Event> m_show;
    std::vector<Tie> m_ties;
};

/// Brings a caption, tooltip, visibility and state to an action. A text that shows a shortcut is
/// the toolkit's own work.
void ShowAction(QAction& action, const Control& control);

/// Sets a text only when it differs, so that nothing is laid out in vain.
template <typename Widget>
void SetTextOnce(Widget* widget, const QString& text) {
    if (widget->text() != text) {
        widget->setText(text);
    }
}

} // namespace corvanta
