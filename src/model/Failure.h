#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace corvanta {

/// Numbers of the failures that the program raises itself. They appear in the message of a failed
/// start and let a handler tell one condition from another.
enum FailureNumber : std::int32_t {
    fnInvalidCall = 5,
    fnOverflow = 6,
    fnSubscript = 9,
    fnDivisionByZero = 11,
    fnTypeMismatch = 13,
    fnInternal = 51,
    fnFileNotFound = 53,
    fnFileAccess = 75,
    fnInputPastEnd = 62,
    fnUnitConversion = 1000,
    fnCommandLine = 10000,
    fnNoConvergence = static_cast<std::int32_t>(0x80040064U),
};

/// A failure: a number and a description, thrown and passed up to the nearest handler.
class Failure : public std::exception {
  public:
    Failure(std::int32_t number, std::string description)
        : m_number(number),
          m_description(std::move(description)) {}

    [[nodiscard]] std::int32_t Number() const noexcept { return m_number; }
    [[nodiscard]] const std::string& Description() const noexcept { return m_description; }
    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }

  private:
    std::int32_t m_number;
    std::string m_description;
};

/// The exception in flight as a Failure: itself if it is one, otherwise number `fnInternal` and the
/// exception's own text, if it has one. Call it inside a handler only.
[[nodiscard]] Failure FailureInFlight();

} // namespace corvanta
