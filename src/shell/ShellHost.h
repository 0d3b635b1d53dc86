#pragma once

#include "platform/WindowServices.h"
#include "results/ViewHost.h"

#include <string>
#include <vector>

namespace corvanta {

class frmEditGeometry;

/// A file name that the user chose.
struct ChosenFile {
    std::string Path;      ///< from the root on
    std::string Title;     ///< the name alone; on asking the name to begin with
    std::string Extension; ///< behind the last "." of the name, or empty; on asking the one of a
                           ///< name typed without, when writing
    int FilterIndex = 1;
    bool Several = false;             ///< on asking: any number of files may be chosen
    std::vector<std::string> Paths{}; ///< all of them; one at least
};

/// The main window, as far as the other windows need it.
class ShellHost : public ViewHost {
  public:
    /// Closes the geometry editor and the window that adjusts the geometry, if they are open.
    virtual void ResetEditDialog() = 0;

    /// Asks whether what is typed in the open geometry editor and not applied may go; true when
    /// there is nothing of the kind.
    virtual bool MayDropEdits() = 0;

    /// Takes what is typed in the open editor and not applied; false when that failed and was told.
    virtual bool TakeTypedEdits() = 0;

    /// Asks what to do with variants, targets and questions that no study file has; false when they
    /// must stay.
    virtual bool MayDropStudy() = 0;

    /// The geometry editor while it is open, none otherwise.
    [[nodiscard]] virtual frmEditGeometry* OpenedEditor() = 0;

    /// Says in the status bar what was done, until something else happens.
    virtual void Confirm(const std::string& done) = 0;

    /// Asks for a file name. False on cancel and, reported unless `quietOnError`, on a failure.
    virtual bool GetFileName(FileNameMode mode, const std::string& filter,
                             const std::string& startFolder, ChosenFile& chosen,
                             bool quietOnError) = 0;
};

} // namespace corvanta
