#pragma once

#include "platform/WindowServices.h"
#include "tests/support/RecordingPageWriter.h"

#include <deque>
#include <set>
#include <string>
#include <vector>

namespace corvanta::test {

/// A window system that records what is asked of it and answers from a script. A file dialog
/// without an answer left is cancelled.
class FakeWindowSystem final : public FileDialog,
                               public Clipboard,
                               public HelpViewer,
                               public ScreenCursor,
                               public PlaceLocks,
                               public ScreenUpdate {
  public:
    std::vector<FileNameRequest> Requests;
    std::deque<FileNameAnswer> Answers;
    std::string Board;
    std::vector<int> Topics; ///< of the help shown; 0 for the contents
    std::string HelpFile;
    std::vector<int> Shapes{DefaultCursor}; ///< every cursor that was set, the last one in force
    std::set<std::string> Locked;           ///< the locks that some program holds
    int Updates = 0;
    RecordingPageWriter Pages;

    [[nodiscard]] WindowSystem Services() {
        return {*this, *this, *this, *this, *this, *this, Pages, Screen};
    }

    static constexpr WindowPlacement Screen{0, 0, 28800, 16200};

    std::optional<FileNameAnswer> Ask(const FileNameRequest& request) override {
        Requests.push_back(request);
        if (Answers.empty()) {
            return std::nullopt;
        }
        FileNameAnswer answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    void SetText(const std::string& text) override { Board = text; }
    [[nodiscard]] std::string Text() const override { return Board; }
    void ShowContents(const std::string& helpFile) override { ShowTopic(helpFile, 0); }
    void ShowTopic(const std::string& helpFile, int topic) override {
        HelpFile = helpFile;
        Topics.push_back(topic);
    }
    [[nodiscard]] int Current() const override { return Shapes.back(); }
    void Set(int cursor) override { Shapes.push_back(cursor); }
    bool Take(const std::string& path) override { return Locked.insert(path).second; }
    void Release(const std::string& path) override { Locked.erase(path); }
    void Update() override { ++Updates; }
};

} // namespace corvanta::test
