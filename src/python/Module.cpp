#include "python/Module.h"

#include "model/Failure.h"

#include <exception>
#include <utility>

namespace corvanta {

StoredUnits::StoredUnits() {
    Units[ucDisplacement].Label = "mm";
    Units[ucForce].Label = "N";
    Units[ucMass].Label = "kg";
    Units[ucRate].Label = "N/mm";
    Units.NumberSeparators = {".", ""};
    Channels.ChannelsSetup(Units);
}

StoredUnits::StoredUnits(const Design& design) : StoredUnits() {
    Channels.SetFrontRearTitles(IsFrontCorner(design.Data, design.Points));
}

namespace {

void Translate(std::exception_ptr thrown) {
    try {
        std::rethrow_exception(std::move(thrown));
    } catch (const Failure& failure) {
        const bool notFound = failure.Number() == fnFileNotFound;
        const bool file = failure.Number() == fnFileAccess;
        PyErr_SetString(notFound ? PyExc_FileNotFoundError
                        : file   ? PyExc_OSError
                                 : PyExc_ValueError,
                        failure.what());
    }
}

} // namespace

} // namespace corvanta

PYBIND11_MODULE(_corvanta, module) {
    module.doc() = "What the package corvanta calls; its own documentation is there.";
    module.attr("__version__") = CORVANTA_VERSION;
    pybind11::register_exception_translator(corvanta::Translate);
    corvanta::BindDesign(module);
    corvanta::BindSolve(module);
    corvanta::BindSweeps(module);
    corvanta::BindSearches(module);
    corvanta::BindSpreads(module);
    corvanta::BindSetup(module);
}
