#include "properties/Dynamics.h"

#include "solver/MLibMaths.h"

namespace corvanta {

namespace {

constexpr double Gravity = 9.81;

/// Rates and the wheelbase must be at least this, in their stored units.
constexpr double LeastSetting = 1;

bool AllowsDynamics(const SuspensionData& data, double wheelRate) {
    return wheelRate > 0 && data.Wheelbase >= LeastSetting && data.KTyre >= LeastSetting &&
           data.KLink >= LeastSetting && data.KSpring >= LeastSetting &&
           data.SpringMechanism != smNone;
}

} // namespace

void CalculateDynamics(Suspension& document, int rackRow) {
    const SuspensionData& data = document.Data;
    const ChannelCells& channels = document.WheelStates(rackRow, document.StaticWheel).Channels;
    const double rate = channels[chWheelRateSpring];
    if (!AllowsDynamics(data, rate)) {
        document.DynamicsValid = false;
        document.Dynamics = {};
        return;
    }
    const double patchHeight = document.WheelStates(rackRow, 1).Points[ptWTCP].Z;
    const double transfer = Divide(data.CGZ - patchHeight, data.Wheelbase);
    DynamicsRecord dynamics;
    dynamics.LoadAccel = data.Mass * 0.5 * data.GAccel * transfer * Gravity;
    dynamics.LoadBrake = data.Mass * 0.5 * data.GBrake * transfer * Gravity;
    dynamics.TyreAccel = Divide(dynamics.LoadAccel, data.KTyre);
    dynamics.LinkAccel = Divide(dynamics.LoadAccel, data.KLink);
    dynamics.TyreBrake = Divide(dynamics.LoadBrake, data.KTyre);
    dynamics.LinkBrake = Divide(dynamics.LoadBrake, data.KLink);
    dynamics.SuspAccel = Divide(dynamics.LoadAccel, rate);
    dynamics.SuspBrake = Divide(dynamics.LoadBrake, rate);
    dynamics.SuspBrakeCorrected =
        Divide(dynamics.LoadBrake * (1 - channels[chAntiDivePercent]), rate);
    // The rear hubs drive, so that a front corner has no correction under acceleration.
    dynamics.SuspAccelCorrected =
        IsFrontCorner(document)
            ? dynamics.SuspAccel
            : Divide(dynamics.LoadAccel * (1 - channels[chAntiSquatPercent]), rate);
    dynamics.TotalAccel =
        Checked(dynamics.LinkAccel + dynamics.TyreAccel + dynamics.SuspAccelCorrected);
    dynamics.TotalBrake =
        Checked(dynamics.LinkBrake + dynamics.TyreBrake + dynamics.SuspBrakeCorrected);
    document.Dynamics = dynamics;
    document.DynamicsValid = true;
}

} // namespace corvanta
