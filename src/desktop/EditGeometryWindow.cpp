#include "desktop/EditGeometryWindow.h"

#include "desktop/ChartSheetView.h"
#include "desktop/Desktop.h"
#include "desktop/DialogParts.h"
#include "desktop/DrawingView.h"
#include "desktop/GridView.h"
#include "desktop/Guard.h"
#include "desktop/Icons.h"
#include "desktop/NumberField.h"
#include "desktop/WindowPlaces.h"
#include "results/MDisplay3d.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta {

namespace {

constexpr int PageMargin = 16;
constexpr double DrawingPen = 1.6;
constexpr int PreviewHeight = 230; ///< of the chart below the drawing, pixels

QVBoxLayout* PageLayout(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    layout->setSpacing(PageMargin);
    return layout;
}

} // namespace

EditGeometryWindow::EditGeometryWindow(Desktop& desktop, frmEditGeometry& window)
    // A dialog stays above the window that owns it; this one can be maximised as well.
    : QWidget(desktop.MainWidget(), Qt::Dialog | Qt::WindowMinMaxButtonsHint),
      m_desktop(desktop),
      m_window(window),
      m_binder([&desktop](const auto& event) { desktop.Handle(event); }) {
    setObjectName("frmEditGeometry");
    setWindowTitle(QString::fromStdString(window.Caption));
    setWindowIcon(ThemedIcon("properties"));
    PlaceWindow(*this, window.Frame);
    auto* layout = new QVBoxLayout(this);
    m_pages = new QTabWidget(this);
    const std::vector<QWidget*> pages{BuildTypePage(),
                                      BuildPointsPage(),
                                      BuildTravelPage(),
                                      BuildFramesPage({&window.fraChassis, &window.fraRates}),
                                      BuildFramesPage({&window.fraLinkLoads, &window.fraDynamics}),
                                      BuildDescriptionPage()};
    for (std::size_t n = 0; n < pages.size(); ++n) {
        m_pages->addTab(pages[n], QString::fromStdString(window.Pages.at(n)));
    }
    connect(m_pages, &QTabWidget::currentChanged, this,
            [this](int page) { m_desktop.Handle([&] { m_window.tabPages_Changed(page); }); });
    layout->addWidget(m_pages, 1);
    layout->addWidget(BuildButtons());
    auto* save = new QShortcut(QKeySequence::Save, this);
    connect(save, &QShortcut::activated, this, [this] {
        m_points->CommitTyping();
        m_desktop.Handle([this] { m_desktop.Main().Execute(mcSave, 0); });
    });
    AddHistoryKeys(m_desktop, *this, [this] { m_points->CommitTyping(); });
    Refresh();
    KeepKeysOfFoot();
    window.Frame.IsMaximised ? showMaximized() : show();
}

/// A letter that a button below the pages shares with one on a page is the former's alone: shared,
/// it would press neither.
void EditGeometryWindow::KeepKeysOfFoot() {
    const auto* const foot = findChild<QDialogButtonBox*>();
    const QList<QAbstractButton*> onPages = m_pages->findChildren<QAbstractButton*>();
    for (const QAbstractButton* const button : foot->buttons()) {
        for (QAbstractButton* const other : onPages) {
            if (other->shortcut() == button->shortcut()) {
                other->setShortcut({});
            }
        }
    }
}

QWidget* EditGeometryWindow::Button(const Control& control, const char* name, const char* icon,
                                    Binder::Event clicked) {
    auto* button = new QPushButton(this);
    button->setObjectName(name);
    if (icon != nullptr) {
        button->setIcon(ThemedIcon(icon));
    }
    m_binder.Bind(button, control, [this, clicked = std::move(clicked)] {
        m_points->CommitTyping(); // an access key leaves the cell open
        clicked();
    });
    return button;
}

QWidget* EditGeometryWindow::BuildTypePage() {
    auto* page = new QWidget(this);
    auto* columns = new QHBoxLayout(page);
    columns->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    columns->setSpacing(PageMargin);
    auto* lists = new QVBoxLayout;
    const auto add = [&](const Control& label, ListControl& list, const char* name,
                         Binder::Event changed) {
        auto* caption = new QLabel(page);
        m_binder.Bind(caption, label);
        auto* box = new QComboBox(page);
        box->setObjectName(name);
        box->setMinimumWidth(380);
        m_binder.Bind(box, list, std::move(changed));
        caption->setBuddy(box);
        lists->addWidget(caption);
        lists->addWidget(box);
        lists->addSpacing(8);
    };
    add(m_window.labSpringMechanism, m_window.cboSpringMechanism, "cboSpringMechanism",
        [this] { m_window.cboSpringMechanism_Changed(); });
    add(m_window.labSpringSystem, m_window.cboSpringSystem, "cboSpringSystem",
        [this] { m_window.cboSpringSystem_Changed(); });
    add(m_window.labCentreSpringSystem, m_window.cboCentreSpringSystem, "cboCentreSpringSystem",
        [] {});
    add(m_window.labARB, m_window.cboARB, "cboARB", [this] { m_window.cboARB_Changed(); });
    auto* driveshaft = new QCheckBox(page);
    driveshaft->setObjectName("chkDriveshaft");
    m_binder.Bind(driveshaft, m_window.chkDriveshaft, [] {});
    lists->addWidget(driveshaft);
    lists->addStretch(1);
    columns->addLayout(lists);
    m_typeDrawing = new DrawingView(Qt::black, DrawingPen, page);
    columns->addWidget(m_typeDrawing, 1);
    return page;
}

QWidget* EditGeometryWindow::BuildPointsPage() {
    auto* page = m_pointsPage = new QSplitter(Qt::Horizontal, this);
    page->addWidget(BuildPointsTable());
    page->addWidget(BuildPointsDrawing());
    page->setStretchFactor(0, 0);
    page->setStretchFactor(1, 1); // the table has all it needs; more room is the drawing's
    page->setChildrenCollapsible(false);
    connect(page, &QSplitter::splitterMoved, this, [this](int tableWidth) {
        m_window.TableWidth = tableWidth * TwipsPerPixel;
        m_fittedWidth = tableWidth;
        ShowDrawings();
    });
    m_points->Refresh();
    FitPointsTable();
    return page;
}

/// Gives the table what the user chose, or what its points need: another mechanism has other names.
void EditGeometryWindow::FitPointsTable() {
    const QMargins margins = m_pointsPage->widget(0)->layout()->contentsMargins();
    const int needed = m_window.TableWidth > 0
                           ? m_window.TableWidth / TwipsPerPixel
                           : m_points->NeededWidth() + margins.left() + margins.right();
    if (needed != m_fittedWidth) {
        m_fittedWidth = needed;
        m_pointsPage->setSizes({needed, std::max(1, width() - needed)});
    }
}

QWidget* EditGeometryWindow::BuildPointsTable() {
    auto* left = new QWidget(this);
    auto* layout = new QVBoxLayout(left);
    m_points = new GridView(m_window.grdPoints, left);
    m_points->setObjectName("grdPoints");
    ConnectTable();
    layout->addWidget(m_points, 1);
    auto* notes = new QLabel(left);
    notes->setObjectName("labPointNotes");
    notes->setWordWrap(true);
    m_binder.Bind(notes, m_window.labPointNotes);
    layout->addWidget(notes);
    auto* row = new QHBoxLayout;
    row->addWidget(
        Button(m_window.cmdCopy, "cmdCopy", "copy", [this] { m_window.cmdCopy_Click(); }));
    row->addWidget(
        Button(m_window.cmdPaste, "cmdPaste", "paste", [this] { m_window.cmdPaste_Click(); }));
    auto* status = new QLabel(left);
    status->setObjectName("labStatus");
    m_binder.Bind(status, m_window.labStatus);
    row->addWidget(status, 1);
    layout->addLayout(row);
    return left;
}

void EditGeometryWindow::ConnectTable() {
    m_points->Model().OnTyped([this](int row, int column, const std::string& text) {
        m_desktop.Handle([&] { m_window.grdPoints_Edited(row, column, text); });
    });
    m_points->OnTyping(
        [this](int row, int column, const std::string& text) {
            m_desktop.Handle([&] { m_window.grdPoints_Typing(row, column, text); });
        },
        [this] { m_desktop.Handle([this] { m_window.grdPoints_TypingEnded(); }); });
    m_points->Model().OnToolTip([this](int row, int column) {
        return QString::fromStdString(m_window.grdPoints_ToolTip(row, column));
    });
    m_points->OnPaste([this] { m_desktop.Handle([this] { m_window.grdPoints_Paste(); }); });
    connect(m_points->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { ShowDrawings(); });
    connect(m_points->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &EditGeometryWindow::RememberSelection);
}

/// The drawing above, the chart below it, which can be dragged away.
QWidget* EditGeometryWindow::BuildPointsDrawing() {
    auto* right = new QSplitter(Qt::Vertical, this);
    right->setObjectName("splPreview");
    m_pointsDrawing = new DrawingView(Qt::black, DrawingPen, right);
    right->addWidget(m_pointsDrawing);
    right->addWidget(BuildPreview());
    right->setCollapsible(0, false);
    right->setStretchFactor(0, 1);
    right->setStretchFactor(1, 0);
    CurvePreview& preview = m_window.Preview;
    const int wanted = preview.Height > 0 ? preview.Height / TwipsPerPixel : PreviewHeight;
    const int chart = preview.Hidden ? 0 : wanted;
    right->setSizes({std::max(1, height() - chart), chart});
    connect(right, &QSplitter::splitterMoved, this, [this, right] {
        m_desktop.Handle([this, right] {
            const int height = right->sizes().at(1);
            m_window.Preview.Hidden = height == 0;
            m_window.Preview.Height = height > 0 ? height * TwipsPerPixel : m_window.Preview.Height;
            m_window.cboPreviewChannel_Changed();
        });
    });
    return right;
}

QWidget* EditGeometryWindow::BuildPreview() {
    auto* panel = new QWidget(this);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* channels = new QComboBox(panel);
    channels->setObjectName("cboPreviewChannel");
    channels->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_binder.Bind(channels, m_window.Preview.cboChannel,
                  [this] { m_window.cboPreviewChannel_Changed(); });
    layout->addWidget(channels);
    auto* fault = new QLabel(panel);
    fault->setObjectName("labPreviewFault");
    fault->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // one line, however long
    m_binder.Bind(fault, m_window.Preview.labFault);
    layout->addWidget(fault);
    const auto hovered = [this](std::optional<ChartPoint> place) {
        Guarded(m_desktop.Program().MessageService(), [&] {
            m_window.Preview.Hover(place);
            m_preview->Show(m_window.Preview.Sheet());
        });
    };
    m_preview = new ChartSheetView({hovered, {}, {}}, panel);
    layout->addWidget(m_preview, 1);
    return panel;
}

QWidget* EditGeometryWindow::Frame(FieldFrame& frame) {
    auto* group = new QGroupBox(QString::fromStdString(frame.Caption), this);
    auto* grid = new QGridLayout(group);
    grid->setColumnStretch(3, 1);
    int row = 0;
    const auto addWide = [&](const Control& control) {
        auto* label = new QLabel(group);
        label->setWordWrap(true);
        m_binder.Bind(label, control);
        grid->addWidget(label, row++, 0, 1, 4);
    };
    if (&frame == &m_window.fraSuspensionTravel) {
        auto* label = new QLabel(group);
        m_binder.Bind(label, m_window.labMotionType);
        grid->addWidget(label, row, 0);
        auto* choices = new QHBoxLayout;
        const auto add = [&](OptionButton& option, OptionButton& other, const char* name) {
            auto* button = new QRadioButton(group);
            button->setObjectName(name);
            m_binder.Bind(button, option, [&other] { other.Selected = false; });
            choices->addWidget(button);
        };
        add(m_window.optRoll, m_window.optHeave, "optRoll");
        add(m_window.optHeave, m_window.optRoll, "optHeave");
        grid->addLayout(choices, row++, 1, 1, 3, Qt::AlignLeft);
    }
    if (&frame == &m_window.fraLinkLoads) {
        addWide(m_window.labLinkLoads);
    }
    for (NumberBox* box : frame.Boxes) {
        auto* label = new QLabel(QString::fromStdString(box->Caption), group);
        auto* field = new NumberField(
            m_binder, *box, [this, box] { m_window.NumberBox_Changed(*box); },
            [this, box] { m_window.NumberBox_LostFocus(*box); }, group);
        field->setAccessibleName(label->text());
        label->setBuddy(field);
        auto* unit = new QLabel(group);
        m_binder.OnShow([unit, box] { SetTextOnce(unit, QString::fromStdString(box->Unit)); });
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row, 1);
        grid->addWidget(unit, row++, 2);
    }
    if (&frame == &m_window.fraLinkLoads) {
        addWide(m_window.labLinkLoadsNote);
    }
    return group;
}

QWidget* EditGeometryWindow::BuildFramesPage(const std::vector<FieldFrame*>& frames) {
    auto* page = new QWidget(this);
    QVBoxLayout* layout = PageLayout(page);
    int labelWidth = 0;
    for (FieldFrame* frame : frames) {
        layout->addWidget(Frame(*frame));
        for (const NumberBox* box : frame->Boxes) {
            labelWidth = std::max(
                labelWidth, fontMetrics().horizontalAdvance(QString::fromStdString(box->Caption)));
        }
    }
    // The frames of a page share their columns.
    for (QGridLayout* grid : page->findChildren<QGridLayout*>()) {
        grid->setColumnMinimumWidth(0, labelWidth);
    }
    layout->addStretch(1);
    return page;
}

QWidget* EditGeometryWindow::BuildTravelPage() {
    QWidget* page = BuildFramesPage({&m_window.fraSuspensionTravel, &m_window.fraRackTravel});
    auto* summary = new QLabel(page);
    summary->setObjectName("labTravelSummary");
    summary->setWordWrap(true);
    m_binder.Bind(summary, m_window.labTravelSummary);
    auto* layout = static_cast<QVBoxLayout*>(page->layout());
    layout->insertWidget(layout->count() - 1, summary);
    return page;
}

QWidget* EditGeometryWindow::BuildDescriptionPage() {
    auto* page = new QWidget(this);
    QVBoxLayout* layout = PageLayout(page);
    m_description = new QPlainTextEdit(page);
    m_description->setObjectName("txtDescription");
    m_description->setTabChangesFocus(true);
    connect(m_description, &QPlainTextEdit::textChanged, this, [this] {
        m_desktop.Handle([this] {
            m_window.txtDescription.Text = m_description->toPlainText().toStdString();
            m_window.txtDescription_Changed();
        });
    });
    layout->addWidget(m_description, 1);
    auto* note = new QLabel(page);
    note->setWordWrap(true);
    m_binder.Bind(note, m_window.labDescriptionNote);
    layout->addWidget(note);
    return page;
}

QWidget* EditGeometryWindow::BuildButtons() {
    auto* buttons = new QDialogButtonBox(this);
    const auto add = [&](const Control& control, QDialogButtonBox::ButtonRole role,
                         const char* name, Binder::Event clicked) {
        AddDialogButton(m_binder, *buttons, control, role, name,
                        [this, clicked = std::move(clicked)] {
                            m_points->CommitTyping(); // an access key leaves the cell open
                            clicked();
                        })
            ->setAutoDefault(false);
    };
    add(m_window.cmdOK, QDialogButtonBox::AcceptRole, "cmdOK", [this] { m_window.cmdOK_Click(); });
    add(m_window.cmdCancel, QDialogButtonBox::RejectRole, "cmdCancel",
        [this] { m_window.cmdCancel_Click(); });
    add(m_window.cmdApply, QDialogButtonBox::ApplyRole, "cmdApply",
        [this] { m_window.cmdApply_Click(); });
    add(m_window.cmdHelp, QDialogButtonBox::HelpRole, "cmdHelp",
        [this] { m_window.cmdHelp_Click(); });
    return buttons;
}

void EditGeometryWindow::Refresh() {
    m_binder.Show();
    {
        const QSignalBlocker quiet(m_pages);
        m_pages->setCurrentIndex(m_window.Page);
    }
    ShowPoints();
    const QString description = QString::fromStdString(m_window.txtDescription.Text)
                                    .replace("\r\n", "\n")
                                    .replace('\r', '\n');
    if (m_description->toPlainText() != description) {
        const QSignalBlocker quiet(m_description);
        m_description->setPlainText(description);
    }
    ShowDrawings();
    GiveFocus();
    if (m_window.Raise) {
        m_window.Raise = false;
        raise();
        activateWindow();
    }
}

void EditGeometryWindow::ShowPoints() {
    m_points->Refresh();
    FitPointsTable();
    if (m_window.grdPointsSelection != m_shownSelection) {
        m_shownSelection = m_window.grdPointsSelection;
        m_points->SelectRange(m_shownSelection);
    }
}

void EditGeometryWindow::RememberSelection() {
    if (const std::optional<CellRange> range = m_points->SelectedRange()) {
        m_window.grdPointsSelection = m_shownSelection = *range;
    }
}

void EditGeometryWindow::ShowDrawings() {
    // Only the drawing in sight; the other one follows when its page is turned to.
    Guarded(m_desktop.Program().MessageService(), [this] {
        if (m_window.Page == pgType) {
            Draw(*m_typeDrawing, m_window.Example(), std::nullopt);
        } else if (m_window.Page == pgStaticPoints) {
            const QModelIndex current = m_points->currentIndex();
            Draw(*m_pointsDrawing, m_window.Draft(),
                 current.isValid() ? m_window.PointAtRow(m_points->Model().GridRow(current.row()))
                                   : std::nullopt);
            m_preview->Show(m_window.Preview.Sheet());
        }
    });
}

void EditGeometryWindow::Draw(DrawingView& view, const Suspension& draft,
                              std::optional<PointNumber> ringed) {
    DrawPreview(m_wireframe, view.Surface(), draft.StaticPoints(), draft.Data, ringed);
    view.update();
}

void EditGeometryWindow::GiveFocus() {
    if (QWidget* widget = m_binder.WidgetOf(m_window.Focus); widget != nullptr) {
        widget->setFocus();
    }
    m_window.Focus = nullptr;
}

void EditGeometryWindow::closeEvent(QCloseEvent* event) {
    bool closed = true;
    if (m_window.IsOpen) {
        m_points->CommitTyping();
        m_desktop.Handle([&] { closed = m_window.QueryUnload(); });
    }
    event->setAccepted(closed);
}

void EditGeometryWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        m_desktop.Handle([this] { m_window.cmdHelp_Click(); });
        return;
    }
    QWidget::keyPressEvent(event);
}

void EditGeometryWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    RememberPlace(*this, m_window.Frame);
}

void EditGeometryWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    RememberPlace(*this, m_window.Frame);
    ShowDrawings();
}

void EditGeometryWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        RememberPlace(*this, m_window.Frame);
    }
}

} // namespace corvanta
