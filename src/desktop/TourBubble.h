#pragma once

#include "desktop/Binder.h"
#include "shell/WorkbenchTour.h"

#include <QPointer>
#include <QWidget>

class QLabel;
class QPushButton;

namespace corvanta {

/// The tour of the workbench on the screen: a bubble beside the part that it speaks of, which has
/// an outline. It lies upon the window and takes no event of it, so that all can be tried while it
/// stands there. Enter goes on, Esc leaves.
class TourBubble final : public QWidget {
    Q_OBJECT

  public:
    TourBubble(Binder& binder, CWorkbenchTour& tour, QWidget* window);

    /// Shows the step of the tour beside its part, or hides; `visible` is false while there is
    /// nothing to speak of.
    void Refresh(QWidget* part, bool visible);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class Side { None, Left, Right, Above };

    QPushButton* Button(const Control& control, const char* name, Binder::Event clicked);
    void Follow(QWidget* part);
    void Place();

    Binder& m_binder;
    CWorkbenchTour& m_tour;
    QWidget* m_outline;
    QLabel* m_title;
    QLabel* m_text;
    QPushButton* m_next;
    QPointer<QWidget> m_part;
    QPointer<QWidget> m_before; ///< had the keyboard when the tour came
    Side m_side = Side::None;   ///< of the part on which it stands
    int m_tip = 0;              ///< along the side that is next to the part
};

} // namespace corvanta
