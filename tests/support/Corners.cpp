#include "tests/support/Corners.h"

#include "calculation/SCalcs.h"
#include "platform/Messages.h"
#include "solver/SInitGeo.h"
#include "tests/support/RecordingMessageBox.h"

#include <stdexcept>

namespace corvanta::test {

FundamentalUnits UnitsOf(const std::string& displacement, const std::string& force,
                         const std::string& mass, const std::string& rate) {
    FundamentalUnits units;
    units[ucDisplacement].Label = displacement;
    units[ucForce].Label = force;
    units[ucMass].Label = mass;
    units[ucRate].Label = rate;
    units.SetFundUnitsData();
    return units;
}

FundamentalUnits MetricUnits() {
    return UnitsOf("mm", "N", "kg", "N/mm");
}

ChannelCatalogue MetricChannels() {
    FundamentalUnits units = MetricUnits();
    ChannelCatalogue channels;
    channels.ChannelsSetup(units);
    return channels;
}

Program SmallGrid() {
    Program program;
    program.Units = MetricUnits();
    program.Channels.ChannelsSetup(program.Units);
    program.Document.NR = 3;
    program.Document.NW = 4;
    program.Document.StaticRack = 3;
    program.Document.StaticWheel = 4;
    return program;
}

void SetUpCorner(Suspension& document) {
    ChannelCatalogue channels = MetricChannels();
    RecordingMessageBox box;
    Messages messages(box);
    InitGeometry(document, channels, MetricUnits(), messages);
}

void CalculateCorner(Suspension& document) {
    RecordingMessageBox box;
    Messages messages(box);
    document.ResultsValid = false;
    RunCalculation(document, MetricChannels(), messages);
    if (!document.ResultsValid) {
        throw std::runtime_error(box.Shown.empty() ? "no results" : box.Shown[0].Prompt);
    }
}

Suspension DoubleWishboneCorner(std::int32_t springMechanism, std::int32_t arbMechanism,
                                std::int32_t chassisMotion) {
    Suspension document;
    SuspensionData& data = document.Data;
    data.SpringMechanism = springMechanism;
    data.ARBMechanism = arbMechanism;
    data.ChassisMotion = chassisMotion;
    data.DriveShaftExists = true;
    data.Bump = data.Droop = 20;
    data.RackTravel = 10;

    PointSet& points = document.StaticPoints();
    points[ptWTCP] = {0, 750, 0};
    points[ptWC] = {0, 745, 300};
    points[ptUWO] = {8, 690, 440};
    points[ptUWIR] = {150, 400, 425};
    points[ptUWIF] = {-140, 390, 432};
    points[ptLWO] = {-6, 715, 160};
    points[ptLWIR] = {180, 350, 148};
    points[ptLWIF] = {-170, 360, 140};
    points[ptTRO] = {95, 705, 215};
    points[ptTRI] = {90, 360, 200};
    points[ptDSO] = {0, 700, 300};
    points[ptDSI] = {10, 150, 290};
    points[ptPRI] = {4, 330, 520};
    points[ptR1P1] = {0, 300, 480};
    points[ptR1P2] = {40, 302, 483};
    points[ptR1O] = {6, 290, 540};
    points[ptR2I] = {10, 180, 545};
    points[ptR2P1] = {12, 170, 490};
    points[ptR2P2] = {50, 171, 492};
    points[ptR2O] = {14, 150, 550};
    points[ptSAI] = {8, 40, 560};
    points[ptARP1] = {250, 3, 120};
    points[ptARP2] = {252, 200, 124};
    points[ptARI] = {70, 550, 60};
    points[ptARDL] = {60, 560, 165};
    points[ptRHM] = {0, 0, 100};
    points[ptTBDLI] = {2, 285, 532};
    points[ptTBDLO] = {140, 150, 450};
    points[ptTBP1] = {130, 0, 300};
    points[ptTBP2] = {130, 60, 300};
    points[ptTSO] = {300, 0, 460};
    points[ptLCSI] = {5, 280, 545};

    if (arbMechanism == abToRocker) {
        points[ptARDL] = {10, 310, 530};
        points[ptARI] = {130, 300, 300};
    }
    // The outermost pickup sits on what its mechanism moves it with.
    switch (springMechanism) {
    case smPullrodToUpright:
    case smPullrodToUpperWishbone:
        points[ptPRO] = {10, 670, 432};
        break;
    case smDirectToUpperWishbone:
    case smRockerToUpperWishbone:
        points[ptPRO] = {6, 360, 470};
        points[ptSAI] = {8, 150, 300};
        break;
    default:
        points[ptPRO] = {2, 670, 185};
        break;
    }
    SetUpCorner(document);
    return document;
}

Suspension StrutCorner(std::int32_t arbMechanism) {
    Suspension document;
    SuspensionData& data = document.Data;
    data.SpringMechanism = smMacPhersonStrut;
    data.ARBMechanism = arbMechanism;
    data.DriveShaftExists = true;
    data.Bump = data.Droop = 20;
    data.RackTravel = 10;

    PointSet& points = document.StaticPoints();
    points[ptWTCP] = {0, 745, 0};
    points[ptWC] = {0, 740, 300};
    points[ptLWO] = {-5, 700, 180};
    points[ptLWIR] = {250, 380, 195};
    points[ptLWIF] = {-40, 370, 185};
    points[ptTRO] = {120, 690, 260};
    points[ptTRI] = {125, 350, 262};
    points[ptDSO] = {0, 690, 300};
    points[ptDSI] = {10, 150, 290};
    points[ptPRO] = {8, 660, 420};
    points[ptSAI] = {30, 590, 800};
    points[ptARP1] = {-250, 3, 120};
    points[ptARP2] = {-252, 200, 124};
    points[ptARI] = {-70, 550, 60};
    points[ptARDL] = {-60, 560, 165};
    points[ptRHM] = {0, 0, 120};
    SetUpCorner(document);
    return document;
}

} // namespace corvanta::test
