#include "export/ExportFailure.h"

#include "model/Failure.h"

namespace corvanta {

void ReportExportFailure(Messages& messages) {
    messages.ShowMessage("There was an error while exporting. \rError was: " +
                             FailureInFlight().Description(),
                         msExclamation);
}

} // namespace corvanta
