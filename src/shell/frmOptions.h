#pragma once
#include "shell/Desk.h"
#include "shell/ShellHost.h"
namespace corvanta {
class frmOptions : public Window {
  public:
    frmOptions(Desk&, ShellHost&) {}
    void Open() { IsOpen = true; }
    void Close() { IsOpen = false; }
    void cmdApply_Click() {}
    bool HasUnappliedChanges() const { return false; }
};
} // namespace corvanta
