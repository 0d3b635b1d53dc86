#include "shell/frmOptions.h"

#include "model/Failure.h"
#include "shell/MLibGUI.h"
#include "solver/SInitGeo.h"

#include <initializer_list>
#include <string>

namespace corvanta {

namespace {

constexpr WindowPlacement DesignSize{0, 0, 5700, 5100};

using Group = std::initializer_list<OptionButton*>;

/// Selects the button whose caption is the label of a unit; a label without a button selects none.
void ShowLabel(Group group, const std::string& label) {
    for (OptionButton* button : group) {
        button->Selected = button->Caption == label;
    }
}

/// The caption of the selected button as the label of a unit, which stays as it is with none
/// selected.
void TakeLabel(std::string& label, Group group) {
    for (const OptionButton* button : group) {
        if (button->Selected) {
            label = button->Caption;
        }
    }
}

} // namespace

frmOptions::frmOptions(Desk& desk, ShellHost& main) : m_desk(desk), m_main(main) {
    Caption = "Options";
    Frame.Name = "frmOptions";
    Frame.Placement = DesignSize;
    fraDisplacement.Caption = "Displacement";
    optInches.Caption = "in";
    optMillimetres.Caption = "mm";
    fraMassAndForce.Caption = "Mass and Force";
    optKilograms.Caption = "kg";
    optPounds.Caption = "lbs";
    fraSpringRate.Caption = "Spring Rate";
    optKilogramsPerMillimetre.Caption = "kg/mm";
    optNewtonsPerMillimetre.Caption = "N/mm";
    optPoundsPerInch.Caption = "lb/in";
    cmdOK.Caption = "OK";
    cmdCancel.Caption = "Cancel";
    cmdHelp.Caption = "&Help";
}

void frmOptions::Open() {
    const FundamentalUnits& units = m_desk.Program.Units;
    if (m_desk.Store != nullptr) {
        RestoreWindow(Frame, m_desk.Windows.ScreenSize, *m_desk.Store, -1, -1);
    }
    ShowLabel({&optInches, &optMillimetres}, units[ucDisplacement].Label);
    ShowLabel({&optKilograms, &optPounds}, units[ucForce].Label);
    ShowLabel({&optKilogramsPerMillimetre, &optNewtonsPerMillimetre, &optPoundsPerInch},
              units[ucRate].Label);
    IsOpen = true;
}

void frmOptions::Close() {
    if (IsOpen && m_desk.Store != nullptr) {
        SaveWindow(Frame, *m_desk.Store, false);
    }
    IsOpen = false;
}

void frmOptions::cmdOK_Click() {
    if (!m_main.MayDropEdits()) {
        return;
    }
    try {
        TakeUnits();
        m_main.RefreshGUI(false);
        m_main.ResetEditDialog();
        Close();
    } catch (...) {
        m_main.ResetEditDialog(); // it shows the former units
        m_desk.Messages.ShowMessage("There was an error while changing the options.\rError was: " +
                                        FailureInFlight().Description(),
                                    msExclamation);
    }
}

void frmOptions::TakeUnits() {
    Program& program = m_desk.Program;
    TakeLabel(program.Units[ucDisplacement].Label, {&optInches, &optMillimetres});
    TakeLabel(program.Units[ucMass].Label, {&optKilograms, &optPounds});
    TakeLabel(program.Units[ucForce].Label, {&optKilograms, &optPounds});
    TakeLabel(program.Units[ucRate].Label,
              {&optKilogramsPerMillimetre, &optNewtonsPerMillimetre, &optPoundsPerInch});
    program.Channels.ChannelsSetup(program.Units);
    // The fitted curves hold the former units, whether the geometry can be set up or not.
    program.Document.ResultsValid = false;
    InitGeometry(program.Document, program.Channels, program.Units, m_desk.Messages);
}

void frmOptions::cmdHelp_Click() {
    m_desk.Help.ShowHelpTopic(htOptions);
}

} // namespace corvanta
