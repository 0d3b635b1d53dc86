#pragma once

#include "platform/ChartSheet.h"
#include "platform/Controls.h"
#include "platform/DataGrid.h"
#include "shell/CornerPanel.h"
#include "shell/Desk.h"
#include "shell/StudyJob.h"
#include "study/DesignVariable.h"
#include "study/StudyFile.h"
#include "study/StudyNumber.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace corvanta {

/// What a panel of a study needs of the window that it is in.
class StudyHost {
  public:
    StudyHost() = default;
    StudyHost(const StudyHost&) = delete;
    StudyHost& operator=(const StudyHost&) = delete;
    StudyHost(StudyHost&&) = delete;
    StudyHost& operator=(StudyHost&&) = delete;
    virtual ~StudyHost() = default;

    /// The coordinates whose cells are selected among the points.
    [[nodiscard]] virtual std::vector<PointCoordinate> SelectedCoordinates() const = 0;
    virtual void SelectCoordinate(const PointCoordinate& coordinate) = 0;

    /// The chart that was worked with last, counted from 0.
    [[nodiscard]] virtual std::size_t ChartInHand() const = 0;

    /// Keeps a design that a study found as a variant, under a name like the one wanted, and
    /// answers that name.
    virtual std::string KeepAsVariant(const std::string& name, const std::string& note,
                                      const Design& design) = 0;
};

/// A page with one table.
struct StudyTable {
    std::string Name; ///< of the table, for instance "grdFree"
    std::string Title;
    DataGrid Grid;
    CellRange Selection{};    ///< the window system keeps it up to date
    bool StretchLast = false; ///< its last column takes the room that is left
};

/// A field of what is asked.
struct StudyField {
    std::string Name; ///< of the control, for instance "txtSeed"
    std::variant<NumberBox*, ListControl*, CheckBox*> Box;
};

/// A line that a study adds to the charts along the same travel.
struct OverlayCurve {
    StudyChart Chart;
    std::string Name;
    Colour Drawn;
    std::vector<double> Travel; ///< mm
    std::vector<double> Values; ///< stored units
};

/// A band that it adds.
struct OverlayBand {
    StudyChart Chart;
    std::string Name;
    std::vector<double> Travel; ///< mm
    std::vector<double> Low;    ///< stored units
    std::vector<double> High;
};

/// What a study shows beside the design.
struct StudyOverlay {
    std::vector<OverlayCurve> Curves;
    std::vector<OverlayBand> Bands;
    std::vector<MarkedPlace> Places; ///< in the drawing of the corner, where points are entered

    /// True when a curve or band of a chart is among it.
    [[nodiscard]] bool IsOn(const StudyChart& chart) const;
};

/// True for the same channel along the same travel.
[[nodiscard]] inline bool IsSameLine(const StudyChart& one, const StudyChart& other) {
    return one.Channel == other.Channel && one.Kind == other.Kind;
}

/// What the report of a study says beside its charts and tables.
struct StudyWords {
    std::string Title;
    std::vector<std::string> Asked; ///< a line each
    std::vector<std::string> Found;
};

/// What a study was asked: kept with its answer, whatever becomes of the panel meanwhile.
struct StudyInquiry {
    corvanta::Design Design;
    std::vector<StudyChart> Charts;
    std::optional<StudyNumber> Number; ///< of the chart in hand, where the study looks at one
    std::vector<Target> Targets;       ///< that the study looks at
    StudyQuestions Questions;
    std::vector<StudyTable> Tables; ///< as they were filled in
};

/// One study of the workbench: what is asked, what came out, and the work between the two, which
/// goes on beside the windows. It is about the design as it stood when the work began.
class CStudyPanel {
  public:
    CStudyPanel(Desk& desk, StudyHost& host);
    CStudyPanel(const CStudyPanel&) = delete;
    CStudyPanel& operator=(const CStudyPanel&) = delete;
    CStudyPanel(CStudyPanel&&) = delete;
    CStudyPanel& operator=(CStudyPanel&&) = delete;
    virtual ~CStudyPanel() = default;

    Control Page; ///< the name of the study; the tooltip is the question that it answers
    int HelpTopicNumber = 0;

    /// What is asked.
    std::vector<StudyField> Fields;
    std::vector<StudyTable*> Asked;
    Control cmdAdd, cmdRemove, cmdFill; ///< rows of the tables; invisible where there are none

    /// What came out. It stays until the next answer.
    std::vector<StudyTable*> Answers;
    std::vector<ChartSheet> Sheets;
    StudyOverlay Overlay;
    std::optional<std::size_t> Front; ///< asks the window system, once, to bring that table forward
    Control cmdKeep;                  ///< invisible where no design comes out

    Control cmdRun, cmdStop, cmdReport;
    Control labStatus; ///< what goes on, what came out or why nothing can, in one line

    // Events. A field already holds what the user chose or typed.
    void Field_Changed(std::size_t n);
    void Field_Left(std::size_t n); ///< typing has ended
    void Asked_Edited(std::size_t table, int row, int column, const std::string& text);
    void cmdAdd_Click(std::size_t table);
    void cmdRemove_Click(std::size_t table);
    void cmdFill_Click(std::size_t table);
    void cmdRun_Click();
    void cmdStop_Click();
    virtual void cmdKeep_Click() {}
    virtual void Answer_Clicked(std::size_t /*table*/, int /*row*/) {}

    /// The panel is in sight, or not any more: one that is live works only then.
    void SetShown(bool shown);

    /// The document, its charts or the units are others.
    void Follow(DocumentChange change);

    /// Takes what came out of the work meanwhile; true when anything has changed.
    bool Poll();

    [[nodiscard]] bool IsRunning() const { return m_job.IsRunning(); }
    [[nodiscard]] double Progress() const { return m_job.Progress(); }

    [[nodiscard]] bool HasAnswer() const { return m_answered.has_value(); }

    /// What was asked and found, as the report says it.
    [[nodiscard]] virtual StudyWords Words() const = 0;

    /// What the answer is about, as it was asked; there is one where there is an answer.
    [[nodiscard]] const StudyInquiry& Answered() const { return *m_answered; }

    /// The overlay while it is about what stands there now; null otherwise.
    [[nodiscard]] const StudyOverlay* OverlayNow() const;

    /// True for questions of which this study's is the one that there is now.
    [[nodiscard]] virtual bool AsksTheSame(const StudyQuestions& then) const = 0;

  protected:
    /// Brings what is asked to fields and tables.
    virtual void ShowQuestion() = 0;

    /// Takes what the fields hold. Throws Failure for a text that can't be taken.
    virtual void TakeFields() {}

    /// True for a study that looks at the targets of the document.
    [[nodiscard]] virtual bool UsesTargets() const { return false; }

    /// What a study that looks at one number of the chart in hand would be asked about now. None
    /// for the deviation from a target that the chart does not have, and for other studies.
    [[nodiscard]] virtual std::optional<StudyNumber> Number() const { return std::nullopt; }

    /// That number as an entry of a list of figures.
    [[nodiscard]] std::optional<StudyNumber> NumberInHand(const ListControl& figures) const;

    /// `Number`; throws Failure where there is none.
    [[nodiscard]] StudyNumber NumberToAsk() const;

    virtual void EditCell(std::size_t /*table*/, int /*row*/, int /*column*/,
                          const std::string& /*text*/) {}
    virtual void AddRows(std::size_t /*table*/) {}
    virtual void RemoveRow(std::size_t /*table*/, std::size_t /*row*/) {}
    virtual void Fill(std::size_t /*table*/) {}

    /// The work for what is asked of a design. It throws Failure for what can't be answered, as
    /// this does for what can't even be asked.
    [[nodiscard]] virtual CStudyJob::Work
    Prepare(const Design& design, std::shared_ptr<const StudySettings> settings) = 0;

    /// What the status says of the answer that is shown.
    void AnswerCame(const std::string& status);

    /// Keeps a design that was found as a variant, and says so.
    void Keep(const std::string& name, const Design& design);

    /// The work was stopped before there was any answer; one that came in between stays.
    void StoppedWithoutAnswer();

    /// The design that the work or the answer on show is about.
    [[nodiscard]] const Design& AskedOf() const { return m_answered->Design; }

    /// The curves of a design on the charts, under a name. Solves it, in whichever thread.
    [[nodiscard]] static std::vector<OverlayCurve> CurvesOf(const Design& design,
                                                            const std::string& name,
                                                            const std::vector<StudyChart>& charts,
                                                            const SolveSettings& settings);

    /// The title of the chart in hand.
    [[nodiscard]] std::string ChartTitle() const;

    /// True for a panel that works anew with each change of the document while it is in sight.
    [[nodiscard]] virtual bool IsLive() const { return false; }

    /// True for a live one that is so quick that its work is never stopped for the next.
    [[nodiscard]] virtual bool EndsSoon() const { return false; }

    [[nodiscard]] Design DesignNow() const { return DesignOf(m_desk.Program.Document); }
    [[nodiscard]] const FundamentalUnits& Units() const { return m_desk.Program.Units; }
    [[nodiscard]] const std::vector<StudyChart>& Charts() const {
        return m_desk.Current.Study().Charts;
    }

    [[nodiscard]] const StudyQuestions& Questions() const {
        return m_desk.Current.Study().Questions;
    }
    void Change(const std::function<void(StudyQuestions&)>& change);

    Desk& m_desk;
    StudyHost& m_host;

  private:
    void Try(const std::function<void()>& event);
    void Edit(const std::function<void()>& event);
    void ShowAsked();
    [[nodiscard]] std::vector<std::string> Typed() const;
    [[nodiscard]] StudyInquiry Inquiry() const;
    void Begin();
    void ShowOutcome(const CStudyJob::Show& show);
    void CheckAge();
    [[nodiscard]] std::string WhyOld() const;
    void ShowButtons();
    void ForgetAnswer();

    CStudyJob m_job;
    std::optional<StudyInquiry> m_asked;    ///< what the work is about
    std::optional<StudyInquiry> m_answered; ///< what the answer on show is about
    std::string m_status;                   ///< of that answer
    std::string m_whyOld; ///< why it is not about what stands there now; empty when it is
    std::vector<std::string> m_typed; ///< texts of the fields as they were shown
    bool m_hasInterim = false;        ///< the work that runs has shown an answer already
    bool m_isDropped = false; ///< nobody wants what the work finds: another document is there
    bool m_shown = false;
    bool m_again = false; ///< the question is another since the work began
};

} // namespace corvanta
