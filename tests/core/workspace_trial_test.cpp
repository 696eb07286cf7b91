#include "core/workspace_trial.h"

#include <gtest/gtest.h>

namespace glintara::testing {
namespace {

constexpr int kFiles = 100000;

/// Each is loaded; to draw and to search takes longer, so that is done with one in this many. The fuzz target does it
/// with all.
constexpr int kUsedOf = 10;

TEST(WorkspaceTrial, WholeFilesMakeSoundSessions) {
    WorkspaceTrial trial;
    for (const std::string& text : WholeWorkspaces()) {
        EXPECT_EQ(trial.Load(text), "") << text.substr(0, 8);
        EXPECT_TRUE(trial.Loaded());
        EXPECT_EQ(trial.Use(), "") << text.substr(0, 8);
    }
}

TEST(WorkspaceTrial, SpoiltFilesMakeSoundSessions) {
    const std::vector<std::string> whole = WholeWorkspaces();
    WorkspaceTrial trial;
    Spoiler spoiler(20100103);
    int loaded = 0;
    for (int number = 0; number < kFiles; ++number) {
        const std::string text = spoiler.Spoil(whole[static_cast<std::size_t>(number) % whole.size()]);
        ASSERT_EQ(trial.Load(text), "") << "file " << number << ":\n" << text;
        loaded += trial.Loaded() ? 1 : 0;
        if (number % kUsedOf == 0) ASSERT_EQ(trial.Use(), "") << "file " << number << ":\n" << text;
    }
    EXPECT_GT(loaded, kFiles / 10) << "not all were spoilt beyond use";
    EXPECT_LT(loaded, kFiles * 9 / 10) << "and many were";
}

}  // namespace
}  // namespace glintara::testing
