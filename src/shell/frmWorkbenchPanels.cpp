// The travel, the history, the variants and the studies of the workbench; the window around them is
// in frmWorkbench.cpp.

#include "shell/frmWorkbench.h"

#include "shell/StudyReport.h"
#include "shell/TypedNumber.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace corvanta {

namespace {

constexpr double TurnsPerSecond = 0.4; ///< of playing

} // namespace

// --- Travel -------------------------------------------------------------------------------------

/// To the nearest position of the grid; a travel that is no number stays.
void frmWorkbench::MoveTo(const TravelPlace& place) {
    const Suspension& document = m_desk.Program.Document;
    if (!document.DataLoaded) {
        return;
    }
    const TravelPlace now = Place();
    m_desk.Current.ShowPosition(
        NearestWheelStep(document, std::isnan(place.Wheel) ? now.Wheel : place.Wheel),
        NearestRackStep(document, std::isnan(place.Rack) ? now.Rack : place.Rack));
}

void frmWorkbench::ShowTravel() {
    const Suspension& document = m_desk.Program.Document;
    const TravelPlace place = Place();
    // Wheel steps count down from full bump, the slider up from full droop.
    sldBump.Last = document.NW - 1;
    sldBump.Static = document.NW + 1 - document.StaticWheel;
    sldBump.Value = document.NW + 1 - NearestWheelStep(document, place.Wheel);
    sldRack.Last = document.NR - 1;
    sldRack.Static = document.StaticRack - 2;
    sldRack.Value = NearestRackStep(document, place.Rack) - 2;
    const bool loaded = document.DataLoaded;
    sldBump.Enabled = txtBump.Enabled = loaded && document.NW > 1;
    sldRack.Enabled = txtRack.Enabled = loaded && document.NR > 1;
    const FundamentalUnits& units = m_desk.Program.Units;
    const auto show = [&](NumberBox& box, double travel) {
        box.Unit = units[ucDisplacement].Label;
        box.Text = FormatChannelValue(units, travel, ucDisplacement);
        box.Fault = false;
    };
    show(txtBump, place.Wheel);
    show(txtRack, place.Rack);
}

void frmWorkbench::sldBump_Moved(int value) {
    const Suspension& document = m_desk.Program.Document;
    MoveTo({WheelTravelAtStep(document, document.NW + 1 - value), Place().Rack});
}

void frmWorkbench::sldRack_Moved(int value) {
    MoveTo({Place().Wheel, RackTravelAtStep(m_desk.Program.Document, value + 2)});
}

void frmWorkbench::txtTravel_Changed(NumberBox& box) const {
    box.Fault = !ReadTypedNumber(box.Text, m_desk.Program.Units.NumberSeparators, box.Unit);
}

void frmWorkbench::txtTravel_LostFocus(NumberBox& box) {
    const FundamentalUnits& units = m_desk.Program.Units;
    const auto typed = ReadTypedNumber(box.Text, units.NumberSeparators, box.Unit);
    if (typed) {
        const double travel = ParseChannelValue(units, typed->Text, ucDisplacement);
        MoveTo(&box == &txtBump ? TravelPlace{travel, Place().Rack}
                                : TravelPlace{Place().Wheel, travel});
    }
    m_stale = true; // the box shows the position of the grid that it came to
}

void frmWorkbench::Play(PlayMode mode) {
    m_play = m_desk.Program.Document.DataLoaded ? mode : PlayMode::None;
    m_phase = 0;
}

void frmWorkbench::PlayOn(double seconds) {
    if (m_play == PlayMode::None || !m_now) {
        return;
    }
    m_phase += seconds * TurnsPerSecond;
    const DesignResults& grid = m_now->Results;
    const auto swing = [](double first, double last, double phase) {
        const double share = std::sin(phase * 2 * std::numbers::pi);
        return share < 0 ? -share * first : share * last;
    };
    TravelPlace place = Place();
    if (m_play != PlayMode::Steer) {
        place.Wheel = swing(grid.FirstStep.Wheel, grid.LastStep.Wheel, m_phase);
    }
    if (m_play != PlayMode::Heave) { // both: a third slower, so that the pad is covered
        place.Rack = swing(grid.FirstStep.Rack, grid.LastStep.Rack,
                           m_play == PlayMode::Both ? m_phase * 2 / 3 : m_phase);
    }
    MoveTo(place);
}

// --- History ------------------------------------------------------------------------------------

void frmWorkbench::ShowLists() {
    const History& history = m_desk.Current.Steps();
    Steps.clear();
    for (std::size_t n = 0; n < history.Steps().size(); ++n) {
        Steps.push_back({history.Steps()[n].Name, n > history.Current()});
    }
    CurrentStep = static_cast<int>(history.Current());
    const auto show = [](Control& button, const char* caption, const std::string& step,
                         const char* keys) {
        button.Enabled = !step.empty();
        button.Caption = caption;
        button.ToolTip = caption + (step.empty() ? "" : " " + step) + keys;
    };
    show(cmdUndo, "Undo", history.UndoName(), " (Ctrl+Z)");
    show(cmdRedo, "Redo", history.RedoName(), " (Ctrl+Shift+Z)");
    cmdSetBaseline.Enabled = cmdKeepVariant.Enabled = !history.IsEmpty();
    Variants.clear();
    for (const Variant& variant : m_desk.Current.Study().Variants) {
        Variants.push_back({variant.Name, variant.Note, variant.Drawn, variant.Ticked});
    }
}

void frmWorkbench::GoToStep(std::size_t step) {
    if (m_main.TakeTypedEdits()) {
        m_desk.Current.GoTo(step);
    }
}

void frmWorkbench::Undo() {
    if (m_main.TakeTypedEdits()) {
        m_desk.Current.Undo();
    }
}

void frmWorkbench::Redo() {
    if (m_main.TakeTypedEdits()) {
        m_desk.Current.Redo();
    }
}

// --- Variants -----------------------------------------------------------------------------------

void frmWorkbench::SetBaseline() {
    if (!m_desk.Current.Steps().IsEmpty()) {
        StudyData study = m_desk.Current.Study();
        study.Baseline = DesignOf(m_desk.Program.Document);
        m_desk.Current.ChangeStudy(std::move(study));
    }
}

void frmWorkbench::ChangeVariants(const std::vector<Variant>& variants) {
    StudyData study = m_desk.Current.Study();
    study.Variants = variants;
    m_desk.Current.ChangeStudy(std::move(study));
}

void frmWorkbench::KeepVariant() {
    if (!m_desk.Current.Steps().IsEmpty()) {
        std::vector<Variant> variants = m_desk.Current.Study().Variants;
        variants.push_back(NewVariant(variants, "", DesignOf(m_desk.Program.Document)));
        ChangeVariants(variants);
    }
}

void frmWorkbench::RestoreVariant(std::size_t n) {
    const std::vector<Variant>& variants = m_desk.Current.Study().Variants;
    if (n < variants.size() && m_main.TakeTypedEdits()) {
        const Variant variant = variants[n];
        m_desk.Current.Change("Restore " + variant.Name, variant.Design);
    }
}

void frmWorkbench::DeleteVariant(std::size_t n) {
    std::vector<Variant> variants = m_desk.Current.Study().Variants;
    if (n < variants.size()) {
        variants.erase(variants.begin() + static_cast<std::ptrdiff_t>(n));
        ChangeVariants(variants);
    }
}

void frmWorkbench::TickVariant(std::size_t n, bool ticked) {
    std::vector<Variant> variants = m_desk.Current.Study().Variants;
    if (n < variants.size()) {
        variants[n].Ticked = ticked;
        ChangeVariants(variants);
    }
}

bool frmWorkbench::RenameVariant(std::size_t n, const std::string& name) {
    std::vector<Variant> variants = m_desk.Current.Study().Variants;
    if (n >= variants.size() || variants[n].Name == name) {
        return true;
    }
    Points.Note = FaultOfVariantName(variants, name);
    m_stale = true;
    if (!Points.Note.empty()) {
        return false;
    }
    variants[n].Name = name;
    ChangeVariants(variants);
    return true;
}

void frmWorkbench::SetVariantNote(std::size_t n, const std::string& note) {
    std::vector<Variant> variants = m_desk.Current.Study().Variants;
    if (n < variants.size() && variants[n].Note != note) {
        variants[n].Note = note;
        ChangeVariants(variants);
    }
}

// --- Studies ------------------------------------------------------------------------------------

void frmWorkbench::ShowStudy(std::optional<std::size_t> n) {
    Studies.Show(n);
    if (Studies.Shown() && Tour.IsOpen()) { // its bubble would lie upon the study
        Tour.cmdSkip_Click();
    }
    m_lastStudy = Studies.Shown().value_or(m_lastStudy);
    m_stale = true;
}

void frmWorkbench::BeginTour() {
    ShowStudy(std::nullopt);
    Tour.Begin();
}

void frmWorkbench::ToggleStudies() {
    ShowStudy(Studies.Shown() ? std::nullopt : std::optional(m_lastStudy));
}

void frmWorkbench::RunStudy() const {
    const std::optional<std::size_t> shown = Studies.Shown();
    if (shown && Studies.All()[*shown]->cmdRun.Enabled) {
        Studies.All()[*shown]->cmdRun_Click();
    }
}

void frmWorkbench::cmdHelp_Click() {
    const CStudyPanel* const study = Studies.InSight();
    m_desk.Help.ShowHelpTopic(study == nullptr ? htWorkbench : study->HelpTopicNumber);
}

bool frmWorkbench::PollStudies() {
    const bool changed = Studies.Poll();
    m_stale = m_stale || changed;
    return changed;
}

void frmWorkbench::ReportStudy() {
    if (const CStudyPanel* const study = Studies.InSight();
        study != nullptr && study->HasAnswer()) {
        AskAndReportStudy(m_desk, m_main, *study);
    }
}

/// What the studies show of the chart that was worked with last is about another one now.
void frmWorkbench::Chart_TakenInHand(std::size_t n) {
    if (n < Charts().size() && std::exchange(m_chartInHand, n) != n) {
        Studies.Follow(DocumentChange::Beside);
        m_stale = true;
    }
}

std::vector<PointCoordinate> frmWorkbench::SelectedCoordinates() const {
    return Points.SelectedCoordinates();
}

void frmWorkbench::SelectCoordinate(const PointCoordinate& coordinate) {
    Points.Select(coordinate);
    m_stale = true;
}

std::string frmWorkbench::KeepAsVariant(const std::string& name, const std::string& note,
                                        const Design& design) {
    std::vector<Variant> variants = m_desk.Current.Study().Variants;
    variants.push_back(NewVariant(variants, name, design));
    variants.back().Note = note;
    ChangeVariants(variants);
    return variants.back().Name;
}

} // namespace corvanta
