#include "solver/SInitGeo.h"

#include "model/Failure.h"
#include "model/PointsInPlay.h"

namespace corvanta {

void InitGeometry(Suspension& document, ChannelCatalogue& channels,
                  const FundamentalUnits& /*units*/, Messages& /*messages*/) {
    if (document.Data.WheelTravelStepSize == 0 || document.Data.RackTravelStepSize == 0) {
        throw Failure(fnDivisionByZero, "Division by zero");
    }
    channels.SetFrontRearTitles(IsFrontCorner(document));
    SetPointsInPlay(document.Catalogue, document.Data.SpringMechanism, document.Data);
}

} // namespace corvanta
