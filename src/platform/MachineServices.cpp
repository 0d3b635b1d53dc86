#include "platform/MachineServices.h"

#include "platform/CodePage.h"
#include "platform/PathText.h"
#include "platform/Utf8.h"

#include <climits>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <string_view>
#include <system_error>

namespace corvanta {

namespace fs = std::filesystem;

namespace {

using WideNumbers = std::numpunct<wchar_t>;
using WideTimes = std::time_put<wchar_t>;

/// The running program's file: what the system says it is, else the name it was started by.
fs::path ProgramFile(const char* startedAs) {
    std::error_code unknown;
    fs::path file = fs::read_symlink("/proc/self/exe", unknown);
    if (unknown) {
        file = fs::absolute(PathOf(startedAs == nullptr ? "" : startedAs), unknown);
    }
    return file;
}

std::string FolderText(const fs::path& folder) {
    std::string text = PathText(folder);
    while (!text.empty() && text.back() == static_cast<char>(fs::path::preferred_separator)) {
        text.pop_back();
    }
    return text;
}

bool GroupsDigits(const WideNumbers& numbers) {
    const std::string grouping = numbers.grouping();
    return !grouping.empty() && grouping.front() > 0 && grouping.front() < CHAR_MAX &&
           numbers.thousands_sep() != L'\0';
}

constexpr std::string_view NoBreakBlank = "\u00A0";

/// A text of the locale with every blank that the program's files lack as one that they have.
std::string WithKnownBlanks(std::string text) {
    // Figure, punctuation, thin, hair and narrow no-break blanks, which locales put into numbers.
    for (const std::string_view blank : {"\u2007", "\u2008", "\u2009", "\u200A", "\u202F"}) {
        text = ReplaceAll(text, blank, NoBreakBlank);
    }
    return text;
}

/// A separator that the program's files can hold.
std::string FileSeparator(wchar_t separator, std::string_view otherwise) {
    std::string text = WithKnownBlanks(Utf8FromWide(std::wstring(1, separator)));
    return FitsCodePage1252(text) ? text : std::string(otherwise);
}

std::string MomentText(const std::tm& moment, const std::locale& locale, std::wstring_view form) {
    std::wostringstream text;
    text.imbue(locale);
    std::use_facet<WideTimes>(locale).put(std::ostreambuf_iterator<wchar_t>(text), text, L' ',
                                          &moment, form.data(), form.data() + form.size());
    return WithKnownBlanks(Utf8FromWide(text.str()));
}

/// The locale's own form of a moment, or `otherwise` where the program's files lack its letters.
std::string FittingText(const std::tm& moment, const std::locale& locale, std::wstring_view form,
                        std::wstring_view otherwise) {
    std::string text = MomentText(moment, locale, form);
    return FitsCodePage1252(text) ? text : MomentText(moment, std::locale::classic(), otherwise);
}

} // namespace

Separators SeparatorsOf(const std::locale& locale) {
    const auto& numbers = std::use_facet<WideNumbers>(locale);
    Separators separators;
    separators.Decimal = FileSeparator(numbers.decimal_point(), ".");
    if (GroupsDigits(numbers)) {
        separators.Thousands =
            FileSeparator(numbers.thousands_sep(), separators.Decimal == "," ? "." : ",");
    } else {
        separators.Thousands.assign(1, separators.Decimal == "," ? '.' : ',');
    }
    return separators;
}

std::string DateAndTimeText(const std::tm& moment, const std::locale& locale) {
    return FittingText(moment, locale, L"%x", L"%Y-%m-%d") + " " +
           FittingText(moment, locale, L"%X", L"%H:%M:%S");
}

MachineServices::MachineServices(int argc, const char* const* argv, ProductVersion version)
    : m_programFolder(FolderText(ProgramFile(argc > 0 ? argv[0] : nullptr).parent_path())),
      m_version(version),
      m_locale(EnvironmentLocale()),
      m_separators(SeparatorsOf(m_locale)) {
    if (argc > 1) {
        m_arguments.assign(argv + 1, argv + argc);
    }
}

std::string MachineServices::DateAndTime() const {
    return DateAndTimeOf(std::time(nullptr));
}

std::string MachineServices::DateAndTimeOf(std::int64_t moment) const {
    const std::time_t time = moment;
    return DateAndTimeText(*std::localtime(&time), m_locale);
}

} // namespace corvanta
