#pragma once

#include "platform/Controls.h"
#include "shell/Desk.h"
#include "study/Target.h"

#include <cstdint>
#include <string>

namespace corvanta {

/// The dialog that sets the target of a channel along wheel or rack travel: a value with a
/// tolerance, from one travel to another, and a weight, in display units. It is shown modally.
class frmTarget final : public Window {
  public:
    /// `variable` 1 is along rack travel, 2 along wheel travel.
    frmTarget(Desk& desk, int channel, std::int32_t variable);

    /// Opens on the target that there is, or else on one that suits the curve of the document.
    void Open();

    /// Remembers the place of the dialog and closes it.
    void Close();

    // Events. The control already holds what the user chose or typed.
    void NumberBox_Changed(NumberBox& box);   ///< after each keystroke
    void NumberBox_LostFocus(NumberBox& box); ///< typing has ended
    void chkReplace_Click();
    void cmdOK_Click(); ///< stores the target and closes; a box that can't be taken is told
    void cmdRemove_Click();
    void cmdCancel_Click() { Close(); }
    void cmdHelp_Click();

    static constexpr int HelpTopicNumber = 260;

    Control labCurve; ///< which channel along which travel
    Control labBand;  ///< of a band that is no value with a tolerance
    CheckBox chkReplace;
    NumberBox txtValue, txtTolerance, txtFrom, txtTo, txtWeight;
    Control cmdOK, cmdRemove, cmdCancel, cmdHelp;

  private:
    /// What the boxes stand for, stored units.
    struct Numbers {
        double Value = 0;
        double Tolerance = 0;
        double From = 0;
        double To = 0;
        double Weight = 1;

        friend bool operator==(const Numbers&, const Numbers&) = default;
    };

    enum class FieldKind { Value, Travel, Plain };

    /// A box with what it stands for.
    struct Field {
        NumberBox frmTarget::*Box;
        double Numbers::*Number;
        FieldKind Kind;
    };
    static const Field Fields[5];

    [[nodiscard]] const Target* Existing() const;
    [[nodiscard]] Numbers Suggested() const;
    void ShowBand(const Target* target);
    [[nodiscard]] std::string TextOf(const Field& field, double stored) const;
    [[nodiscard]] double ValueOf(const Field& field) const;
    [[nodiscard]] Target Typed();
    void Store(const Target* target);

    Desk& m_desk;
    int m_channel;
    std::int32_t m_variable;
    Numbers m_shown;         ///< as the dialog opened
    bool m_plainBand = true; ///< the boxes can stand for the band that there is
};

} // namespace corvanta
