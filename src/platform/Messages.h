#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// Styles of a message box: the buttons and the icon.
enum MessageStyle : int {
    msOK = 0,
    msYesNoCancel = 3,
    msYesNo = 4,
    msCritical = 16,
    msExclamation = 48,
    msInformation = 64,
};

/// Buttons that a message box answers with.
enum MessageAnswer : int {
    maNone = 0, ///< nothing was shown
    maOK = 1,
    maCancel = 2,
    maYes = 6,
    maNo = 7,
};

/// What the buttons of a question say: verbs, so that nobody has to read the question twice.
struct AnswerWords {
    std::string Yes;
    std::string No = "Cancel";
};

/// The platform's message box.
class MessageBox {
  public:
    MessageBox() = default;
    MessageBox(const MessageBox&) = delete;
    MessageBox& operator=(const MessageBox&) = delete;
    MessageBox(MessageBox&&) = delete;
    MessageBox& operator=(MessageBox&&) = delete;
    virtual ~MessageBox() = default;

    /// Shows a message and returns the button pressed. `style` is a sum of `MessageStyle` values;
    /// CR parts the lines of the prompt.
    virtual int Show(const std::string& prompt, int style, const std::string& title) = 0;

    /// The same for a question whose "Yes" and "No" have words of their own.
    virtual int Ask(const std::string& prompt, int style, const AnswerWords& words) {
        static_cast<void>(words);
        return Show(prompt, style, {});
    }

    /// Asks which of several ways to go and returns its index. `NoChoice` when the user backs out,
    /// which is what a box does that nobody answers.
    virtual int Choose(const std::string& prompt, const std::vector<std::string>& ways) {
        static_cast<void>(prompt);
        static_cast<void>(ways);
        return NoChoice;
    }

    static constexpr int NoChoice = -1;
};

/// The one way to show a message. Silent in a run without user interface.
class Messages {
  public:
    explicit Messages(MessageBox& box) : m_box(box) {}

    /// Shows the message and returns the button pressed; `maNone` at once while silent, so that a
    /// question reads as declined.
    int ShowMessage(const std::string& prompt, int style = msOK, const std::string& title = {}) {
        if (m_beforeMessage) {
            m_beforeMessage();
        }
        return m_silent ? maNone : m_box.Show(prompt, style, title);
    }

    /// Asks a question whose buttons have words of their own, and returns the button pressed as
    /// `ShowMessage` does.
    int Ask(const std::string& prompt, const AnswerWords& words,
            int style = msYesNo + msExclamation) {
        if (m_beforeMessage) {
            m_beforeMessage();
        }
        return m_silent ? maNone : m_box.Ask(prompt, style, words);
    }

    /// Asks which of several ways to go, each named by a verb, and returns its index;
    /// `MessageBox::NoChoice` when the user backs out, and at once while silent.
    int Choose(const std::string& prompt, const std::vector<std::string>& ways) {
        if (m_beforeMessage) {
            m_beforeMessage();
        }
        return m_silent ? MessageBox::NoChoice : m_box.Choose(prompt, ways);
    }

    /// What to do whenever a message appears, before it does.
    void BeforeMessage(std::function<void()> step) { m_beforeMessage = std::move(step); }

    /// Silences all messages for the rest of the process.
    void Silence() { m_silent = true; }

  private:
    MessageBox& m_box;
    std::function<void()> m_beforeMessage;
    bool m_silent = false;
};

} // namespace corvanta
