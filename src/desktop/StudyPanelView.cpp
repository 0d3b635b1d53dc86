#include "desktop/StudyPanelView.h"

#include "desktop/ChartParts.h"
#include "desktop/ChartSheetView.h"
#include "desktop/Desktop.h"
#include "desktop/GridView.h"
#include "desktop/NumberField.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

namespace corvanta {

namespace {

constexpr int FieldsInARow = 3;
constexpr int MostColumn = 220;
constexpr int NameWidth = 190;
constexpr int AskedTitle = 70;

/// Letters of the choices, within reason: which of two pickups it is stands at the end.
int LongestChoice(const ListControl& list) {
    constexpr int Least = 16;
    constexpr int Most = 28;
    int longest = Least;
    for (const ListEntry& entry : list.Entries()) {
        longest = std::max(longest, static_cast<int>(entry.Text.size()));
    }
    return std::min(longest, Most);
}

/// The kinds of places of a map, each behind its colour.
QString NamesOf(const std::vector<MapKind>& kinds) {
    QString names;
    for (const MapKind& kind : kinds) {
        names += QString("<span style='color:%1'>\u25A0</span>&nbsp;%2 &nbsp; ")
                     .arg(ColourOf(kind.Drawn).name(),
                          QString::fromStdString(kind.Name).toHtmlEscaped().replace(' ', "&nbsp;"));
    }
    return names;
}

/// Pages of what came out.
enum AnswerPage { PageQuestion, PageChart, FirstTable };

constexpr int QuestionWidth = 310; ///< at least
constexpr int ProgressWidth = 120;
constexpr int ProgressSteps = 1000;

template <typename... Kinds>
struct Overloaded : Kinds... {
    using Kinds::operator()...;
};
template <typename... Kinds>
Overloaded(Kinds...) -> Overloaded<Kinds...>;

} // namespace

StudyPanelView::StudyPanelView(Desktop& desktop, frmWorkbench& window, CStudyPanel& panel,
                               QWidget* parent)
    : QWidget(parent),
      m_desktop(desktop),
      m_window(window),
      m_panel(panel),
      m_binder([&desktop](const auto& event) { desktop.Handle(event); }) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(BuildHead());
    layout->addWidget(BuildFields());
    m_halves = new QSplitter(Qt::Horizontal, this);
    m_halves->setChildrenCollapsible(false);
    if (!panel.Asked.empty()) {
        m_halves->addWidget(BuildQuestion());
    }
    BuildAnswer();
    m_halves->addWidget(m_answer);
    m_halves->setStretchFactor(m_halves->count() - 1, 1); // what came out gets the room
    connect(m_halves, &QSplitter::splitterMoved, this, [this] { m_moved = true; });
    layout->addWidget(m_halves, 1);
}

/// How the work goes, with what begins and ends it.
QWidget* StudyPanelView::BuildHead() {
    auto* head = new QWidget(this);
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const Control& control, const char* name, Binder::Event clicked) {
        auto* button = new QPushButton(head);
        button->setObjectName(name);
        button->setAutoDefault(false);
        m_binder.Bind(button, control, std::move(clicked));
        row->addWidget(button);
    };
    add(m_panel.cmdRun, "cmdRun", [this] { m_panel.cmdRun_Click(); });
    add(m_panel.cmdStop, "cmdStop", [this] { m_panel.cmdStop_Click(); });
    m_progress = new QProgressBar(head);
    m_progress->setFixedWidth(ProgressWidth);
    m_progress->setRange(0, ProgressSteps);
    m_progress->setTextVisible(false);
    QSizePolicy policy = m_progress->sizePolicy(); // nothing moves when it comes and goes
    policy.setRetainSizeWhenHidden(true);
    m_progress->setSizePolicy(policy);
    row->addWidget(m_progress);
    auto* status = new QLabel(head);
    status->setObjectName("labStatus");
    status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_binder.OnShow([this, status] {
        const QString text = QString::fromStdString(m_panel.labStatus.Caption);
        SetTextOnce(status, text);
        status->setToolTip(text);
    });
    row->addWidget(status, 1);
    add(m_panel.cmdKeep, "cmdKeep", [this] { m_panel.cmdKeep_Click(); });
    add(m_panel.cmdReport, "cmdReport", [this] { m_window.ReportStudy(); });
    return head;
}

QWidget* StudyPanelView::BuildQuestion() {
    auto* question = new QWidget(this);
    auto* layout = new QVBoxLayout(question);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    m_asked = new QTabWidget(question);
    m_asked->setDocumentMode(true);
    for (StudyTable* const table : m_panel.Asked) {
        GridView* const view = BuildTable(m_askedTables, *table, *m_asked);
        view->WrapTitles(AskedTitle);
        const std::size_t n = m_askedTables.size() - 1;
        view->Model().OnTyped([this, n](int row, int column, const std::string& text) {
            m_desktop.Handle([&] { m_panel.Asked_Edited(n, row, column, text); });
        });
    }
    m_asked->tabBar()->setVisible(m_panel.Asked.size() > 1);
    layout->addWidget(m_asked, 1);
    layout->addWidget(BuildRowButtons());
    return question;
}

QWidget* StudyPanelView::BuildFields() {
    auto* fields = new QWidget(this);
    auto* grid = new QGridLayout(fields);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(2);
    for (std::size_t n = 0; n < m_panel.Fields.size(); ++n) {
        BuildField(*grid, n);
    }
    grid->setColumnStretch(3 * FieldsInARow, 1);
    fields->setVisible(!m_panel.Fields.empty());
    return fields;
}

void StudyPanelView::BuildField(QGridLayout& grid, std::size_t n) {
    QWidget* const parent = grid.parentWidget();
    const int row = static_cast<int>(n) / FieldsInARow;
    const int column = 3 * (static_cast<int>(n) % FieldsInARow);
    const auto changed = [this, n] { m_panel.Field_Changed(n); };
    const auto place = [&](QWidget* widget, const Control& control) {
        widget->setObjectName(QString::fromStdString(m_panel.Fields[n].Name));
        auto* label = new QLabel(parent);
        m_binder.Bind(label, control);
        label->setBuddy(widget);
        grid.addWidget(label, row, column);
        grid.addWidget(widget, row, column + 1);
    };
    std::visit(Overloaded{
                   [&](NumberBox* box) {
                       auto* field = new NumberField(
                           m_binder, *box, changed, [this, n] { m_panel.Field_Left(n); }, parent);
                       place(field, *box);
                       auto* unit = new QLabel(parent);
                       m_binder.OnShow(
                           [unit, box] { SetTextOnce(unit, QString::fromStdString(box->Unit)); });
                       grid.addWidget(unit, row, column + 2);
                   },
                   [&](ListControl* list) {
                       auto* choice = new QComboBox(parent);
                       choice->setSizeAdjustPolicy(
                           QComboBox::AdjustToMinimumContentsLengthWithIcon);
                       choice->setMinimumContentsLength(LongestChoice(*list));
                       m_binder.Bind(choice, *list, changed);
                       place(choice, *list);
                   },
                   [&](CheckBox* check) {
                       auto* box = new QCheckBox(parent);
                       box->setObjectName(QString::fromStdString(m_panel.Fields[n].Name));
                       m_binder.Bind(box, *check, changed);
                       grid.addWidget(box, row, column, 1, 3);
                   },
               },
               m_panel.Fields[n].Box);
}

std::size_t StudyPanelView::AskedTable() const {
    return static_cast<std::size_t>(std::max(0, m_asked->currentIndex()));
}

QWidget* StudyPanelView::BuildRowButtons() {
    auto* buttons = new QWidget(this);
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const Control& control, const char* name,
                         void (CStudyPanel::*clicked)(std::size_t)) {
        auto* button = new QPushButton(buttons);
        button->setObjectName(name);
        button->setAutoDefault(false);
        m_binder.Bind(button, control, [this, clicked] {
            const std::size_t table = AskedTable();
            std::invoke(clicked, m_panel, table);
        });
        row->addWidget(button);
    };
    add(m_panel.cmdAdd, "cmdAdd", &CStudyPanel::cmdAdd_Click);
    add(m_panel.cmdRemove, "cmdRemove", &CStudyPanel::cmdRemove_Click);
    add(m_panel.cmdFill, "cmdFill", &CStudyPanel::cmdFill_Click);
    row->addStretch(1);
    return buttons;
}

GridView* StudyPanelView::BuildTable(std::vector<Table>& tables, StudyTable& table,
                                     QTabWidget& pages) {
    auto* view = new GridView(table.Grid, &pages);
    view->setObjectName(QString::fromStdString(table.Name));
    view->BoundColumns(MostColumn);
    view->MakeNarrow(NameWidth);
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [view, &table] {
        if (const std::optional<CellRange> range = view->SelectedRange()) {
            table.Selection = *range;
        }
    });
    view->horizontalHeader()->setStretchLastSection(table.StretchLast);
    pages.addTab(view, QString::fromStdString(table.Title));
    tables.push_back({&table, view});
    return view;
}

void StudyPanelView::BuildAnswer() {
    m_answer = new QTabWidget(this);
    m_answer->setObjectName("tabAnswer");
    m_answer->setDocumentMode(true);
    m_charts = new QWidget(m_answer);
    auto* page = new QVBoxLayout(m_charts);
    page->setContentsMargins(0, 0, 0, 0);
    m_sheetRow = new QHBoxLayout;
    page->addLayout(m_sheetRow, 1);
    m_kinds = new QLabel(m_charts);
    m_kinds->setTextFormat(Qt::RichText);
    m_kinds->setWordWrap(true);
    page->addWidget(m_kinds);
    auto* words = new QLabel(QString::fromStdString(m_panel.Page.ToolTip), m_answer);
    words->setAlignment(Qt::AlignCenter);
    words->setWordWrap(true);
    m_answer->addTab(words, tr("Question"));
    m_answer->addTab(m_charts, tr("Chart"));
    for (std::size_t n = 0; n < m_panel.Answers.size(); ++n) {
        GridView* const view = BuildTable(m_answerTables, *m_panel.Answers[n], *m_answer);
        connect(view, &QTableView::clicked, this, [this, view, n](const QModelIndex& index) {
            const int row = view->Model().GridRow(index.row());
            m_desktop.Handle([&] { m_panel.Answer_Clicked(n, row); });
        });
    }
}

/// All columns of what is asked are in sight, within reason, until a hand divides the room.
void StudyPanelView::DivideRoom() {
    if (m_moved || m_askedTables.empty()) {
        return;
    }
    int asked = QuestionWidth;
    for (const Table& table : m_askedTables) {
        asked = std::max(asked, table.View->NeededWidth());
    }
    asked = std::min(asked, m_halves->width() * 11 / 20);
    if (m_halves->sizes().constFirst() != asked) {
        m_halves->setSizes({asked, m_halves->width() - asked});
    }
}

void StudyPanelView::ShowSheets() {
    while (m_sheets.size() > m_panel.Sheets.size()) {
        delete m_sheets.back();
        m_sheets.pop_back();
    }
    while (m_sheets.size() < m_panel.Sheets.size()) {
        m_sheets.push_back(new ChartSheetView({}, m_charts));
        m_sheetRow->addWidget(m_sheets.back());
    }
    QString kinds; // of the places in maps, the same in all
    for (std::size_t n = 0; n < m_sheets.size(); ++n) {
        m_sheets[n]->Show(m_panel.Sheets[n]);
        if (const auto& map = m_panel.Sheets[n].Map; map && n == 0) {
            kinds = NamesOf(map->Kinds);
        }
    }
    SetTextOnce(m_kinds, kinds);
    m_kinds->setVisible(!kinds.isEmpty());
}

/// Only pages with something on them; what the study answers stands there until there are any.
void StudyPanelView::ShowPages() {
    m_answer->setTabVisible(PageChart, !m_sheets.empty());
    bool any = !m_sheets.empty();
    for (std::size_t n = 0; n < m_answerTables.size(); ++n) {
        const bool filled = m_answerTables[n].Shown->Grid.Rows() > 0;
        m_answer->setTabVisible(FirstTable + static_cast<int>(n), filled);
        any = any || filled;
    }
    m_answer->setTabVisible(PageQuestion, !any);
    if (m_panel.Front) {
        m_answer->setCurrentIndex(FirstTable + static_cast<int>(*m_panel.Front));
        m_panel.Front.reset();
    }
}

void StudyPanelView::ShowProgress() {
    m_progress->setValue(m_panel.IsRunning() ? static_cast<int>(m_panel.Progress() * ProgressSteps)
                                             : 0);
    m_progress->setVisible(m_panel.IsRunning() && m_panel.cmdRun.Visible);
}

void StudyPanelView::Refresh() {
    m_binder.Show();
    ShowProgress();
    for (const std::vector<Table>* tables : {&m_askedTables, &m_answerTables}) {
        for (const Table& table : *tables) {
            table.View->Refresh();
        }
    }
    DivideRoom();
    ShowSheets();
    ShowPages();
}

} // namespace corvanta
