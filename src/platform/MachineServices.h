#pragma once

#include "platform/ProcessServices.h"

#include <ctime>
#include <locale>
#include <string>
#include <vector>

namespace corvanta {

/// The locale that the environment names, or the classic one when the environment names a locale
/// that this machine does not have. On Windows it is the classic one with the number characters of
/// the user's region. The process's own locale stays as it is.
[[nodiscard]] std::locale EnvironmentLocale();

/// The number characters of a locale. A locale that does not group digits gets "," for thousands,
/// or "." where "," is its decimal separator. One that code page 1252 lacks is replaced: a blank by
/// the no-break blank, a mark by "." in front of decimals and "," between thousands.
[[nodiscard]] Separators SeparatorsOf(const std::locale& locale);

/// A moment in a locale's short date and long time, one blank between; year-month-day or
/// hours:minutes:seconds where code page 1252 lacks a letter of it.
[[nodiscard]] std::string DateAndTimeText(const std::tm& moment, const std::locale& locale);

/// The process as the operating system started it. The environment's locale is read once, when the
/// object is made.
class MachineServices : public ProcessServices {
  public:
    /// `argv` holds the program's name and then its arguments, `argc` of them altogether.
    MachineServices(int argc, const char* const* argv, ProductVersion version);

    [[nodiscard]] std::vector<std::string> Arguments() const override { return m_arguments; }
    [[nodiscard]] std::string ProgramFolder() const override { return m_programFolder; }
    [[nodiscard]] ProductVersion Version() const override { return m_version; }
    [[nodiscard]] Separators NumberSeparators() const override { return m_separators; }
    [[nodiscard]] std::string DateAndTime() const override;
    [[nodiscard]] std::string DateAndTimeOf(std::int64_t moment) const override;

    /// A process without a window has no bell: what it prints is its messages, and in silence
    /// nothing.
    void Beep() override {}

  private:
    std::vector<std::string> m_arguments;
    std::string m_programFolder;
    ProductVersion m_version;
    std::locale m_locale;
    Separators m_separators;
};

} // namespace corvanta
