#include "model/WheelState.h"

namespace corvanta {

void WheelStateGrid::Reserve(int rackSteps) {
    for (int step = 1; step <= rackSteps; ++step) {
        m_rows[Slot(step)].resize(Steps);
    }
}

const WheelState& WheelStateGrid::NewState() {
    static const WheelState state;
    return state;
}

} // namespace corvanta
