#include "solver/StaticState.h"

#include "solver/MLibCoordGeom.h"
#include "solver/MLibMaths.h"
#include "solver/SGetLocn.h"
#include "solver/WheelPosition.h"

namespace corvanta {

namespace {

/// How far inboard of the wheel centre the fictitious stub axle point lies, mm. Long enough that
/// the wheel's attitude is well defined by it.
constexpr double StubAxle = 600;

double Length(const PointSet& points, PointNumber from, PointNumber to) {
    return PointDistance(points[from], points[to]).Distance;
}

void MeasureSpring(StaticLengthRecord& lengths, const PointSet& points,
                   const SuspensionData& data) {
    if (const std::optional<PointNumber> end = MovingSpringEnd(data)) {
        lengths.SpringLength = Length(points, *end, ptSAI);
    }
    if (HasCentreSpring(data)) {
        lengths.CentreSpringLength = Length(points, ptTSI, ptTSO);
    }
}

void MeasureBar(StaticLengthRecord& lengths, const PointSet& points, std::int32_t arbMechanism) {
    if (arbMechanism == abNone) {
        lengths.ARBInputLever = 0;
    } else if (IsLateralBar(arbMechanism)) {
        lengths.ARBInputLever = DistancePointToLineOfPoints(points, ptARP1, ptARP2, ptARI);
        lengths.ARBDropLink = Length(points, ptARDL, ptARI);
    } else if (arbMechanism == abTBar) {
        lengths.ARBInputLever = DistancePointToLineOfPoints(points, ptTBDLI, ptTBDLO, ptTSI);
        lengths.ARBDropLink = Length(points, ptTBDLI, ptTBDLO);
    }
}

PointNumber RockerOutput(const SuspensionData& data) {
    if (data.ThirdSpringMechanism != tsCentreSpring) {
        return ptR1O;
    }
    return data.CentreSpringSystem == csLongitudinalViaTBar ? ptTBDLI : ptLCSI;
}

void PlaceRockerFeet(PointSet& points, StaticLengthRecord& lengths, const SuspensionData& data) {
    PerpendicularFootOfPoints(points, ptR1P1, ptR1P2, ptPRI, ptPRICR);
    // A rocker that drives a centre spring alone has no corner spring pickup of its own, and no
    // foot of one; the lever is that of the pickup which works the centre spring.
    if (data.SpringMechanism == smRockerToUpperWishbone ||
        data.SpringMechanism == smPullrodToUpperWishbone ||
        data.ThirdSpringMechanism != tsCentreSpring) {
        PerpendicularFootOfPoints(points, ptR1P1, ptR1P2, ptR1O, ptSAOCR);
    }
    lengths.RockerInputLever = Length(points, ptPRI, ptPRICR);
    lengths.RockerOutputLever =
        DistancePointToLineOfPoints(points, ptR1P1, ptR1P2, RockerOutput(data));
    if (HasSecondRocker(data.SpringMechanism)) {
        lengths.SecondRockerInputLever = DistancePointToLineOfPoints(points, ptR2P1, ptR2P2, ptR2I);
        lengths.SecondRockerOutputLever =
            DistancePointToLineOfPoints(points, ptR2P1, ptR2P2, ptR2O);
    }
}

void PlaceActuatorFeet(PointSet& points, StaticLengthRecord& lengths, const SuspensionData& data) {
    switch (data.SpringMechanism) {
    case smOutboardToUpright:
    case smMacPhersonStrut:
        points[ptPRI] = points[ptSAI];
        break;
    case smOutboardToLowerWishbone:
        PerpendicularFootOfPoints(points, ptLWIR, ptLWIF, ptPRO, ptPROCR);
        points[ptPRI] = points[ptSAI];
        break;
    case smDirectToUpperWishbone:
        PerpendicularFootOfPoints(points, ptUWIR, ptUWIF, ptPRO, ptPROCR);
        lengths.RockerInputLever = lengths.UpperWishboneRadius;
        lengths.RockerOutputLever = Length(points, ptPRO, ptPROCR);
        break;
    case smRockerToUpperWishbone:
    case smPullrodToUpperWishbone:
        PerpendicularFootOfPoints(points, ptUWIR, ptUWIF, ptPRO, ptPROCR);
        PlaceRockerFeet(points, lengths, data);
        break;
    case smPullrodToUpright:
    case smPushrodToUpright:
    case smPushrodToLowerWishbone:
    case smTwoRockersToUpright:
    case smTwoRockersToLowerWishbone:
        PerpendicularFootOfPoints(points, ptLWIR, ptLWIF, ptPRO, ptPROCR);
        PlaceRockerFeet(points, lengths, data);
        break;
    default:
        break;
    }
}

} // namespace

void CalculateStaticLengths(StaticLengthRecord& lengths, const PointSet& points,
                            const SuspensionData& data) {
    lengths.StubAxleLength = StubAxle;
    if (data.DriveShaftExists) {
        lengths.DriveshaftLength = Length(points, ptDSO, ptDSI);
    }
    lengths.StaticHalfTrack = points[ptWTCP].Y;
    MeasureSpring(lengths, points, data);
    MeasureBar(lengths, points, data.ARBMechanism);
    if (HasRocker(data.SpringMechanism)) {
        lengths.PushrodLength = Length(points, ptPRO, ptPRI);
    }
    if (HasSecondRocker(data.SpringMechanism)) {
        lengths.InterconnectLength = Length(points, ptR1O, ptR2I);
    }
    lengths.TyreRadius = Length(points, ptWTCP, ptWC);
    lengths.TrackRodLength = Length(points, ptTRO, ptTRI);
    lengths.LowerFrontLink = Length(points, ptLWO, ptLWIF);
    lengths.LowerRearLink = Length(points, ptLWO, ptLWIR);
    lengths.UpperFrontLink = Length(points, ptUWO, ptUWIF);
    lengths.UpperRearLink = Length(points, ptUWO, ptUWIR);
    lengths.TBarInputLever = Length(points, ptTBDLO, ptTSI);
    lengths.TBarDropLink = Length(points, ptTBDLO, ptTBDLI);
}

void PlaceStubAxle(PointSet& points, const StaticLengthRecord& lengths) {
    const SuspPoint& centre = points[ptWC];
    const SuspPoint& patch = points[ptWTCP];
    // Square to the line from contact patch to wheel centre, in the lateral plane.
    const double a = Divide(centre.Z - patch.Z, lengths.TyreRadius);
    const double b = Divide(centre.Y - patch.Y, lengths.TyreRadius);
    points[ptWSA] = {centre.X, centre.Y - a * lengths.StubAxleLength,
                     centre.Z + b * lengths.StubAxleLength};
}

void CalculateStaticPoints(PointSet& points, StaticLengthRecord& lengths,
                           const SuspensionData& data) {
    PlaceStubAxle(points, lengths);
    PerpendicularFootOfPoints(points, ptUWIR, ptUWIF, ptUWO, ptUWCR);
    lengths.UpperWishboneRadius = Length(points, ptUWO, ptUWCR);
    PerpendicularFootOfPoints(points, ptLWIR, ptLWIF, ptLWO, ptLWCR);
    lengths.LowerWishboneRadius = Length(points, ptLWO, ptLWCR);
    PerpendicularFootOfPoints(points, ptUWO, ptLWO, ptTRO, ptST);
    lengths.SteeringArmLever = Length(points, ptTRO, ptST);
    PlaceActuatorFeet(points, lengths, data);
}

void PrepareStrutGeometry(PointSet& points, const SuspensionData& data) {
    if (data.SpringMechanism != smMacPhersonStrut) {
        return;
    }
    points[ptUWO] = points[ptSAI];
    points[ptUWO_MACPH] = points[ptSAI];
    const InnerPickups pickups = FictitiousWishbone(points[ptLWO], points[ptSAI], points[ptUWO]);
    points[ptUWIF] = pickups.Front;
    points[ptUWIR] = pickups.Rear;
}

void PrepareStaticState(Suspension& document) {
    PointSet& points = document.StaticPoints();
    PrepareStrutGeometry(points, document.Data);
    // The derived points read the tyre radius and the stub axle length.
    CalculateStaticLengths(document.StaticLengths, points, document.Data);
    CalculateStaticPoints(points, document.StaticLengths, document.Data);
}

} // namespace corvanta
