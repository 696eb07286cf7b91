// The list of passes, made by several threads under the thread sanitizer.

#include <cstring>
#include <type_traits>

#include "flare/observed_night.h"
#include "flare/passes.h"

namespace glintara::observed_night {
namespace {

TEST(ParallelPasses, AreThoseOfOneThread) {
    Observatory o;
    o.Load("iridium.tle");
    PassQuest quest{.start = kNight, .days = 0.6, .maxDistance = 300e3};
    const std::vector<FlarePass> alone = ListPasses(o.app.Data, quest);
    ASSERT_GE(alone.size(), 10u);
    quest.threads = 4;
    int told = 0;
    const std::vector<FlarePass> together = ListPasses(o.app.Data, quest, [&](double) { return ++told > 0; });
    static_assert(std::is_trivially_copyable_v<FlarePass>);
    ASSERT_EQ(together.size(), alone.size());
    EXPECT_EQ(std::memcmp(together.data(), alone.data(), alone.size() * sizeof(FlarePass)), 0);
    EXPECT_GT(told, 0);
}

}  // namespace
}  // namespace glintara::observed_night
