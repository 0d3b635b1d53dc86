#include "shell/frmTarget.h"

#include "model/Channels.h"
#include "model/Failure.h"
#include "model/NumberText.h"
#include "platform/NiceNumbers.h"
#include "shell/AxisRange.h"
#include "shell/MLibGUI.h"
#include "shell/TypedNumber.h"
#include "study/DesignResults.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 5400, 4800};
constexpr double ToleranceShare = 0.1; ///< of what the curve runs through, at first

/// A value with a tolerance, all along.
bool IsPlain(const std::vector<BandCorner>& band) {
    return band.size() == 1 ||
           (band.size() == 2 && band[0].Low == band[1].Low && band[0].High == band[1].High);
}

std::vector<Target>::const_iterator Find(const std::vector<Target>& targets, int channel,
                                         std::int32_t variable) {
    return std::find_if(targets.begin(), targets.end(), [&](const Target& target) {
        return target.Channel == channel && target.Variable == variable;
    });
}

} // namespace

const frmTarget::Field frmTarget::Fields[5] = {
    {&frmTarget::txtValue, &Numbers::Value, FieldKind::Value},
    {&frmTarget::txtTolerance, &Numbers::Tolerance, FieldKind::Value},
    {&frmTarget::txtFrom, &Numbers::From, FieldKind::Travel},
    {&frmTarget::txtTo, &Numbers::To, FieldKind::Travel},
    {&frmTarget::txtWeight, &Numbers::Weight, FieldKind::Plain},
};

frmTarget::frmTarget(Desk& desk, int channel, std::int32_t variable)
    : m_desk(desk),
      m_channel(channel),
      m_variable(variable == vvAlongRackTravel ? vvAlongRackTravel : vvAlongWheelTravel) {
    Caption = "Target";
    Frame.Name = "frmTarget";
    Frame.Placement = DesignSize;
    txtValue.Caption = "&Value:";
    txtTolerance.Caption = "&Tolerance, plus or minus:";
    txtFrom.Caption = "&From:";
    txtTo.Caption = "T&o:";
    txtWeight.Caption = "&Weight:";
    txtWeight.ToolTip = "Above 0: how much the target counts beside the others";
    chkReplace.Caption = "R&eplace it by a value with a tolerance";
    cmdOK.Caption = "OK";
    cmdRemove.Caption = "&Remove";
    cmdRemove.ToolTip = "The curve has no target any more";
    cmdCancel.Caption = "Cancel";
    cmdHelp.Caption = "&Help";
}

void frmTarget::Open() {
    if (m_desk.Store != nullptr) {
        RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
    }
    const ChannelRecord& record = m_desk.Program.Channels[m_channel];
    const std::string& length = m_desk.Program.Units[ucDisplacement].Label;
    const bool alongRack = m_variable == vvAlongRackTravel;
    labCurve.Caption = std::string(TrimBlanks(record.Title)) +
                       (alongRack ? " along rack travel" : " along wheel travel");
    txtValue.Unit = txtTolerance.Unit = record.UnitLabel;
    txtFrom.Unit = txtTo.Unit = length;
    txtFrom.ToolTip = txtTo.ToolTip =
        length + (alongRack ? ", rack travel from its centre" : ", wheel travel, bump positive");
    m_shown = Suggested();
    const Target* const target = Existing();
    if (target != nullptr) {
        const BandCorner& corner = target->Band.front();
        m_shown = {(corner.Low + corner.High) / 2, (corner.High - corner.Low) / 2, corner.Travel,
                   target->Band.back().Travel, target->Weight};
    }
    for (const Field& field : Fields) {
        (this->*field.Box).Text = TextOf(field, m_shown.*field.Number);
    }
    ShowBand(target);
    cmdRemove.Enabled = target != nullptr;
    Focus = &txtValue;
    IsOpen = true;
}

void frmTarget::ShowBand(const Target* target) {
    m_plainBand = target == nullptr || IsPlain(target->Band);
    labBand.Visible = chkReplace.Visible = !m_plainBand;
    chkReplace.Checked = false;
    if (!m_plainBand) {
        const std::size_t corners = target->Band.size();
        labBand.Caption = "The target is a band with " + std::to_string(corners) +
                          " corners, from " + txtFrom.Text + " to " + txtTo.Text + " " +
                          txtTo.Unit + ". It stays as it is unless you replace it.";
    }
    chkReplace_Click();
}

void frmTarget::Close() {
    if (IsOpen && m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, false);
    }
    IsOpen = false;
}

const Target* frmTarget::Existing() const {
    const std::vector<Target>& targets = m_desk.Current.Study().Targets;
    const auto found = Find(targets, m_channel, m_variable);
    return found == targets.end() ? nullptr : &*found;
}

/// The value at static as it is read off, over the whole travel.
frmTarget::Numbers frmTarget::Suggested() const {
    const SuspensionData& data = m_desk.Program.Document.Data;
    const ChannelRecord& record = m_desk.Program.Channels[m_channel];
    const auto factor = static_cast<double>(UsableUnit(m_desk.Program.Units, record.Class).Factor);
    const double lastDigit = CAxisRange(record.Format).LastDigit();
    const bool alongRack = m_variable == vvAlongRackTravel;
    Numbers numbers{0, lastDigit / factor, alongRack ? -data.RackTravel : -data.Droop,
                    alongRack ? data.RackTravel : data.Bump};
    const auto scratch = std::make_unique<Suspension>();
    const std::optional<Curve> curve =
        CurveOfDesign(*scratch, DesignOf(m_desk.Program.Document), m_desk.Current.Settings(),
                      m_channel, m_variable, {});
    if (!curve || curve->X.empty()) {
        return numbers;
    }
    const auto [least, most] = std::minmax_element(curve->Y.begin(), curve->Y.end());
    const double extent = std::abs((*most - *least) * factor);
    const double atStatic = curve->Y[curve->Static.value_or(0)] * factor;
    numbers.Value = (std::round(atStatic / lastDigit) + 0.0) * lastDigit / factor; // no "-0"
    numbers.Tolerance =
        NiceStep(std::max(extent * ToleranceShare, lastDigit), NiceWay::Up) / factor;
    numbers.From = curve->X.front();
    numbers.To = curve->X.back();
    return numbers;
}

std::string frmTarget::TextOf(const Field& field, double stored) const {
    const Program& program = m_desk.Program;
    switch (field.Kind) {
    case FieldKind::Value:
        return FormatChannelValue(program.Units, stored, program.Channels[m_channel].Class);
    case FieldKind::Travel:
        return FormatChannelValue(program.Units, stored, ucDisplacement);
    default:
        return NumberToText(stored, program.Units.NumberSeparators);
    }
}

/// What a box stands for: what it shows untouched, with all its digits, or what was typed. Throws
/// Failure for a text that can't be taken.
double frmTarget::ValueOf(const Field& field) const {
    const FundamentalUnits& units = m_desk.Program.Units;
    const NumberBox& box = this->*field.Box;
    if (box.Text == TextOf(field, m_shown.*field.Number)) {
        return m_shown.*field.Number;
    }
    const std::string place = ReplaceAll(box.Caption.substr(0, box.Caption.find(':')), "&", "");
    const auto typed = ReadTypedNumber(box.Text, units.NumberSeparators, box.Unit);
    if (!typed || TrimBlanks(box.Text).empty()) {
        RaiseNoNumber(place, box.Text, units.NumberSeparators);
    }
    switch (field.Kind) {
    case FieldKind::Value:
        return ParseChannelValue(units, typed->Text, m_desk.Program.Channels[m_channel].Class);
    case FieldKind::Travel:
        return ParseChannelValue(units, typed->Text, ucDisplacement);
    default:
        break;
    }
    const double weight = LeadingNumber(typed->Text);
    if (!(weight > 0)) {
        throw Failure(fnInvalidCall, "The weight must be above 0.");
    }
    return weight;
}

/// The target as it is typed. Throws Failure, the box in question marked, when it is none.
Target frmTarget::Typed() {
    Numbers numbers;
    for (const Field& field : Fields) {
        NumberBox& box = this->*field.Box;
        box.Fault = true;
        Focus = &box;
        numbers.*field.Number = ValueOf(field);
        box.Fault = false;
    }
    Focus = nullptr;
    const Target* const existing = Existing();
    Numbers sameBand = numbers;
    sameBand.Weight = m_shown.Weight;
    const bool kept = m_plainBand ? sameBand == m_shown : !chkReplace.Checked;
    Target target = existing != nullptr && kept
                        ? *existing
                        : PlainTarget(m_channel, m_variable, numbers.Value, numbers.Tolerance,
                                      numbers.From, numbers.To);
    target.Weight = numbers.Weight;
    const std::string fault = FaultOfTarget(target);
    if (!fault.empty()) {
        throw Failure(fnInvalidCall, "The target can't be used: " + fault + ".");
    }
    return target;
}

void frmTarget::NumberBox_Changed(NumberBox& box) {
    for (const Field& field : Fields) {
        if (&(this->*field.Box) == &box) {
            try {
                (void)ValueOf(field);
                box.Fault = false;
            } catch (const Failure&) {
                box.Fault = true; // half typed
            }
        }
    }
}

void frmTarget::NumberBox_LostFocus(NumberBox& box) {
    box.Text = CommittedText(box.Text, m_desk.Program.Units.NumberSeparators, box.Unit);
    NumberBox_Changed(box);
}

void frmTarget::chkReplace_Click() {
    for (const Field& field : Fields) {
        NumberBox& box = this->*field.Box;
        box.Enabled = m_plainBand || chkReplace.Checked || &box == &txtWeight;
    }
}

/// Puts a target in the place of the one that there is, or takes that away.
void frmTarget::Store(const Target* target) {
    StudyData study = m_desk.Current.Study();
    const auto found = Find(study.Targets, m_channel, m_variable);
    auto place = study.Targets.begin() + (found - study.Targets.begin());
    if (place != study.Targets.end()) {
        place = study.Targets.erase(place);
    }
    if (target != nullptr) {
        study.Targets.insert(place, *target);
    }
    if (study != m_desk.Current.Study()) {
        m_desk.Current.ChangeStudy(std::move(study));
    }
}

void frmTarget::cmdOK_Click() {
    try {
        const Target target = Typed();
        Store(&target);
        Close();
    } catch (...) {
        m_desk.Messages.ShowMessage(FailureInFlight().Description(), msExclamation);
    }
}

void frmTarget::cmdRemove_Click() {
    Store(nullptr);
    Close();
}

void frmTarget::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(HelpTopicNumber);
}

} // namespace corvanta
