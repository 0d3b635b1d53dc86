#pragma once

#include "platform/ProcessServices.h"

#include <string>
#include <vector>

namespace corvanta::test {

/// A process whose surroundings a test chooses.
class FakeProcessServices final : public ProcessServices {
  public:
    std::vector<std::string> Called;
    std::string Folder = "/opt/corvanta";
    ProductVersion Product{5, 4, 5};
    Separators Characters;
    std::string Clock = "07/21/24 13:05:09";
    int Beeps = 0;

    [[nodiscard]] std::vector<std::string> Arguments() const override { return Called; }
    [[nodiscard]] std::string ProgramFolder() const override { return Folder; }
    [[nodiscard]] ProductVersion Version() const override { return Product; }
    [[nodiscard]] Separators NumberSeparators() const override { return Characters; }
    [[nodiscard]] std::string DateAndTime() const override { return Clock; }
    [[nodiscard]] std::string DateAndTimeOf(std::int64_t moment) const override {
        return "moment " + std::to_string(moment);
    }
    void Beep() override { ++Beeps; }
};

} // namespace corvanta::test
