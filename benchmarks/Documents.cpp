#include "benchmarks/Documents.h"

#include "model/Failure.h"
#include "persistence/MData.h"
#include "solver/SInitGeo.h"

namespace corvanta::benchmarks {

LoadedProgram::LoadedProgram(const std::string& sample, int steps)
    : m_path(std::string(CORVANTA_SOURCE_DIR) + "/samples/" + sample) {
    m_program.Units[ucDisplacement].Label = "mm";
    m_program.Units[ucForce].Label = "N";
    m_program.Units[ucMass].Label = "kg";
    m_program.Units[ucRate].Label = "N/mm";
    m_program.Channels.ChannelsSetup(m_program.Units);
    if (!DataLoad(m_program.Document, m_program.Channels, m_path, false, m_program.Units, m_files,
                  m_messages)) {
        throw Failure(fnInternal, "The sample can't be read: " + m_path);
    }
    if (steps == 0) {
        return;
    }
    // Halves of the grid on both sides of static, whatever the document's own steps.
    SuspensionData& data = m_program.Document.Data;
    const double half = (steps - 1) / 2.0;
    data.Droop = data.Bump;
    data.WheelTravelStepSize = data.Bump / half;
    data.RackTravel = data.RackTravel == 0 ? half : data.RackTravel;
    data.RackTravelStepSize = data.RackTravel / half;
    InitGeometry(m_program.Document, m_program.Channels, m_program.Units, m_messages);
}

} // namespace corvanta::benchmarks
