#include "shell/StudyPanel.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "study/DesignResults.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

namespace corvanta {

namespace {

constexpr const char* OfFormerDesign = "Of the design before its last change: run it again";

} // namespace

CStudyPanel::CStudyPanel(Desk& desk, StudyHost& host) : m_desk(desk), m_host(host) {
    cmdRun.Caption = "&Run";
    cmdRun.ToolTip = "Begin the study (F5)";
    cmdStop.Caption = "Sto&p";
    cmdReport.Caption = "Re&port...";
    cmdReport.ToolTip = "What was asked and found, as a PDF document or an HTML page";
    cmdAdd.Caption = "&Add Selected";
    cmdAdd.ToolTip = "Add the coordinates whose cells are selected among the points";
    cmdRemove.Caption = "Re&move";
    cmdKeep.Caption = "&Keep as Variant";
    cmdRun.Enabled = cmdStop.Enabled = cmdReport.Enabled = cmdKeep.Enabled = false;
}

void CStudyPanel::Try(const std::function<void()>& event) {
    try {
        event();
    } catch (...) {
        labStatus.Caption = FailureInFlight().Description();
        if (!labStatus.Caption.empty()) { // reasons are parts of sentences elsewhere
            labStatus.Caption[0] =
                static_cast<char>(std::toupper(static_cast<unsigned char>(labStatus.Caption[0])));
        }
    }
    ShowButtons();
}

// --- What is asked -----------------------------------------------------------------------------

void CStudyPanel::Field_Changed(std::size_t n) {
    const bool isTyping = std::holds_alternative<NumberBox*>(Fields.at(n).Box);
    Try([&] {
        TakeFields();
        if (!isTyping) { // a text that is half typed stays
            QuestionChanged();
        }
    });
}

void CStudyPanel::Field_Left(std::size_t /*n*/) {
    Try([&] {
        TakeFields();
        QuestionChanged();
    });
}

void CStudyPanel::Asked_Edited(std::size_t table, int row, int column, const std::string& text) {
    Try([&] {
        EditCell(table, row, column, text);
        QuestionChanged();
    });
}

void CStudyPanel::cmdAdd_Click(std::size_t table) {
    Try([&] {
        AddRows(table);
        QuestionChanged();
    });
}

void CStudyPanel::cmdRemove_Click(std::size_t table) {
    Try([&] {
        const StudyTable& asked = *Asked.at(table);
        const int first = std::max(asked.Selection.FirstRow, asked.Grid.FixedRows());
        for (int row = std::min(asked.Selection.LastRow, asked.Grid.Rows() - 1); row >= first;
             --row) {
            RemoveRow(table, static_cast<std::size_t>(row - asked.Grid.FixedRows()));
        }
        QuestionChanged();
    });
}

void CStudyPanel::cmdFill_Click(std::size_t table) {
    Try([&] {
        Fill(table);
        QuestionChanged();
    });
}

void CStudyPanel::QuestionChanged() {
    labStatus.Caption.clear();
    if (m_desk.Program.Document.DataLoaded) {
        ShowQuestion();
    }
    if (IsLive()) {
        m_again = true;
        Begin();
    } else if (m_hasAnswer && !IsRunning()) {
        ShowAsOld("Of what was asked before: run it again");
    }
}

void CStudyPanel::Change(const std::function<void(StudyQuestions&)>& change) {
    StudyData study = m_desk.Current.Study();
    change(study.Questions);
    if (study != m_desk.Current.Study()) {
        m_desk.Current.ChangeStudy(std::move(study));
    }
}

// --- The work -----------------------------------------------------------------------------------

/// Begins the work, or has it begin when the one that runs has ended.
void CStudyPanel::Begin() {
    if (!m_again || !m_shown || !m_desk.Program.Document.DataLoaded) {
        return;
    }
    if (IsRunning()) {
        m_job.Stop();
        return;
    }
    m_again = false;
    Try([this] {
        const Design design = DesignNow();
        try {
            m_job.Start(Prepare(design, std::make_shared<const StudySettings>(m_desk.Program)));
        } catch (...) {
            ForgetAnswer();
            throw;
        }
        m_askedOf = design;
        m_askedCharts = Charts();
        m_isOld = false;
        labStatus.Caption.clear();
    });
}

void CStudyPanel::cmdRun_Click() {
    Try([this] {
        TakeFields(); // the key that runs it leaves no field
        m_again = true;
        Begin();
    });
}

void CStudyPanel::cmdStop_Click() {
    m_again = false;
    m_job.Stop();
    ShowButtons();
}

bool CStudyPanel::Poll() {
    std::optional<CStudyJob::Show> show;
    const bool wasRunning = IsRunning();
    Try([&] {
        try {
            show = m_job.TakeOutcome();
        } catch (...) {
            ForgetAnswer();
            throw;
        }
    });
    const bool ended = wasRunning && !IsRunning();
    const bool isWanted = !m_again && !m_isDropped;
    m_isDropped = m_isDropped && !ended;
    if (m_again && ended) { // what came out is about what was asked before
        Begin();
    } else if (isWanted && show && *show) {
        Try(*show);
    }
    return show || ended;
}

std::vector<OverlayCurve> CStudyPanel::CurvesOf(const Design& design, const std::string& name,
                                                const std::vector<StudyChart>& charts,
                                                const SolveSettings& settings) {
    constexpr Colour FoundColour{31, 119, 180};
    std::vector<StudyChart> lines;
    std::copy_if(charts.begin(), charts.end(), std::back_inserter(lines),
                 [](const StudyChart& chart) { return chart.Kind != ChartKind::Map; });
    const auto scratch = std::make_unique<Suspension>();
    const DesignResults results = ResultsOf(*scratch, design, settings, lines, {});
    std::vector<OverlayCurve> curves;
    for (std::size_t n = 0; n < lines.size(); ++n) {
        if (const std::optional<Curve>& curve = results.Curves[n]) {
            curves.push_back({lines[n], name, FoundColour, curve->X, curve->Y});
        }
    }
    return curves;
}

std::string CStudyPanel::ChartTitle() const {
    const std::size_t n = m_host.ChartInHand();
    return n < Charts().size()
               ? std::string(TrimBlanks(m_desk.Program.Channels[Charts()[n].Channel].Title))
               : "the chart";
}

void CStudyPanel::AnswerCame(const std::string& status) {
    m_hasAnswer = true;
    labStatus.Caption = status;
    if (m_isOld) {
        ShowAsOld(OfFormerDesign);
    }
}

void CStudyPanel::ShowAsOld(const char* words) {
    Overlay = {};
    labStatus.Caption = words;
}

void CStudyPanel::ForgetAnswer() {
    m_hasAnswer = false;
    m_askedOf.reset();
    for (StudyTable* const table : Answers) {
        table->Grid.Reset();
    }
    Sheets.clear();
    Overlay = {};
    labStatus.Caption.clear();
}

void CStudyPanel::SetShown(bool shown) {
    m_shown = shown;
    if (shown && m_desk.Program.Document.DataLoaded) {
        ShowQuestion();
        m_again = m_again || (IsLive() && !m_hasAnswer);
        Begin();
    }
    ShowButtons();
}

void CStudyPanel::Follow(DocumentChange change) {
    if (change == DocumentChange::Replaced) {
        m_job.Stop();
        m_isDropped = IsRunning();
        m_again = false;
        ForgetAnswer();
    }
    if (!m_desk.Program.Document.DataLoaded) {
        return;
    }
    const bool isOld = m_askedOf && *m_askedOf != DesignNow();
    if (IsLive() && (isOld || !m_askedOf || change == DocumentChange::Beside)) {
        m_again = true;
    } else if (isOld && !std::exchange(m_isOld, true) && !IsRunning() && m_hasAnswer) {
        ShowAsOld(OfFormerDesign);
    } else if (m_hasAnswer && !IsRunning() && !m_isOld && m_askedCharts != Charts()) {
        labStatus.Caption = "The charts are others since: run it again";
    }
    if (m_shown) {
        ShowQuestion();
        Begin();
    }
    ShowButtons();
}

void CStudyPanel::ShowButtons() {
    const bool loaded = m_desk.Program.Document.DataLoaded;
    cmdRun.Enabled = loaded && !IsRunning();
    cmdStop.Enabled = IsRunning();
    cmdAdd.Enabled = cmdRemove.Enabled = cmdFill.Enabled = loaded;
    cmdReport.Enabled = m_hasAnswer && !IsRunning();
    cmdKeep.Enabled = loaded && m_hasAnswer && !IsRunning();
}

} // namespace corvanta
