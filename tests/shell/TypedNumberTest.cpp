#include "shell/TypedNumber.h"

#include "model/Failure.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

const Separators Point;
const Separators Comma{",", "."};

/// The number read, "none" for no number; in parentheses when it is not a plain number.
std::string Read(std::string_view text, const Separators& separators = Point,
                 std::string_view unit = "mm") {
    const auto typed = ReadTypedNumber(text, separators, unit);
    if (!typed) {
        return "none";
    }
    return typed->Plain ? typed->Text : "(" + typed->Text + ")";
}

TEST(TypedNumberTest, ReadsNumbersAndSums) {
    struct Case {
        std::string Text;
        const char* Number;
    };
    for (const Case& c : {
             Case{"", "0"},
             {" \t", "0"},
             {"12", "12"},
             {" -12.50 ", "-12.50"},
             {"+.5", "+.5"},
             {"1,5", "1.5"},
             {"2,8500", "2.8500"},
             {"1E-05", "1E-05"},
             {"12 mm", "(12)"},
             {"1,5mm", "(1.5)"},
             {"612.5+3", "(615.5)"},
             {"10-2-3", "(5)"},
             {"2+3*4", "(14)"},
             {"-(2 + 3) * 4 mm", "(-20)"},
             {"100/8/2", "(6.25)"},
             {"1e3-1", "(999)"},
             {"3*-2", "(-6)"},
             {"1/3", "(0.333333333333333)"},
             {std::string(60, '(') + "7" + std::string(60, ')'), "(7)"},
         }) {
        EXPECT_EQ(Read(c.Text), c.Number) << c.Text.substr(0, 80);
    }
    // What is none of these is no number, however much of it looks like one.
    for (const std::string& text :
         {std::string("abc"), std::string(100'000, '('), std::string(100'000, '9')}) {
        EXPECT_EQ(Read(text), "none") << text.substr(0, 80);
    }
    for (const char* text :
         {"12abc", "12 in", "mm",   "1,234.5",   "1.2.3", "--5",       "5-",
          "(5",    "5)",    "()",   "1/0",       "0/0",   "nan",       "-inf",
          "0x10",  "1E400", "1E31", "1E20*1E20", "2,850", "-0,125 mm", "1+2,850"}) {
        EXPECT_EQ(Read(text), "none") << text;
    }
}

TEST(TypedNumberTest, FollowsTheMachine) {
    EXPECT_EQ(Read("1,5", Comma), "1.5");
    EXPECT_EQ(Read("1.5", Comma), "1.5") << "a point is never taken for thousands";
    EXPECT_EQ(Read("2,850", Comma), "2.850");
    EXPECT_EQ(Read("1.234,5", Comma), "none");
    EXPECT_EQ(Read("1,5+1", Comma), "(2.5)");
    const Separators arabic{"\u066B", "\u066C"};
    EXPECT_EQ(Read("1\u066B5", arabic), "1.5");
    EXPECT_EQ(Read("1,5", arabic), "none");
    EXPECT_EQ(Read("12 mm", Point, ""), "none");

    EXPECT_EQ(CommittedText("1,5+1", Comma, "mm"), "2,5");
    EXPECT_EQ(CommittedText("2,5 mm", Comma, "mm"), "2,5");
    EXPECT_EQ(CommittedText("2.50", Comma, "mm"), "2.50") << "a plain number stays as it was typed";
    EXPECT_EQ(CommittedText("2.5+", Point, "mm"), "2.5+");
    EXPECT_EQ(CommittedText("", Point, "mm"), "");
}

TEST(TypedNumberTest, AFaultNamesItsPlaceAndShowsTheHeadOfTheText) {
    const auto description = [](const std::string& text) {
        const Failure failure =
            FailureOf([&] { RaiseNoNumber("X of Centre of wheel", text, Point); });
        EXPECT_EQ(failure.Number(), fnTypeMismatch);
        return failure.Description();
    };
    EXPECT_EQ(description("abc"),
              "Type mismatch: X of Centre of wheel is \"abc\", which is no number.");
    EXPECT_THAT(description("2,850"),
                EndsWith("is \"2,850\", which is unclear: type a point before "
                         "decimals and nothing between thousands."));
    EXPECT_THAT(description(std::string(39, 'a') + "\u00E9" + std::string(5000, 'b')),
                HasSubstr("\"" + std::string(39, 'a') + "...\""))
        << "a character is not cut in half";
}

} // namespace
} // namespace corvanta::test
