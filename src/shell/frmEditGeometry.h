#pragma once
#include "shell/Desk.h"
#include "shell/ShellHost.h"
namespace corvanta {
class frmEditGeometry : public Window {
  public:
    frmEditGeometry(Desk&, ShellHost&) {}
    void Open() { IsOpen = true; }
    void Close() { IsOpen = false; }
    void cmdApply_Click() {}
    bool HasUnappliedChanges() const { return false; }
};
} // namespace corvanta
