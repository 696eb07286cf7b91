#include "flare/surface_text.h"

#include <gtest/gtest.h>

namespace glintara {
namespace {

TEST(AddLinePar, JoinsWithSemicolons) {
    EXPECT_EQ(AddLinePar("", "  12.5 "), "12.5 ");
    EXPECT_EQ(AddLinePar("a", "b"), "a;b");
    EXPECT_EQ(AddLinePar("a", "b;c"), "a;InvalidString");
    EXPECT_EQ(AddLinePar("a", ""), "a;");
    EXPECT_EQ(AddLinePar("", "   "), "");
}

}  // namespace
}  // namespace glintara
