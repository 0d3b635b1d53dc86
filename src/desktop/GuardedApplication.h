#pragma once

#include "desktop/Guard.h"

#include <QApplication>

namespace corvanta {

/// The toolkit's application, in which an exception out of any event is reported and ends there.
class GuardedApplication final : public QApplication {
  public:
    GuardedApplication(int& argc, char** argv);

    /// Where to report; nowhere, so that exceptions pass, until it is told.
    void ReportTo(Messages* messages) { m_messages = messages; }

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    Messages* m_messages = nullptr;
};

/// False on a system whose windows need a display when none is named.
[[nodiscard]] bool HasDisplay();

} // namespace corvanta
