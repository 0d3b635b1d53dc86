#include "platform/CodePage.h"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {
namespace {

TEST(CodePageTest, EveryByteComesBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    const std::string text = FromCodePage1252(bytes);
    EXPECT_EQ(ToCodePage1252(text), bytes);
    EXPECT_TRUE(FitsCodePage1252(text));
}

TEST(CodePageTest, WhatThePageLacksBecomesAQuestionMark) {
    EXPECT_EQ(ToCodePage1252("Šč 車 🏁"), "\x8A? ? ?");
    // A control character whose number the page gives to the euro sign.
    EXPECT_EQ(ToCodePage1252("\xC2\x80"), "?");
    EXPECT_FALSE(FitsCodePage1252("č"));
    EXPECT_TRUE(FitsCodePage1252("why?"));
}

TEST(CodePageTest, BytesThatAreNoUtf8CostThemselvesOnly) {
    EXPECT_EQ(ToCodePage1252("a\xFF"
                             "b"),
              "a?b");
    EXPECT_EQ(ToCodePage1252("a\xE2\x82"), "a??");         // cut short
    EXPECT_EQ(ToCodePage1252("\xC0\xAF"), "??");           // overlong "/"
    EXPECT_EQ(ToCodePage1252("\xED\xA0\x80"), "???");      // a surrogate
    EXPECT_EQ(ToCodePage1252("\xF4\x90\x80\x80"), "????"); // beyond the last character
    EXPECT_FALSE(FitsCodePage1252("\xFF"));
}

} // namespace
} // namespace corvanta
