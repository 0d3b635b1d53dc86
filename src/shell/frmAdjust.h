#pragma once

#include "platform/Controls.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"

#include <string>

namespace corvanta {

/// A number that is only shown, with its label as the caption and its unit behind it.
struct NumberLabel : Control {
    std::string Text;
    std::string Unit;
};

/// The dialog that moves the static position of the corner to another ride height, the Z of the
/// ride height reference point. It is not modal: the document may change while it is open.
class frmAdjust final : public Window {
  public:
    frmAdjust(Desk& desk, ShellHost& main);

    void Open();

    /// Remembers the place of the dialog and closes it. A target that could not be reached leaves
    /// the reference point, which is again where the wheel stands.
    void Close();

    /// Shows the document as it is, and takes its height as the target.
    void Refresh();

    /// The document may have changed elsewhere: shows its mechanism, and its height if that is
    /// another one. A target that the user typed stays.
    void FollowDocument();

    /// Moves the corner to the target height and lets an open geometry editor take the new points,
    /// and with it what it holds. A failure is told; the reference point may keep the target then,
    /// until another is reached or the dialog closes, but no other point has moved. A target where
    /// the wheel stands already only keeps the choice of the check box.
    void Apply();

    // Events. The control already holds what the user chose or typed.
    void txtTarget_Changed();   ///< after each keystroke
    void txtTarget_LostFocus(); ///< typing has ended
    void cmdApply_Click() { Apply(); }
    void cmdOK_Click(); ///< applies and closes, whatever became of it
    void cmdCancel_Click() { Close(); }
    void cmdHelp_Click();

    static constexpr int HelpTopicNumber = 60;

    Control fraStaticRideHeight;
    NumberLabel labCurrent;
    NumberBox txtTarget;
    NumberLabel labDifference; ///< target minus current, empty while the target is no number
    CheckBox chkAdjustRHByPushRodLength, chkMaintainCamber;
    Control cmdApply, cmdOK, cmdCancel, cmdHelp;

  private:
    void ShowMechanism();
    void ShowHeight();
    void UpdateDifference();
    [[nodiscard]] double TargetHeight() const;
    bool TakeTypedEdits();
    bool Stands();
    bool PutBackHeight();
    void ShowKeptTarget();
    void ShowHeightElsewhere();
    void TakeTarget(std::string& errorText);
    void TakeOver();

    Desk& m_desk;
    ShellHost& m_main;
    double m_currentHeight = 0; ///< where the wheel stands, mm
    double m_storedHeight = 0; ///< of the reference point, mm; the target once an adjustment failed
    double m_difference = 0;   ///< current height minus target, mm: a wheel travel into bump
};

} // namespace corvanta
