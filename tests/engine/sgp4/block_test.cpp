#include "engine/sgp4/block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <numbers>
#include <vector>

namespace glintara {
namespace {

// Half-day resonance: the one kind of satellite whose record changes in use.
Sgp4Record Molniya() {
    constexpr double kDegree = std::numbers::pi / 180;
    Sgp4Record record;
    EXPECT_TRUE(Sgp4Prepare({.epochDay = 2453911.5,
                             .epochFraction = 0.33215444,
                             .bstar = 1e-4,
                             .inclination = 64 * kDegree,
                             .node = 279 * kDegree,
                             .eccentricity = 0.6877,
                             .argPerigee = 264 * kDegree,
                             .meanAnomaly = 20 * kDegree,
                             .meanMotion = 2.0049 * 2 * std::numbers::pi / 1440},
                            record));
    return record;
}

TEST(Block, HoldsTheRecordAtAnyAddress) {
    Sgp4Record record = Molniya();
    const Sgp4State expected = Sgp4AtMinutes(record, 5000);
    std::vector<std::byte> room(sizeof(EngineBlock) + 8);
    for (std::size_t shift = 0; shift < 8; ++shift) {
        StoreRecord(room.data() + shift, Molniya());
        Sgp4Record loaded;
        ASSERT_TRUE(LoadRecord(room.data() + shift, loaded));
        EXPECT_EQ(Sgp4AtMinutes(loaded, 5000).position, expected.position);
        EXPECT_EQ(Sgp4AtMinutes(loaded, 5000).velocity, expected.velocity);
    }
}

TEST(Block, IsAPlainValue) {
    EngineBlock block{};
    StoreRecord(&block, Molniya());
    EngineBlock copy = block;
    std::memset(&block, 0xff, sizeof block);
    Sgp4Record loaded;
    ASSERT_TRUE(LoadRecord(&copy, loaded));
    Sgp4Record record = Molniya();
    EXPECT_EQ(Sgp4AtMinutes(loaded, -777).position, Sgp4AtMinutes(record, -777).position);
}

TEST(Block, TailIsLeftAlone) {
    EngineBlock block;
    std::memset(&block, 0x5a, sizeof block);
    const EngineBlock before = block;
    StoreRecord(&block, Molniya());
    StoreIntegrator(&block, Molniya());
    EXPECT_EQ(std::memcmp(reinterpret_cast<const char*>(&block) + GLINTCORE_PRIVATE_BYTES,
                          reinterpret_cast<const char*>(&before) + GLINTCORE_PRIVATE_BYTES,
                          sizeof block - GLINTCORE_PRIVATE_BYTES),
              0);
}

TEST(Block, OtherBytesAreNoSatellite) {
    const Sgp4Record untouched = Molniya();
    for (const int filling : {0x00, 0x01, 0x20, 0x7f, 0xff}) {
        EngineBlock block;
        std::memset(&block, filling, sizeof block);
        Sgp4Record record = untouched;
        EXPECT_FALSE(LoadRecord(&block, record)) << filling;
        EXPECT_EQ(record.meanMotion, untouched.meanMotion) << filling;
    }
}

TEST(Block, AChangedHeaderIsNoSatellite) {
    for (std::size_t i = 0; i < 8; ++i) {
        EngineBlock block{};
        StoreRecord(&block, Molniya());
        block.Private[i] = static_cast<std::uint8_t>(block.Private[i] ^ 1);
        Sgp4Record record;
        EXPECT_FALSE(LoadRecord(&block, record)) << "byte " << i;
    }
}

TEST(Block, IntegratorIsWrittenBack) {
    EngineBlock block{};
    StoreRecord(&block, Molniya());
    Sgp4Record used = Molniya();
    const Vector3 expected = Sgp4AtMinutes(used, 100000).position;
    ASSERT_NE(used.integrator.time, 0);
    StoreIntegrator(&block, used);

    Sgp4Record loaded;
    ASSERT_TRUE(LoadRecord(&block, loaded));
    EXPECT_EQ(loaded.integrator.time, used.integrator.time);
    EXPECT_EQ(loaded.integrator.longitude, used.integrator.longitude);
    EXPECT_EQ(loaded.meanMotion, used.meanMotion);
    EXPECT_EQ(Sgp4AtMinutes(loaded, 100000).position, expected);
}

}  // namespace
}  // namespace glintara
