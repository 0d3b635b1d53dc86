#pragma once

#include "shell/frmWorkbench.h"
#include "tests/support/MainFormTest.h"

namespace corvanta::test {

/// The workbench beside the main window, on a corner with a rocker and a bar.
class WorkbenchFormTest : public MainFormTest {
  protected:
    WorkbenchFormTest() {
        Open(SampleBytes("formula-front-pushrod.WSP"));
        m_main.Execute(mcWorkbench, 0);
        m_box.Shown.clear();
    }

    [[nodiscard]] frmWorkbench& Bench() {
        m_main.Workbench->Update();
        return *m_main.Workbench;
    }
    void AddTarget(const Target& target) {
        StudyData study = m_current.Study();
        study.Targets.push_back(target);
        m_current.ChangeStudy(study);
    }
};

} // namespace corvanta::test
