#include "tests/support/Places.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

namespace fs = std::filesystem;

/// The floors of the house: an include points to a lower floor or stays in its folder.
const std::map<std::string, int>& Floors() {
    static const std::map<std::string, int> floors{
        {"model", 1},      {"platform", 2}, {"solver", 3},     {"persistence", 4},
        {"properties", 4}, {"results", 4},  {"export", 5},     {"calculation", 5},
        {"study", 6},      {"shell", 7},    {"automation", 7}, {"frame", 8},
        {"batch", 9},      {"desktop", 9},  {"tool", 9},       {"python", 9},
    };
    return floors;
}

struct Include {
    fs::path File;
    std::string Folder; ///< of the including file
    std::string Target; ///< between the quotes or brackets
    bool Quoted = false;
};

std::vector<Include> AllIncludes() {
    static const std::regex line(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    std::vector<Include> includes;
    const fs::path source = fs::path(SourceFolder()) / "src";
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") {
            continue;
        }
        const std::string folder = fs::relative(entry.path(), source).begin()->string();
        std::ifstream file(entry.path());
        for (std::string text; std::getline(file, text);) {
            std::smatch match;
            if (std::regex_search(text, match, line)) {
                includes.push_back({entry.path(), folder, match[2], match[1] == "\""});
            }
        }
    }
    return includes;
}

TEST(IncludesTest, PointDownOrStayInTheirFolder) {
    const std::vector<Include> includes = AllIncludes();
    ASSERT_GT(includes.size(), 100U);
    for (const Include& include : includes) {
        ASSERT_TRUE(Floors().contains(include.Folder)) << include.File << " is in no known folder";
        if (!include.Quoted) {
            continue;
        }
        const std::string target = include.Target.substr(0, include.Target.find('/'));
        ASSERT_TRUE(Floors().contains(target)) << include.File << " includes " << include.Target;
        EXPECT_TRUE(target == include.Folder || Floors().at(target) < Floors().at(include.Folder))
            << include.File << " includes " << include.Target;
    }
}

TEST(IncludesTest, NameTheStandardLibraryAloneBelowTheDesktop) {
    static const std::regex standard("[a-z_0-9]+");
    for (const Include& include : AllIncludes()) {
        const std::string file = include.File.filename().string();
        const bool asksTheSystem =
            file == "DiskFile.cpp" || file == "NativeStart.cpp" || file == "EnvironmentLocale.cpp";
        const bool knowsJson = (include.Folder == "study" || include.Folder == "automation") &&
                               include.Target == "nlohmann/json.hpp";
        const bool fits = file == "LeastSquares.cpp" && include.Target == "ceres/ceres.h";
        const bool bindsPython =
            include.Folder == "python" && include.Target.starts_with("pybind11/");
        if (!include.Quoted && include.Folder != "desktop" && include.Folder != "tool" &&
            !bindsPython && !asksTheSystem && !knowsJson && !fits) {
            EXPECT_TRUE(std::regex_match(include.Target, standard))
                << include.File << " includes " << include.Target;
        }
    }
}

} // namespace
} // namespace corvanta::test
