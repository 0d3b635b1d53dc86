#include "platform/MachineServices.h"

#include "platform/Utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>

namespace corvanta::test {
namespace {

/// The number characters of a locale that this machine need not have.
class Numbers final : public std::numpunct<wchar_t> {
  public:
    Numbers(wchar_t decimal, wchar_t thousands, std::string grouping)
        : m_decimal(decimal),
          m_thousands(thousands),
          m_grouping(std::move(grouping)) {}

  protected:
    [[nodiscard]] wchar_t do_decimal_point() const override { return m_decimal; }
    [[nodiscard]] wchar_t do_thousands_sep() const override { return m_thousands; }
    [[nodiscard]] std::string do_grouping() const override { return m_grouping; }

  private:
    wchar_t m_decimal;
    wchar_t m_thousands;
    std::string m_grouping;
};

Separators With(wchar_t decimal, wchar_t thousands, const std::string& grouping) {
    return SeparatorsOf(
        std::locale(std::locale::classic(), new Numbers(decimal, thousands, grouping)));
}

TEST(MachineServicesTest, NumberCharactersAreTheLocalesAsFarAsFilesHoldThem) {
    const Separators swiss = With(L'.', L'\u2019', "\3\3");
    EXPECT_EQ(swiss.Decimal, ".");
    EXPECT_EQ(swiss.Thousands, "\u2019");
    const Separators french = With(L',', L'\u202F', "\3");
    EXPECT_EQ(french.Decimal, ",");
    EXPECT_EQ(french.Thousands, "\u00A0");
    const Separators persian = With(L'\u066B', L'\u066C', "\3");
    EXPECT_EQ(persian.Decimal, ".");
    EXPECT_EQ(persian.Thousands, ",");
    EXPECT_EQ(With(L',', L'\u066C', "\3").Thousands, ".") << "never the decimal one";
}

TEST(MachineServicesTest, ALocaleWithoutGroupingGetsTheOtherCharacter) {
    EXPECT_EQ(With(L'.', L'.', "").Thousands, ",");
    EXPECT_EQ(With(L',', L'\0', "\3").Thousands, ".");
    EXPECT_EQ(With(L',', L' ', "\x7F").Thousands, ".");
    EXPECT_EQ(SeparatorsOf(std::locale::classic()).Decimal, ".");
    EXPECT_EQ(SeparatorsOf(std::locale::classic()).Thousands, ",");
}

/// Dates and times in letters of a test.
class Times final : public std::time_put<wchar_t> {
  public:
    explicit Times(std::wstring letters) : m_letters(std::move(letters)) {}

  protected:
    iter_type do_put(iter_type out, std::ios_base& /*base*/, wchar_t /*fill*/,
                     const std::tm* /*moment*/, char /*format*/, char /*modifier*/) const override {
        return std::copy(m_letters.begin(), m_letters.end(), out);
    }

  private:
    std::wstring m_letters;
};

TEST(MachineServicesTest, DateAndTimeInTheLocalesFormAsFarAsFilesHoldIt) {
    std::tm moment{};
    moment.tm_year = 124;
    moment.tm_mon = 6;
    moment.tm_mday = 21;
    moment.tm_hour = 13;
    moment.tm_min = 5;
    moment.tm_sec = 9;
    EXPECT_EQ(DateAndTimeText(moment, std::locale::classic()), "07/21/24 13:05:09");
    const auto in = [&](const wchar_t* letters) {
        return DateAndTimeText(moment, std::locale(std::locale::classic(), new Times(letters)));
    };
    EXPECT_EQ(in(L"1\u202Fpm"), "1\u00A0pm 1\u00A0pm");
    EXPECT_EQ(in(L"\u6642"), "2024-07-21 13:05:09");
}

TEST(MachineServicesTest, TellsOfItsProcess) {
    const std::array<const char*, 4> arguments{"corvanta", "/nogui", "/input=My", "car.WSP"};
    const MachineServices machine(static_cast<int>(arguments.size()), arguments.data(), {5, 4, 5});
    EXPECT_EQ(machine.CommandLine(), "/nogui /input=My car.WSP");
    EXPECT_EQ(machine.Version().Text(), "5.4.5");
    // The running program is the test program, which is in its folder under its own name.
    EXPECT_TRUE(std::filesystem::exists(machine.ProgramFolder() + "/corvanta_tests"))
        << machine.ProgramFolder();
}

TEST(Utf8Test, WideTextsOfEitherWidth) {
    EXPECT_EQ(Utf8FromWide(L"a\u00E9\u20AC"), "aé€");
    std::wstring pair{static_cast<wchar_t>(0xD83C), static_cast<wchar_t>(0xDFC1)};
    EXPECT_EQ(Utf8FromWide(pair), "🏁");
    EXPECT_EQ(Utf8FromWide(pair.substr(0, 1) + L"x"), "x");
}

} // namespace
} // namespace corvanta::test
