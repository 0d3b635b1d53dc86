#include "desktop/PrintWindow.h"

#include "desktop/Desktop.h"
#include "desktop/PagePreview.h"

#include <QCloseEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace corvanta {

namespace {

/// Lets a click anywhere on a row turn its tick over, as one on its box does.
class WholeRowTick final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override {
        if (!event->isSinglePointEvent()) {
            return QStyledItemDelegate::editorEvent(event, model, option, index);
        }
        if (event->type() != QEvent::MouseButtonRelease ||
            static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) {
            return false;
        }
        const bool ticked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        return model->setData(index, ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }
};

} // namespace

PrintWindow::PrintWindow(Desktop& desktop, frmPrint& window)
    : ModalDialog(desktop, window, "frmPrint"),
      m_window(window),
      m_pages(new PagePreview(desktop.Pages(), this)) {
    constexpr int Margin = frmPrint::PageMargin / TwipsPerPixel;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->addWidget(BuildSettings());
    layout->addWidget(m_pages, 1);
    m_binder.Bind(static_cast<QWidget*>(m_pages), window.picPages);
    QDialogButtonBox* buttons = Foot(
        window.cmdOK, "cmdOK", [this] { m_window.cmdOK_Click(); }, window.cmdCancel,
        window.cmdHelp);
    AddButton(*buttons, window.cmdPreview, QDialogButtonBox::ActionRole, "cmdPreview",
              [this] { m_window.cmdPreview_Click(); });
    AddButton(*buttons, window.cmdSetup, QDialogButtonBox::ActionRole, "cmdSetup",
              [this] { m_window.cmdSetup_Click(); });
    layout->addWidget(buttons);
    ShowInPlace(false);
}

QWidget* PrintWindow::BuildSettings() {
    auto* settings = new QWidget(this);
    auto* layout = new QVBoxLayout(settings);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto addOption = [&](OptionButton& option, OptionButton& other, const char* name) {
        auto* button = new QRadioButton(settings);
        button->setObjectName(name);
        m_binder.Bind(button, option, [this, &other] {
            other.Selected = false;
            m_window.optPrint_Click();
        });
        layout->addWidget(button);
    };
    addOption(m_window.optPrintCurrent, m_window.optSelectedTables, "optPrintCurrent");
    addOption(m_window.optSelectedTables, m_window.optPrintCurrent, "optSelectedTables");
    auto* tables = new QListWidget(settings);
    tables->setObjectName("tvwTables");
    tables->setMinimumSize(320, 230);
    // The click turns the tick over by itself; the window does it again from the former state.
    BindCheckList(m_binder, tables, m_window.tvwTables, [this](int row) {
        CheckListRow& clicked = m_window.tvwTables.Rows[static_cast<std::size_t>(row)];
        clicked.Checked = !clicked.Checked;
        m_window.tvwTables_Click(row);
    });
    tables->setItemDelegate(new WholeRowTick(tables));
    layout->addWidget(tables, 1);
    const auto addCheck = [&](CheckBox& check, const char* name) {
        auto* box = new QCheckBox(settings);
        box->setObjectName(name);
        m_binder.Bind(box, check, [] {});
        layout->addWidget(box);
    };
    addCheck(m_window.chkPageThrow, "chkPageThrow");
    addCheck(m_window.chkChassisDetails, "chkChassisDetails");
    addCheck(m_window.chkPrintCoordinates, "chkPrintCoordinates");
    m_binder.OnShow([this, settings] { settings->setVisible(!m_window.picPages.Visible); });
    return settings;
}

void PrintWindow::Refresh() {
    m_binder.Show();
    if (m_preview != m_window.picPages.Visible) {
        m_preview = m_window.picPages.Visible;
        const WindowPlacement place = m_window.Frame.Placement; // what resizing changes
        layout()->activate();
        resize(place.Width / TwipsPerPixel, place.Height / TwipsPerPixel);
        move(place.Left / TwipsPerPixel, place.Top / TwipsPerPixel);
        m_pages->Refresh();
    }
}

void PrintWindow::done(int result) {
    if (m_window.picPages.Visible) {
        m_desktop.Handle([this] { m_window.cmdCancel_Click(); }); // back to the settings
        return;
    }
    ModalDialog::done(result);
}

void PrintWindow::closeEvent(QCloseEvent* event) {
    event->ignore(); // what the close box does is told to `done`
    reject();
}

} // namespace corvanta
