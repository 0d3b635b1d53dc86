#include "results/DynamicsReport.h"

#include "model/NumberText.h"

#include <string_view>

namespace corvanta {

namespace {

/// The words that change with the end of the car: load leaves the front under acceleration and
/// comes to it under braking. Two of them keep their blank at the end.
struct ReportWords {
    std::string_view End;
    std::string_view AccelMovement;
    std::string_view BrakeMovement;
    std::string_view AccelLoad;
    std::string_view BrakeLoad;
};

constexpr ReportWords FrontWords{"Front", "extension ", "deflection", "Reduction in",
                                 "Additional "};
constexpr ReportWords RearWords{"Rear", "deflection", "extension ", "Additional ", "Reduction in"};

/// The lines of a report in the user's units.
class ReportText {
  public:
    explicit ReportText(const FundamentalUnits& units) : m_units(units) {}

    void Add(std::string_view line) {
        m_text += m_text.empty() ? "" : "\r\n";
        m_text += line;
    }
    void Add(std::string_view title, double value, std::string_view format, std::string_view unit) {
        Add(std::string(title) + FormatNumber(value, format, m_units.NumberSeparators) +
            std::string(unit));
    }
    void AddLoad(std::string_view change, double load) {
        Add(std::string(change) + " wheel load = " + WithUnit(load, ucForce));
    }
    void AddMovement(std::string_view part, std::string_view movement, double value) {
        AddMovementText(part, movement, WithUnit(value, ucDisplacement));
    }
    void AddBareMovement(std::string_view part, std::string_view movement, double value) {
        AddMovementText(part, movement, FormatChannelValue(m_units, value, ucDisplacement));
    }

    [[nodiscard]] const std::string& Text() const { return m_text; }

  private:
    [[nodiscard]] std::string WithUnit(double value, UnitClass unitClass) const {
        return FormatChannelValue(m_units, value, unitClass) + " " + m_units[unitClass].Label;
    }
    void AddMovementText(std::string_view part, std::string_view movement,
                         const std::string& value) {
        Add(std::string(part) + " " + std::string(movement) + " = " + value);
    }

    const FundamentalUnits& m_units;
    std::string m_text;
};

void AddAcceleration(ReportText& report, const Suspension& document, const ReportWords& words) {
    const DynamicsRecord& dynamics = document.Dynamics;
    const std::string_view movement = words.AccelMovement;
    report.Add("ACCELERATION AT ", document.Data.GAccel, "0.0", " g");
    report.AddLoad(words.AccelLoad, dynamics.LoadAccel);
    report.AddMovement("Tyre", movement, dynamics.TyreAccel);
    report.AddMovement("Rigid link", movement, dynamics.LinkAccel);
    if (IsFrontCorner(document)) { // the rear hubs drive: nothing corrects the front
        report.AddMovement("Suspension", movement, dynamics.SuspAccel);
    } else {
        report.AddBareMovement("Uncorrected Suspension", movement, dynamics.SuspAccel);
        report.AddMovement("Antisquat corrected Suspension", movement, dynamics.SuspAccelCorrected);
    }
    report.AddMovement("Total", movement, dynamics.TotalAccel);
}

void AddBraking(ReportText& report, const Suspension& document, const ReportWords& words) {
    const DynamicsRecord& dynamics = document.Dynamics;
    const std::string_view movement = words.BrakeMovement;
    report.Add("BRAKING AT ", document.Data.GBrake, "0.00", " g");
    report.AddLoad(words.BrakeLoad, dynamics.LoadBrake);
    report.AddMovement("Tyre", movement, dynamics.TyreBrake);
    report.AddMovement("Rigid link", movement, dynamics.LinkBrake);
    report.AddMovement("Uncorrected Suspension", movement, dynamics.SuspBrake);
    report.AddMovement("Antidive corrected Suspension", movement, dynamics.SuspBrakeCorrected);
    report.AddMovement("Total", movement, dynamics.TotalBrake);
}

} // namespace

std::string ShowDynamicsReport(const Program& program, Messages& messages) {
    const Suspension& document = program.Document;
    if (!document.DynamicsValid) {
        messages.ShowMessage("Current settings are not valid for this report.");
        return {};
    }
    const ReportWords& words = IsFrontCorner(document) ? FrontWords : RearWords;
    ReportText report(program.Units);
    report.Add(std::string(words.End) + " suspension with outboard brakes");
    report.Add("Front Brake Bias = ", document.Data.FrontBrakeBalanceSplitPC, "0.0", "%");
    report.Add("");
    AddAcceleration(report, document, words);
    report.Add("");
    AddBraking(report, document, words);
    report.Add("");
    report.Add("NOTES");
    report.Add("Results use velocity ratio & antidive/squat at datum conditions.");
    report.Add("Acceleration forces are applied through rear wheel hubs.");
    report.Add("Braking forces are distributed to front and rear contact patches.");
    return report.Text();
}

} // namespace corvanta
