#include "model/Suspension.h"

namespace corvanta {

void ResetDocument(Suspension& document, ViewSettings& settings) {
    const SuspensionData former = document.Data;
    document.Data = SuspensionData{};
    document.Data.CentreSpringSystem = former.CentreSpringSystem;
    document.Data.KThirdSpring = former.KThirdSpring;
    document.Data.KARB = former.KARB;
    document.Data.Bump = former.Bump;
    document.Data.Droop = former.Droop;
    document.Data.WheelTravelStepSize = former.WheelTravelStepSize;
    document.Data.RackTravel = former.RackTravel;
    document.Data.RackTravelStepSize = former.RackTravelStepSize;
    document.Data.ChassisMotion = former.ChassisMotion;

    document.DataLoaded = false;
    document.ResultsValid = false;
    document.GeometryValid = false;
    document.DynamicsValid = false;
    document.FaultyPoints.clear();
    document.Catalogue = PointCatalogue{};
    document.WheelStates.Clear();
    settings.ViewVariable = vvAlongWheelTravel;
}

double WheelTravelAtStep(const Suspension& document, int wheelStep) {
    return (document.StaticWheel - wheelStep) * document.Data.WheelTravelStepSize;
}

double RackTravelAtStep(const Suspension& document, int rackStep) {
    return (rackStep - document.StaticRack) * document.Data.RackTravelStepSize;
}

bool IsFrontCorner(const SuspensionData& data, const PointSet& staticPoints) {
    return staticPoints[ptWTCP].X <= data.CGX;
}

bool IsFrontCorner(const Suspension& document) {
    return IsFrontCorner(document.Data, document.StaticPoints());
}

} // namespace corvanta
