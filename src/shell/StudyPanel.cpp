#include "shell/StudyPanel.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "platform/ColourScale.h"
#include "shell/StudyFigures.h"
#include "study/DesignResults.h"
#include "study/StudyChart.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvanta {

namespace {

constexpr const char* OfAnotherFigure = "Of the figure chosen before: run it again";

} // namespace

bool StudyOverlay::IsOn(const StudyChart& chart) const {
    const auto any = [&](const auto& overlays) {
        return std::any_of(overlays.begin(), overlays.end(),
                           [&](const auto& each) { return IsSameLine(each.Chart, chart); });
    };
    return any(Bands) || any(Curves);
}

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
    }
    ShowButtons();
}

// --- What is asked -----------------------------------------------------------------------------

/// Texts of the number boxes, empty for other fields.
std::vector<std::string> CStudyPanel::Typed() const {
    std::vector<std::string> texts;
    for (const StudyField& field : Fields) {
        const auto* const box = std::get_if<NumberBox*>(&field.Box);
        texts.push_back(box == nullptr ? "" : (*box)->Text);
    }
    return texts;
}

/// Shows what is asked; a text that is being typed stays.
void CStudyPanel::ShowAsked() {
    if (!m_desk.Program.Document.DataLoaded) {
        return;
    }
    const std::vector<std::string> typed = Typed();
    const std::vector<std::string> before = m_typed;
    ShowQuestion();
    m_typed = Typed();
    for (std::size_t n = 0; n < before.size(); ++n) {
        if (NumberBox* const* const box = std::get_if<NumberBox*>(&Fields[n].Box)) {
            const bool isTyping = typed[n] != before[n];
            (*box)->Text = isTyping ? typed[n] : (*box)->Text;
            (*box)->Fault = isTyping && (*box)->Fault;
        }
    }
}

/// Runs a change of the question and shows what became of it.
void CStudyPanel::Edit(const std::function<void()>& event) {
    Try([&] {
        event();
        m_typed = Typed(); // it is taken
        labStatus.Caption = m_status;
        ShowAsked();
        if (IsLive()) {
            m_again = true;
            Begin();
        } else {
            m_whyOld.clear();
            CheckAge();
        }
    });
}

void CStudyPanel::Field_Changed(std::size_t n) {
    if (!std::holds_alternative<NumberBox*>(Fields.at(n).Box)) { // which is taken when it is left
        Edit([this] { TakeFields(); });
    }
}

void CStudyPanel::Field_Left(std::size_t /*n*/) {
    if (Typed() != m_typed) {
        Edit([this] { TakeFields(); });
    }
}

void CStudyPanel::Asked_Edited(std::size_t table, int row, int column, const std::string& text) {
    Edit([&] { EditCell(table, row, column, text); });
}

void CStudyPanel::cmdAdd_Click(std::size_t table) {
    Edit([&] { AddRows(table); });
}

void CStudyPanel::cmdRemove_Click(std::size_t table) {
    Edit([&] {
        const StudyTable& asked = *Asked.at(table);
        const int first = std::max(asked.Selection.FirstRow, asked.Grid.FixedRows());
        for (int row = std::min(asked.Selection.LastRow, asked.Grid.Rows() - 1); row >= first;
             --row) {
            RemoveRow(table, static_cast<std::size_t>(row - asked.Grid.FixedRows()));
        }
    });
}

void CStudyPanel::cmdFill_Click(std::size_t table) {
    Edit([&] { Fill(table); });
}

void CStudyPanel::Change(const std::function<void(StudyQuestions&)>& change) {
    StudyData study = m_desk.Current.Study();
    change(study.Questions);
    if (study != m_desk.Current.Study()) {
        m_desk.Current.ChangeStudy(std::move(study));
    }
}

// --- The work -----------------------------------------------------------------------------------

/// What would be asked now.
StudyInquiry CStudyPanel::Inquiry() const {
    StudyInquiry inquiry{DesignNow(), Charts(), Number(), {}, Questions(), {}};
    if (UsesTargets()) {
        inquiry.Targets = m_desk.Current.Study().Targets;
    } else if (inquiry.Number && std::holds_alternative<Target>(*inquiry.Number)) {
        inquiry.Targets = {std::get<Target>(*inquiry.Number)};
    }
    for (const StudyTable* const table : Asked) {
        inquiry.Tables.push_back(*table);
    }
    return inquiry;
}

/// Begins the work, or has it begin when the one that runs has ended.
void CStudyPanel::Begin() {
    if (!m_again || !m_shown || !m_desk.Program.Document.DataLoaded) {
        return;
    }
    if (IsRunning()) {
        if (!EndsSoon()) {
            m_job.Stop();
        }
        return;
    }
    m_again = false;
    Try([this] {
        StudyInquiry inquiry = Inquiry();
        try {
            m_job.Start(
                Prepare(inquiry.Design, std::make_shared<const StudySettings>(m_desk.Program)));
        } catch (...) {
            ForgetAnswer();
            throw;
        }
        m_asked = std::move(inquiry);
        m_hasInterim = false;
        labStatus.Caption.clear();
    });
}

void CStudyPanel::cmdRun_Click() {
    Try([this] {
        if (Typed() != m_typed) { // the key that runs it leaves no field
            TakeFields();
            m_typed = Typed();
        }
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
            if (!m_isDropped) {
                ForgetAnswer();
                throw;
            }
        }
    });
    const bool ended = wasRunning && !IsRunning();
    // What was stopped for the next question is about the one before it.
    const bool isWanted = !m_isDropped && (!m_again || EndsSoon() || (IsLive() && !ended));
    m_isDropped = m_isDropped && !ended;
    if (show && *show && isWanted) {
        ShowOutcome(*show);
    }
    if (m_again && ended) {
        Begin();
    }
    return show || ended;
}

void CStudyPanel::ShowOutcome(const CStudyJob::Show& show) {
    Try([&] {
        if (m_asked) { // all that comes of one work is about the same
            m_answered = IsRunning() ? m_asked : std::exchange(m_asked, {});
        }
        m_whyOld.clear();
        show();
        m_hasInterim = IsRunning() && m_answered;
        CheckAge();
    });
}

std::vector<OverlayCurve> CStudyPanel::CurvesOf(const Design& design, const std::string& name,
                                                const std::vector<StudyChart>& charts,
                                                const SolveSettings& settings) {
    std::vector<StudyChart> lines;
    std::copy_if(charts.begin(), charts.end(), std::back_inserter(lines), IsLine);
    const auto scratch = std::make_unique<Suspension>();
    const DesignResults results = ResultsOf(*scratch, design, settings, lines, {});
    std::vector<OverlayCurve> curves;
    for (std::size_t n = 0; n < lines.size(); ++n) {
        if (const std::optional<Curve>& curve = results.Curves[n]) {
            curves.push_back({lines[n], name, StudyColour, curve->X, curve->Y});
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

std::optional<StudyNumber> CStudyPanel::NumberInHand(const ListControl& figures) const {
    const std::size_t n = m_host.ChartInHand();
    return n < Charts().size()
               ? NumberOfChart(Charts()[n], figures.Index(), m_desk.Current.Study().Targets)
               : std::nullopt;
}

StudyNumber CStudyPanel::NumberToAsk() const {
    if (const std::optional<StudyNumber> number = Number()) {
        return *number;
    }
    throw Failure(fnInvalidCall, "The chart in hand has no target: give it one by its menu");
}

void CStudyPanel::AnswerCame(const std::string& status) {
    m_status = labStatus.Caption = status;
}

void CStudyPanel::Keep(const std::string& name, const Design& design) {
    labStatus.Caption =
        "Kept as the variant \"" + m_host.KeepAsVariant(name, Words().Found.front(), design) + "\"";
}

void CStudyPanel::StoppedWithoutAnswer() {
    const std::string interim = m_hasInterim ? m_status + ", " : "";
    if (!m_hasInterim) {
        ForgetAnswer();
    }
    AnswerCame(interim.empty() ? "Stopped" : interim + "stopped");
}

/// Why the answer is not about what stands there now; empty when it is.
std::string CStudyPanel::WhyOld() const {
    if (!(m_answered->Design == DesignNow())) {
        return "Of the design before its last change: run it again";
    }
    if (!AsksTheSame(m_answered->Questions) ||
        (UsesTargets() && m_answered->Targets != m_desk.Current.Study().Targets)) {
        return "Of what was asked before: run it again";
    }
    if (m_answered->Charts != Charts()) {
        return "The charts are others since: run it again";
    }
    return m_answered->Number == Number() ? "" : OfAnotherFigure;
}

/// Tells when the answer is not about what stands there any more, and when it is so again.
void CStudyPanel::CheckAge() {
    const std::string why = m_answered && !IsLive() ? WhyOld() : "";
    if (why != m_whyOld) {
        m_whyOld = why;
        labStatus.Caption = why.empty() ? m_status : why;
    }
}

/// Curves are the same whatever is asked of them, and another chart is in hand with every click.
const StudyOverlay* CStudyPanel::OverlayNow() const {
    return m_whyOld.empty() || m_whyOld == OfAnotherFigure ? &Overlay : nullptr;
}

void CStudyPanel::ForgetAnswer() {
    m_answered.reset();
    m_whyOld.clear();
    m_status.clear();
    for (StudyTable* const table : Answers) {
        table->Grid.Reset();
    }
    Sheets.clear();
    Overlay = {};
    labStatus.Caption.clear();
}

void CStudyPanel::SetShown(bool shown) {
    m_shown = shown;
    if (shown) {
        ShowAsked();
        m_again = m_again || (IsLive() && !m_answered);
        Begin();
    }
    ShowButtons();
}

void CStudyPanel::Follow(DocumentChange change) {
    if (change == DocumentChange::Replaced) {
        m_job.Stop();
        m_isDropped = IsRunning();
        m_again = false;
        m_typed.clear();
        ForgetAnswer();
    }
    if (m_desk.Program.Document.DataLoaded) {
        const bool isOther = !m_answered || m_answered->Design != DesignNow();
        m_again = m_again || (IsLive() && (isOther || change == DocumentChange::Beside));
        CheckAge();
        if (m_shown) {
            ShowAsked();
            Begin();
        }
    }
    ShowButtons();
}

void CStudyPanel::ShowButtons() {
    const bool loaded = m_desk.Program.Document.DataLoaded;
    cmdRun.Enabled = loaded && !IsRunning();
    cmdStop.Enabled = IsRunning();
    cmdAdd.Enabled = cmdRemove.Enabled = cmdFill.Enabled = loaded;
    cmdReport.Enabled = loaded && m_answered && !IsRunning();
    cmdKeep.Enabled = cmdReport.Enabled;
}

} // namespace corvanta
