#include "tests/support/Places.h"

namespace corvanta::test {

std::string SourceFolder() {
    return CORVANTA_SOURCE_DIR;
}

std::string ProgramFolder() {
    return CORVANTA_PROGRAM_FOLDER;
}

std::vector<std::string> BatchPrograms() {
    return {CORVANTA_BATCH_PROGRAMS};
}

} // namespace corvanta::test
