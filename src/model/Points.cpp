#include "model/Points.h"

namespace corvanta {

namespace {

constexpr std::array<std::string_view, PointCount> ShortNames{
    "ptWSA",      "ptWTCP",   "ptWC",    "ptUWO",    "ptUWO_MACPH", "ptUWIR",  "ptUWIF",
    "ptLWO",      "ptLWIR",   "ptLWIF",  "ptTRO",    "ptTRI",       "ptDSO",   "ptDSI",
    "ptPRO",      "ptPRI",    "ptR1P1",  "ptR1P2",   "ptR1O",       "ptSAI",   "ptUWCR",
    "ptSNextA",   "ptTNextA", "ptR2I",   "ptR2P1",   "ptR2P2",      "ptR2O",   "ptLWCR",
    "ptST",       "ptPROCR",  "ptPRICR", "ptSAOCR",  "ptLWTCP",     "ptuWTCP", "ptLongFocus",
    "ptLatFocus", "ptARDL",   "ptARI",   "ptARP1",   "ptARP2",      "ptRHM",   "ptTSO",
    "ptTSI",      "ptTBDLI",  "ptTBDLO", "ptTBDLO2", "ptTBP1",      "ptTBP2",  "ptLCSI",
};

} // namespace

std::string_view PointShortName(PointNumber number) {
    assert(number >= 1 && number <= PointCount);
    return ShortNames[static_cast<std::size_t>(number) - 1];
}

} // namespace corvanta
