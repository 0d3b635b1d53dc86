#include "model/WheelState.h"

namespace corvanta {

void WheelStateGrid::ForgetResults() {
    for (Row& row : m_rows) {
        for (WheelState& state : row) {
            state.Channels = {};
            state.LinkLoads = {};
        }
    }
}

const WheelState& WheelStateGrid::NewState() {
    static const WheelState state;
    return state;
}

} // namespace corvanta
