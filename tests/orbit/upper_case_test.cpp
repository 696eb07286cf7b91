#include "orbit/upper_case.h"

#include <gtest/gtest.h>

namespace glintara {
namespace {

TEST(UpperCase, LeavesWhatHasNoCapital) {
    EXPECT_EQ(UpperCase("abc XYZ 1-2"), "ABC XYZ 1-2");
    EXPECT_EQ(UpperCase("\xC3\xB7 \xC3\xBF \xC3\x9F"), "\xC3\xB7 \xC5\xB8 \xC3\x9F")
        << "division sign, y diaeresis, sharp s";
    EXPECT_EQ(UpperCase("\xC5\x82\xC3\xB3\x64\xC5\xBA"), "\xC5\x81\xC3\x93\x44\xC5\xB9") << "lodz";
    EXPECT_EQ(UpperCase("\xCE\xB1\xCF\x89"), "\xCE\x91\xCE\xA9") << "alpha, omega";
    EXPECT_EQ(UpperCase("\xE6\x9D\xB1\xE4\xBA\xAC"), "\xE6\x9D\xB1\xE4\xBA\xAC") << "Tokyo";
    EXPECT_EQ(UpperCase("\xC3"), "\xC3") << "half a character";
    EXPECT_EQ(UpperCase("\xFF\x80"), "\xFF\x80");
    EXPECT_EQ(UpperCase("\xC9toile"), "\xC9TOILE") << "one byte a letter";
    EXPECT_EQ(UpperCase("\xC3\xC3\xA9"), "\xC3\xC3\x89") << "half a character before a whole one";
}

}  // namespace
}  // namespace glintara
