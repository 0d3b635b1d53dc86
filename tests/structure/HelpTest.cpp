#include "platform/DiskFileServices.h"
#include "tests/support/Places.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

namespace fs = std::filesystem;

fs::path HelpFolder() {
    return fs::path(SourceFolder()) / "docs/help";
}

std::string Text(const fs::path& path) {
    return DiskFileServices().ReadBytes(path.string());
}

/// What the first group of a pattern matches in a text, in order.
std::vector<std::string> AllOf(const std::string& pattern, const std::string& text) {
    const std::regex regex(pattern);
    return {std::sregex_token_iterator(text.begin(), text.end(), regex, 1), {}};
}

TEST(HelpTest, EveryTopicThatAWindowOpensHasAPage) {
    const std::string topics = "\n" + Text(HelpFolder() / "topics.txt");
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(fs::path(SourceFolder()) / "src/shell")) {
        for (const std::string& number :
             AllOf(R"((?:\bht[A-Z]\w+|constexpr int HelpTopicNumber) = (\d+)[,;])", Text(entry))) {
            const auto pages = AllOf("\n" + number + "\t(.+)", topics);
            ASSERT_EQ(pages.size(), 1U) << number;
            EXPECT_TRUE(fs::is_regular_file(HelpFolder() / pages.front())) << pages.front();
            ++count;
        }
    }
    EXPECT_GT(count, 15U);
}

TEST(HelpTest, EveryLinkLeadsToAPlaceThatExists) {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(HelpFolder())) {
        if (entry.path().extension() != ".html") {
            continue;
        }
        for (const std::string& link : AllOf(R"re(\s(?:href|src)="([^"]*)")re", Text(entry))) {
            const std::size_t mark = link.find('#');
            const std::string file = link.substr(0, mark);
            const fs::path page = file.empty() ? entry.path() : HelpFolder() / file;
            ASSERT_TRUE(fs::is_regular_file(page)) << link << " in " << entry.path();
            if (mark != std::string::npos) {
                const std::string place = "\\s(?:id|name)=\"(" + link.substr(mark + 1) + ")\"";
                EXPECT_EQ(AllOf(place, Text(page)).size(), 1U) << link << " in " << entry.path();
            }
            ++count;
        }
    }
    EXPECT_GT(count, 100U);
}

} // namespace
} // namespace corvanta::test
