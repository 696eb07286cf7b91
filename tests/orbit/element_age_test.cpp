#include "orbit/element_age.h"

#include <gtest/gtest.h>

#include <memory>

namespace glintara {
namespace {

/// Noon of 20 January 2018.
constexpr double kNoon = 2458139.0;

struct ElementAgeTest : ::testing::Test {
    /// A satellite whose elements are of that day of 2018.
    SatRecord& Add(const std::string& dayOfYear) {
        SatRecord& satellite = data->Satellite(++data->SatCount);
        satellite.EpochText = "18" + dayOfYear;
        return satellite;
    }

    std::string WarningAt(double jd) const { return ElementAgeWarning(ElementAgeAt(*data, jd)); }

    std::unique_ptr<CommonData> data = std::make_unique<CommonData>();
};

TEST_F(ElementAgeTest, FreshElementsAreNotSpokenOf) {
    EXPECT_EQ(WarningAt(kNoon), "") << "without satellites";
    Add("020.50000000");
    EXPECT_NEAR(ElementAgeAt(*data, kNoon).farthest, 0, 1e-6);
    for (const double days : {-13.9, 0.0, 13.9}) EXPECT_EQ(WarningAt(kNoon + days), "") << days;
}

TEST_F(ElementAgeTest, ElementsFarFromTheInstantAreWarnedOf) {
    Add("020.50000000");
    EXPECT_EQ(WarningAt(kNoon + 14.5), "Elements are 14 days old: positions will be off");
    EXPECT_EQ(WarningAt(kNoon + 3254.25), "Elements are 3254 days old: positions will be off");
    EXPECT_EQ(WarningAt(kNoon - 20.25), "Elements are 20 days too new: positions will be off");
}

TEST_F(ElementAgeTest, TheFarthestCountsAndOnesThatAreFreshAreTold) {
    Add("001.50000000");
    Add("020.50000000");
    EXPECT_EQ(WarningAt(kNoon + 0.1), "1 of 2 elements up to 19 days old: positions will be off");
    EXPECT_EQ(WarningAt(kNoon + 20.1), "Elements are 39 days old: positions will be off");
}

TEST_F(ElementAgeTest, DisabledSatellitesDoNotCount) {
    Add("001.50000000").OptionFlags[kDisabledPlace] = '1';
    Add("020.50000000");
    EXPECT_EQ(WarningAt(kNoon), "");
}

}  // namespace
}  // namespace glintara
