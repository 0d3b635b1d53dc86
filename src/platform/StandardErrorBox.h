#pragma once

#include "platform/Messages.h"

namespace corvanta {

/// The message box of a program without windows: the message goes to standard error, and a question
/// is declined.
class StandardErrorBox final : public MessageBox {
  public:
    int Show(const std::string& prompt, int style, const std::string& title) override;
};

} // namespace corvanta
