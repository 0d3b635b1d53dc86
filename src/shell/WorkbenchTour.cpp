#include "shell/WorkbenchTour.h"

#include <array>
#include <string>

namespace corvanta {

namespace {

constexpr const char* Section = "frmWorkbench";
constexpr const char* SeenKey = "TourSeen";

constexpr std::array<TourStep, CWorkbenchTour::Steps> AllSteps{{
    {TourPart::Points, "Points",
     "Type a number, a sum (612.5+3) or a move (+1.5) into a cell. Ctrl+Up and Ctrl+Down move the "
     "selected cells by the step below the table, with Shift by ten; dragging sideways scrubs "
     "them. A changed cell is marked and tells what it was."},
    {TourPart::Charts, "Charts",
     "All curves follow while you move a point. The baseline, the design as it was opened, stays "
     "dashed. Click or drag to set the travel; double-click to see one chart alone; Enter or the "
     "right button to choose what it shows."},
    {TourPart::Corner, "Corner",
     "Drag a ring to move its point in the plane of the view, with X, Y or Z held along that axis; "
     "Esc takes it back. Dragging elsewhere turns the view, the wheel zooms."},
    {TourPart::Travel, "Travel",
     "Move bump and rack by the sliders, by typing, or both on the pad. Heave, Steer and Both play "
     "the travel; Space stops it and goes on. All windows follow."},
    {TourPart::Lists, "History and variants",
     "Each step is a click away, Ctrl+Z takes the last one back. Ctrl+D keeps the design as a "
     "variant, Ctrl+B makes it the baseline, Ctrl+E compares. F1 tells the rest."},
}};

} // namespace

CWorkbenchTour::CWorkbenchTour() {
    cmdBack.Caption = "&Back";
    cmdSkip.Caption = "&Skip";
    cmdSkip.ToolTip = "Leave the tour (Esc). Help > Workbench Tour shows it again";
    GoTo(0);
}

void CWorkbenchTour::Offer(SettingsStore* store) {
    if (m_offered || store == nullptr) {
        return;
    }
    m_offered = true;
    if (store->Read(Section, SeenKey, "").empty()) {
        store->Write(Section, SeenKey, "1");
        Begin();
    }
}

void CWorkbenchTour::Begin() {
    m_offered = true; // called for, it need not come by itself
    m_open = true;
    GoTo(0);
}

void CWorkbenchTour::cmdNext_Click() {
    if (m_step + 1 < Steps) {
        GoTo(m_step + 1);
    } else {
        m_open = false;
    }
}

void CWorkbenchTour::cmdBack_Click() {
    if (m_step > 0) {
        GoTo(m_step - 1);
    }
}

void CWorkbenchTour::cmdSkip_Click() {
    m_open = false;
}

const TourStep& CWorkbenchTour::Step() const {
    return AllSteps[m_step];
}

void CWorkbenchTour::GoTo(std::size_t step) {
    m_step = step;
    labCount.Caption = std::to_string(step + 1) + " of " + std::to_string(Steps);
    const bool last = step + 1 == Steps;
    cmdNext.Caption = last ? "&Done" : "&Next";
    cmdNext.ToolTip = last ? "The tour is over (Enter)" : "The next step (Enter)";
    cmdBack.Enabled = step > 0;
    cmdSkip.Visible = !last;
}

} // namespace corvanta
