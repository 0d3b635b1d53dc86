#include "platform/StandardErrorBox.h"

#include "model/NumberText.h"

#include <iostream>

namespace corvanta {

int StandardErrorBox::Show(const std::string& prompt, int /*style*/, const std::string& title) {
    const std::string text = title.empty() ? prompt : title + ": " + prompt;
    // A message parts its lines by CR, a terminal by LF.
    std::cerr << ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n") << '\n';
    return maNone;
}

} // namespace corvanta
