#include "state/version.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/glintcore.h"

namespace glintara {
namespace {

TEST(Version, ProgramAndEngineHaveTheSame) {
    EXPECT_EQ(kVersion, std::to_string(GLINTCORE_VERSION_MAJOR) + "." + std::to_string(GLINTCORE_VERSION_MINOR) + "." +
                            std::to_string(GLINTCORE_VERSION_PATCH));
    EXPECT_EQ(VersionLabel(), "v.1.5.2");
    EXPECT_EQ(ProgramTitle(), "Glintara - v1.5.2");
}

}  // namespace
}  // namespace glintara
