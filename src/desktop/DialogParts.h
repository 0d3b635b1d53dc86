#pragma once

#include "desktop/Binder.h"
#include "desktop/QtServices.h"
#include "shell/Desk.h"

#include <QDialog>
#include <QDialogButtonBox>

class QListWidget;

namespace corvanta {

class Desktop;

/// What the modal dialogs of the program share: the place on the screen, the help key, closing by
/// the title bar as by "Cancel".
class ModalDialog : public QDialog {
    Q_OBJECT

  public:
    ModalDialog(Desktop& desktop, Window& window, const char* name);

  protected:
    /// The dialog's own answer to its title bar and to the Escape key.
    virtual void Cancel() = 0;
    virtual void Help() = 0;

    /// A button with its control at the foot of the dialog.
    QPushButton* AddButton(QDialogButtonBox& buttons, const Control& control,
                           QDialogButtonBox::ButtonRole role, const char* name,
                           Binder::Event clicked);

    /// The foot of the dialog: the default button, "Cancel" and "Help".
    QDialogButtonBox* Foot(const Control& accept, const char* name, Binder::Event accepted,
                           const Control& cancel, const Control& help);

    /// Puts the dialog where its window stands and shows it.
    void ShowInPlace(bool sized);

    Desktop& m_desktop;
    Binder m_binder;

    void done(int result) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    Window& m_frameOf;
};

/// Adds a button with its control to the foot of a window.
QPushButton* AddDialogButton(Binder& binder, QDialogButtonBox& buttons, const Control& control,
                             QDialogButtonBox::ButtonRole role, const char* name,
                             Binder::Event clicked);

/// Ties a check list to a list with boxes, which a click anywhere on their rows ticks: `ticked` is
/// told the row once its tick has changed.
void BindCheckList(Binder& binder, QListWidget* shown, CheckList& list,
                   std::function<void(int row)> ticked);

/// The keys of undo and redo in a window beside the main window. What is being typed is ended by
/// `commit` before.
void AddHistoryKeys(
    Desktop& desktop, QWidget& window, const Binder::Event& commit = [] {});

} // namespace corvanta
