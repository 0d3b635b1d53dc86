#pragma once

#include <QObject>
#include <QProxyStyle>

namespace corvanta {

/// What holds for every widget of the program, wherever it is made: a text is shown as it is
/// written, also one that looks like markup (the name of a file may), and the mouse wheel changes
/// no list that is closed, and a window that comes up lies on its screen with its frame. It watches
/// the events of the application as long as it lives.
class WidgetRules final : public QObject {
    Q_OBJECT

  public:
    WidgetRules();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    static void FitOnce(QWidget& window);
};

/// A style whose dialog buttons say what they do and carry no pictures.
class PlainButtonStyle final : public QProxyStyle {
    Q_OBJECT

  public:
    using QProxyStyle::QProxyStyle;

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace corvanta
