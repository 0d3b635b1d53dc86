#pragma once

#include "model/NumberText.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// The product's version; parts are written with no padding.
struct ProductVersion {
    int Major = 0;
    int Minor = 0;
    int Revision = 0;

    /// The three numbers joined by ".".
    [[nodiscard]] std::string Text() const {
        return std::to_string(Major) + "." + std::to_string(Minor) + "." + std::to_string(Revision);
    }
};

/// What the program asks of the process that it runs in and of the machine.
class ProcessServices {
  public:
    ProcessServices() = default;
    ProcessServices(const ProcessServices&) = delete;
    ProcessServices& operator=(const ProcessServices&) = delete;
    ProcessServices(ProcessServices&&) = delete;
    ProcessServices& operator=(ProcessServices&&) = delete;
    virtual ~ProcessServices() = default;

    /// What the program was called with, without its name, each argument as it was given.
    [[nodiscard]] virtual std::vector<std::string> Arguments() const = 0;

    /// The arguments joined by one blank.
    [[nodiscard]] std::string CommandLine() const {
        std::string line;
        for (const std::string& argument : Arguments()) {
            line += (line.empty() ? "" : " ") + argument;
        }
        return line;
    }

    /// The folder of the running program, without a separator at its end.
    [[nodiscard]] virtual std::string ProgramFolder() const = 0;
    [[nodiscard]] virtual ProductVersion Version() const = 0;

    /// The machine's number characters.
    [[nodiscard]] virtual Separators NumberSeparators() const = 0;

    /// The current date in the machine's short form and time in its long form, one blank between.
    [[nodiscard]] virtual std::string DateAndTime() const = 0;

    /// A moment, seconds since 1970, in the same form.
    [[nodiscard]] virtual std::string DateAndTimeOf(std::int64_t moment) const = 0;

    virtual void Beep() = 0;
};

} // namespace corvanta
