#include "shell/frmWorkbench.h"

#include "shell/MLibGUI.h"
#include "shell/PointWords.h"
#include "shell/StepNames.h"
#include "study/DesignFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <utility>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 18900, 11400}; // 1260 by 760 pixels
constexpr double HundredthsPerUnit = 100;
constexpr const char* ChartsKey = "Charts";
constexpr const char* PanelsKey = "Panels";

/// "14 0 0;37 0 0": channel, kind and mode of each chart.
std::string TextOf(const std::vector<StudyChart>& charts) {
    std::string text;
    for (const StudyChart& chart : charts) {
        text += std::to_string(chart.Channel) + " " + std::to_string(static_cast<int>(chart.Kind)) +
                (chart.Difference ? " 1;" : " 0;");
    }
    return text;
}

/// The charts of a text; what can't be a chart is left out.
std::vector<StudyChart> ChartsOf(const std::string& text) {
    std::vector<StudyChart> charts;
    std::istringstream entries(text);
    for (std::string entry; std::getline(entries, entry, ';');) {
        std::istringstream numbers(entry);
        int channel = 0;
        int kind = 0;
        int difference = 0;
        if (numbers >> channel >> kind >> difference && HasCurve(channel) && kind >= 0 &&
            kind <= static_cast<int>(ChartKind::Map) &&
            charts.size() < static_cast<std::size_t>(frmWorkbench::MostCharts)) {
            charts.push_back({channel, static_cast<ChartKind>(kind), difference != 0});
        }
    }
    return charts;
}

/// Charts for a design beside the one in hand: a map only where differences are asked for.
std::vector<StudyChart> BesideCharts(std::vector<StudyChart> charts, bool maps) {
    for (StudyChart& chart : charts) {
        if (chart.Kind == ChartKind::Map && !(maps && chart.Difference)) {
            chart.Kind = ChartKind::AlongWheelTravel; // its curve is not shown
        }
    }
    return charts;
}

} // namespace

frmWorkbench::frmWorkbench(Desk& desk, ShellHost& main)
    : Points(desk),
      Corner(desk.Program.Units),
      Studies(desk, *this),
      m_desk(desk),
      m_main(main),
      m_charts(desk.Program) {
    Caption = "Workbench";
    Frame.Name = "frmWorkbench";
    Frame.Placement = DesignSize;
    cmdUndo.Caption = "&Undo";
    cmdRedo.Caption = "&Redo";
    cmdSetBaseline.Caption = "Set &Baseline";
    cmdSetBaseline.ToolTip = "The design as it stands becomes what all others are compared with";
    cmdKeepVariant.Caption = "&Keep as Variant";
    cmdKeepVariant.ToolTip = "Keep the design as it stands under a name";
    cmdStudies.Caption = "S&tudies";
    cmdStudies.ToolTip = "What moves this, what if, how much does it spread and more";
    panEmpty.Caption = "No document is open.\nOpen one (Ctrl+O), begin one (Ctrl+N), or press F6 "
                       "for the main window with its samples.";
    txtBump.Caption = "&Bump:";
    txtRack.Caption = "&Rack:";
    Corner.Events.Picked = [this](PointNumber number) {
        Points.Select(number);
        m_stale = true;
    };
    Corner.Events.Moved = [this](PointNumber number, const SuspPoint& place) {
        MovePoint(number, place);
    };
    Corner.Events.Ended = [this](PointNumber, bool kept) {
        kept ? m_desk.Current.Release() : m_desk.Current.CallOff();
    };
    m_desk.Current.Watch(*this);
}

frmWorkbench::~frmWorkbench() {
    m_desk.Current.Unwatch(*this);
}

// --- The window ---------------------------------------------------------------------------------

void frmWorkbench::Open() {
    if (m_desk.Store != nullptr) {
        RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
        Panels = m_desk.Store->Read(Frame.Name, PanelsKey, "");
    }
    if (Charts().empty()) {
        StudyData study = m_desk.Current.Study();
        study.Charts =
            ChartsOf(m_desk.Store == nullptr ? "" : m_desk.Store->Read(Frame.Name, ChartsKey, ""));
        if (study.Charts.empty()) {
            study.Charts = FirstCharts();
        }
        m_desk.Current.ChangeStudy(std::move(study));
    }
    IsOpen = true;
    m_stale = true;
    Update();
}

void frmWorkbench::Close() {
    if (IsOpen && m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, true);
        m_desk.Store->Write(Frame.Name, ChartsKey, TextOf(Charts()));
        m_desk.Store->Write(Frame.Name, PanelsKey, Panels);
    }
    StopPlay();
    Studies.Show(std::nullopt);
    IsOpen = false;
}

void frmWorkbench::DocumentChanged(DocumentChange change) {
    m_stale = true;
    m_chartInHand = m_chartInHand < Charts().size() ? m_chartInHand : 0;
    Studies.Follow(change);
    if (change == DocumentChange::Replaced) {
        Points.Note.clear();
        m_good.reset();
        m_fitCorner = true; // another car stands elsewhere and is larger or smaller
        StopPlay();
    }
}

void frmWorkbench::Update() {
    const std::string& unit = m_desk.Program.Units[ucDisplacement].Label;
    if (!IsOpen || (!m_stale && unit == m_shownUnit)) {
        return;
    }
    m_stale = false;
    m_shownUnit = unit;
    Evaluate();
    Points.Show(m_now && !m_now->Results.Outcome.Solved ? m_now->Results.Faulty
                                                        : std::vector<PointNumber>());
    Corner.Step = Points.Step();
    ComposeCharts();
    ShowCorner();
    ShowTravel();
    ShowLists();
    ShowHead();
    panEmpty.Visible = !m_now;
    if (m_now && !Studies.Shown()) { // its steps speak of what can be seen
        Tour.Offer(m_desk.Store);
    }
}

// --- Results ------------------------------------------------------------------------------------

TravelPlace frmWorkbench::Place() const {
    const Suspension& document = m_desk.Program.Document;
    const ViewSettings& settings = m_desk.Program.Settings;
    return {settings.ViewWheel < 2 ? 0 : WheelTravelAtStep(document, settings.ViewWheel),
            settings.ViewRack < 2 ? 0 : RackTravelAtStep(document, settings.ViewRack)};
}

bool frmWorkbench::IsUpToDate(const std::optional<Cached>& cached, const Design& design,
                              const std::vector<StudyChart>& charts) const {
    return cached && cached->LengthUnit == m_shownUnit && cached->Charts == charts &&
           cached->Design == design;
}

void frmWorkbench::Renew(std::optional<Cached>& cached, Suspension& scratch, const Design& design,
                         const std::vector<StudyChart>& charts) {
    const bool same = IsUpToDate(cached, design, charts);
    if (same && cached->Place == Place()) {
        return;
    }
    // The scratch document of the design in hand holds no other one.
    if (same && &scratch == &m_scratch && TakeWholeGrid(charts)) {
        ReadAt(cached->Results, scratch, charts, Place());
        cached->Place = Place();
    } else {
        cached = Cached{design, charts, Place(), m_shownUnit,
                        ResultsOf(scratch, design, m_desk.Current.Settings(), charts, Place())};
    }
}

void frmWorkbench::Evaluate() {
    const Suspension& document = m_desk.Program.Document;
    if (!document.DataLoaded) {
        m_now.reset();
        m_good.reset();
        m_baseline.reset();
        m_variants.clear();
        return;
    }
    Renew(m_now, m_scratch, DesignOf(document), Charts());
    if (m_now->Results.Outcome.Solved) {
        m_good = m_now;
    }
    EvaluateBeside();
}

void frmWorkbench::EvaluateBeside() {
    const StudyData& study = m_desk.Current.Study();
    if (study.Baseline && *study.Baseline != m_now->Design) {
        Renew(m_baseline, m_besideScratch, *study.Baseline, BesideCharts(Charts(), true));
    } else {
        m_baseline.reset();
    }
    m_variants.resize(study.Variants.size());
    for (std::size_t n = 0; n < m_variants.size(); ++n) {
        if (study.Variants[n].Ticked) {
            Renew(m_variants[n], m_besideScratch, study.Variants[n].Design,
                  BesideCharts(Charts(), false));
        } else {
            m_variants[n].reset();
        }
    }
}

std::vector<BesideResults> frmWorkbench::Beside() const {
    constexpr Colour BaselineColour{127, 127, 127};
    std::vector<BesideResults> beside;
    if (m_baseline) {
        beside.push_back({"Baseline", BaselineColour, true, &m_baseline->Results});
    }
    const std::vector<Variant>& variants = m_desk.Current.Study().Variants;
    for (std::size_t n = 0; n < m_variants.size(); ++n) {
        if (m_variants[n]) {
            beside.push_back({variants[n].Name, variants[n].Drawn, false, &m_variants[n]->Results});
        }
    }
    return beside;
}

void frmWorkbench::ComposeCharts() {
    const std::vector<BesideResults> beside = Beside();
    const bool solved = m_now && m_now->Results.Outcome.Solved;
    ChartsContent content;
    content.Charts = Charts();
    // Charts that were chosen since the last good design have nothing in it.
    const bool usable = m_good && m_good->Charts == Charts();
    content.Now = solved ? &m_now->Results : usable ? &m_good->Results : nullptr;
    content.Maps = m_now ? &m_now->Results : nullptr; // a map shows what can be reached
    content.Faded = !solved;
    content.Beside = beside;
    content.Targets = m_desk.Current.Study().Targets;
    content.Held = m_held || m_desk.Current.Steps().IsHeld();
    content.Hover = m_hover;
    if (const CStudyPanel* const study = Studies.InSight()) {
        content.Study = study->OverlayNow();
    }
    m_charts.Compose(content);
}

void frmWorkbench::ShowCorner() {
    if (!m_now) {
        return;
    }
    const DesignResults& results = m_now->Results;
    CornerContent content;
    content.Now.Entered = m_now->Design;
    if (results.Outcome.Solved) {
        content.Now.Solved = results.Points;
    }
    if (m_baseline) {
        content.Baseline = CornerShape{m_baseline->Design, {}};
        if (m_baseline->Results.Outcome.Solved) {
            content.Baseline->Solved = m_baseline->Results.Points;
        }
    }
    content.Catalogue = CatalogueOf(m_now->Design.Data);
    content.Selected = Points.SelectedPoints();
    content.Faulty = results.Faulty;
    const CStudyPanel* const study = Studies.InSight();
    if (study != nullptr && study->OverlayNow() != nullptr) {
        content.Places = study->OverlayNow()->Places;
    }
    Corner.Show(std::move(content));
    if (std::exchange(m_fitCorner, false)) {
        Corner.Fit();
    }
}

std::string frmWorkbench::FailureWords() const {
    const Suspension& document = m_desk.Program.Document;
    const bool ownFails = !m_now->Results.Outcome.Solved;
    const CDocument& current = m_desk.Current;
    const bool gridFails = !document.ResultsValid && !current.NeedsCalculation();
    if (!ownFails && !gridFails) {
        return {};
    }
    return ownFails ? FailureLine(m_now->Results.Outcome.Failure, m_scratch, m_desk.Program.Units)
                    : FailureLine(current.LastFailure(), document, m_desk.Program.Units);
}

void frmWorkbench::ShowHead() {
    const std::string failure = m_now ? FailureWords() : "";
    // What became of the last typing is the news, what fails stood there before it.
    labHead.Caption = Points.Note.empty() || failure.empty() ? Points.Note + failure
                                                             : Points.Note + ". " + failure;
    const std::string& path = m_desk.Program.DocumentPath;
    Caption = "Workbench";
    if (m_now) {
        Caption = (path.empty() ? "New suspension" : FileServices::FileName(path)) + " - Workbench";
    }
}

// --- Charts -------------------------------------------------------------------------------------

const std::vector<StudyChart>& frmWorkbench::Charts() const {
    return m_desk.Current.Study().Charts;
}

void frmWorkbench::SetChart(std::size_t n, const StudyChart& chart) {
    StudyData study = m_desk.Current.Study();
    if (n < study.Charts.size() && HasCurve(chart.Channel)) {
        m_chartInHand = n;
        study.Charts[n] = chart;
        m_desk.Current.ChangeStudy(std::move(study));
    }
}

void frmWorkbench::SetChartCount(std::size_t count) {
    StudyData study = m_desk.Current.Study();
    count = std::clamp<std::size_t>(count, 1, MostCharts);
    for (const StudyChart& chart : DefaultCharts) {
        const bool shown =
            std::find(study.Charts.begin(), study.Charts.end(), chart) != study.Charts.end();
        if (!shown && study.Charts.size() < count) {
            study.Charts.push_back(chart);
        }
    }
    study.Charts.resize(count, DefaultCharts.front());
    m_desk.Current.ChangeStudy(std::move(study));
}

void frmWorkbench::Chart_Hovered(std::size_t n, std::optional<ChartPoint> place) {
    m_hover.reset();
    if (place && n < Charts().size()) {
        m_hover = WorkbenchCharts::TravelAt(m_desk.Program, Charts()[n], *place);
    }
    ComposeCharts();
}

void frmWorkbench::Chart_TravelMoved(std::size_t n, const ChartPoint& place, bool held) {
    if (n < Charts().size()) {
        m_held = held;
        Chart_TakenInHand(n);
        MoveTo(WorkbenchCharts::TravelAt(m_desk.Program, Charts()[n], place));
        m_stale = true; // axes may shrink again when the hand lets go
    }
}

// --- Corner -------------------------------------------------------------------------------------

void frmWorkbench::MovePoint(PointNumber number, const SuspPoint& place) {
    Design design = DesignOf(m_desk.Program.Document);
    SuspPoint& point = design.Points[number];
    // A hand is not as exact as a double: what it moves comes to rest on digits that show.
    const double perUnit =
        HundredthsPerUnit * UsableUnit(m_desk.Program.Units, ucDisplacement).Factor;
    for (const PointAxis& axis : PointAxes()) {
        if (point.*axis.Member != place.*axis.Member) { // exactly: it was moved along this axis
            point.*axis.Member = std::round(place.*axis.Member * perUnit) / perUnit;
        }
    }
    if (!m_desk.Current.Steps().IsHeld()) {
        m_desk.Current.Hold();
    }
    m_desk.Current.Change(MoveName(design.Data, number, -1), design);
}

} // namespace corvanta
