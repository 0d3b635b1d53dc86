#pragma once

#include "platform/Messages.h"

#include <deque>
#include <string>
#include <vector>

namespace corvanta::test {

/// One message as it was shown.
struct ShownMessage {
    std::string Prompt;
    int Style = msOK;
    std::string Title;
};

/// A message box that records what it shows and answers from a script. When the script is used up
/// it answers as a user who backs out: Cancel or No to a question, OK to a message.
class RecordingMessageBox final : public MessageBox {
  public:
    /// Every message shown, in order.
    std::vector<ShownMessage> Shown;

    /// The answers to come, first one first.
    std::deque<int> Answers;

    int Show(const std::string& prompt, int style, const std::string& title) override {
        Shown.push_back({prompt, style, title});
        if (!Answers.empty()) {
            const int answer = Answers.front();
            Answers.pop_front();
            return answer;
        }
        constexpr int Buttons = 15; // the part of a style that is no icon
        switch (style & Buttons) {
        case msYesNoCancel:
            return maCancel;
        case msYesNo:
            return maNo;
        default:
            return maOK;
        }
    }

    int Choose(const std::string& prompt, const std::vector<std::string>& ways) override {
        Shown.push_back({prompt, static_cast<int>(ways.size()), {}});
        Ways = ways;
        if (Answers.empty()) {
            return NoChoice;
        }
        const int answer = Answers.front();
        Answers.pop_front();
        return answer;
    }

    std::vector<std::string> Ways; ///< of the last question with ways of its own

    /// The prompts shown, in order.
    [[nodiscard]] std::vector<std::string> Prompts() const {
        std::vector<std::string> prompts;
        for (const ShownMessage& message : Shown) {
            prompts.push_back(message.Prompt);
        }
        return prompts;
    }
};

} // namespace corvanta::test
