#include "model/SuspensionData.h"

namespace corvanta {

std::optional<PointNumber> MovingSpringEnd(const SuspensionData& data) {
    switch (data.SpringMechanism) {
    case smOutboardToUpright:
    case smOutboardToLowerWishbone:
    case smDirectToUpperWishbone:
    case smMacPhersonStrut:
        return ptPRO;
    case smRockerToUpperWishbone:
    case smPullrodToUpright:
    case smPushrodToUpright:
    case smPullrodToUpperWishbone:
    case smPushrodToLowerWishbone:
        return data.ThirdSpringMechanism == tsCentreSpring ? std::nullopt : std::optional(ptR1O);
    case smTwoRockersToUpright:
    case smTwoRockersToLowerWishbone:
        return ptR2O;
    default:
        return std::nullopt;
    }
}

void CopyType(SuspensionData& data, const SuspensionData& from) {
    data.SpringMechanism = from.SpringMechanism;
    data.ThirdSpringMechanism = from.ThirdSpringMechanism;
    data.CentreSpringSystem = from.CentreSpringSystem;
    data.ARBMechanism = from.ARBMechanism;
    data.DriveShaftExists = from.DriveShaftExists;
}

} // namespace corvanta
