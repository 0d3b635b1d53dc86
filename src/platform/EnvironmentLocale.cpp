#include "platform/MachineServices.h"

#include <stdexcept>
#include <string>

#ifdef _WIN32
#include <array>
#include <windows.h>
#endif

namespace corvanta {

#ifdef _WIN32

namespace {

/// The first letter of what the user's region has for a kind of text.
wchar_t RegionLetter(LCTYPE kind, wchar_t otherwise) {
    constexpr int Longest = 80; // of any such text
    std::array<wchar_t, Longest> text{};
    const int length = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, kind, text.data(), Longest);
    return length > 1 ? text[0] : otherwise;
}

/// The number characters of the user's region, which the language's library does not know here.
class CRegionNumbers final : public std::numpunct<wchar_t> {
  protected:
    [[nodiscard]] wchar_t do_decimal_point() const override {
        return RegionLetter(LOCALE_SDECIMAL, L'.');
    }
    [[nodiscard]] wchar_t do_thousands_sep() const override {
        return RegionLetter(LOCALE_STHOUSAND, L'\0');
    }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

} // namespace

std::locale EnvironmentLocale() {
    return {std::locale::classic(), new CRegionNumbers}; // the locale owns it
}

#else

std::locale EnvironmentLocale() {
    try {
        return std::locale("");
    } catch (const std::runtime_error&) {
        return std::locale::classic();
    }
}

#endif

} // namespace corvanta
