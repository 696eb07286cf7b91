// What the two lists over the picture say of the working satellite's orbit, and of Sun and Moon.

#include "orbit/orbit_details.h"

#include <gtest/gtest.h>

#include <memory>
#include <numbers>

#include "orbit/sun_and_moon.h"

namespace glintara {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kHour = 15 * kDegree;

struct OrbitDetailsTest : ::testing::Test {
    /// A Molniya: half a sidereal day, 26601 km, perigee over the south. Its heights by hand: 26601 x 0.26 - 6371 and
    /// 26601 x 1.74 - 6371 km.
    SatRecord& AddMolniya() {
        data->Site.SiteRadius = 6371000;
        data->SetSimInstant({2018, 1, 21, 0, 0, 0}, 2458139.5);
        SatRecord& satellite = data->Satellite(++data->SatCount);
        satellite.OrbitNumber = 7;
        satellite.SatNumber = "24960";
        satellite.Designator = "97054A  ";
        satellite.Name = "MOLNIYA 1-90";
        satellite.EpochText = "18019.50000000";
        satellite.ElementSetNumber = 999;
        satellite.Eccentricity = 0.74;
        satellite.MeanRadiusA = 26601.0 / 6371;
        satellite.MeanMotion = 2.25;  // 10 h 40 m
        satellite.RaanAngle = 18.5 * kHour;
        satellite.Inclination = 63.4 * kDegree;
        satellite.ArgPerigee = 270.29 * kDegree;
        satellite.MeanAnomaly = 15.99 * kDegree;
        return satellite;
    }

    std::string Line(std::size_t number) const {
        const auto lines = OrbitDetails(*data);
        return number < lines.size() ? lines[number] : "none";
    }

    std::unique_ptr<CommonData> data = std::make_unique<CommonData>();
};

TEST_F(OrbitDetailsTest, AllLinesInTheirOrder) {
    AddMolniya();
    EXPECT_EQ(
        OrbitDetails(*data),
        (std::vector<std::string>{"ORBIT DETAILS", "", "SATELLITE #7: 24960 (97054A)", "MOLNIYA 1-90",
                                  "EPOCH: 18019.50000000 (999)", "DATA AGE: 1.5 days", "Eccentricity: 0.74",
                                  "Perigee heigth: 545.2 km", "Apogee heigth: 39914.7 km", "Period: 10h40'00\" hms",
                                  "RA Node: 18h30'00\" hms", "Inclination: 63.4 deg", "W: 270.2 deg", "M0: 15.9 deg"}));
}

TEST_F(OrbitDetailsTest, AnEmptyListHasNone) { EXPECT_TRUE(OrbitDetails(*data).empty()); }

TEST_F(OrbitDetailsTest, TheWorkingSatelliteIsTheLast) {
    AddMolniya();
    SatRecord& last = AddMolniya();
    last.OrbitNumber = 8;
    last.Name = "SECOND";
    EXPECT_EQ(Line(2), "SATELLITE #8: 24960 (97054A)");
    EXPECT_EQ(Line(3), "SECOND");
}

TEST_F(OrbitDetailsTest, WithoutANameThereIsNoLineForIt) {
    AddMolniya().Name = "  ";
    EXPECT_EQ(Line(3), "EPOCH: 18019.50000000 (999)");
    EXPECT_EQ(OrbitDetails(*data).size(), 13U);
}

TEST_F(OrbitDetailsTest, TheSpaceStationIsKnownByItsNumber) {
    SatRecord& satellite = AddMolniya();
    satellite.Name = "";
    satellite.SatNumber = "25544";
    EXPECT_EQ(Line(3), "INTERNATIONAL SPACE STATION (ISS)");
    satellite.Name = "ZARYA";
    EXPECT_EQ(Line(3), "ZARYA");
}

TEST_F(OrbitDetailsTest, NumbersAreCutAndNotRounded) {
    SatRecord& satellite = AddMolniya();
    satellite.EpochText = "18020.51000000";  // 0.49 days before
    EXPECT_EQ(Line(5), "DATA AGE: 0.4 days");
    satellite.EpochText = "18021.01000000";  // 0.01 days later than the instant
    EXPECT_EQ(Line(5), "DATA AGE: -0.1 days");
    satellite.MeanRadiusA = 26601.14 / 6371;
    EXPECT_EQ(Line(8), "Apogee heigth: 39914.9 km");  // 0.2436 more
    satellite.MeanRadiusA = 6369.95 / 6371;
    satellite.Eccentricity = 0;
    EXPECT_EQ(Line(7), "Perigee heigth: -1.1 km") << "1.05 km below the ground";
}

TEST_F(OrbitDetailsTest, ElementsYearsOldHaveTheirAge) {
    AddMolniya().EpochText = "10020.50000000";
    EXPECT_EQ(Line(5), "DATA AGE: 2922.5 days");
}

// Every angle that an element set can give with one decimal is shown as it is given.
TEST_F(OrbitDetailsTest, AnglesComeBackAsTheElementSetGivesThem) {
    SatRecord& satellite = AddMolniya();
    for (int tenths = 0; tenths < 3600; ++tenths) {
        satellite.ArgPerigee = tenths / 10.0 * 3.14159265358979 / 180;
        const std::string whole = std::to_string(tenths / 10);
        const std::string text = tenths % 10 == 0 ? whole : whole + "." + std::to_string(tenths % 10);
        ASSERT_EQ(Line(12), "W: " + text + " deg");
    }
}

TEST_F(OrbitDetailsTest, HeightsFollowThePlace) {
    SatRecord& satellite = AddMolniya();
    data->Site.SiteRadius = 6378137;
    satellite.MeanRadiusA = 26600.0 / 6378.137;
    satellite.Eccentricity = 0.5;
    EXPECT_EQ(Line(7), "Perigee heigth: 6921.8 km");  // 13300 - 6378.137
}

TEST_F(OrbitDetailsTest, WhatCannotBeToldIsNotAvailable) {
    SatRecord& satellite = AddMolniya();
    satellite.MeanMotion = 0;
    satellite.MeanRadiusA = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Line(9), "Period: n.a. hms");
    EXPECT_EQ(Line(8), "Apogee heigth: n.a. km");
}

TEST_F(OrbitDetailsTest, ANameHasNoControlCharacters) {
    AddMolniya().Name = "BAD\x1b[2J\nNAME";
    EXPECT_EQ(Line(3), "BAD?[2J?NAME");
    // Nor have the other texts of an element set, which a damaged workspace may hold too.
    data->Satellite(1).SatNumber = "24\n60";
    data->Satellite(1).Designator = " 97\t54A ";
    data->Satellite(1).EpochText = "18019.5\r";
    EXPECT_EQ(Line(2), "SATELLITE #7: 24?60 (97?54A)");
    EXPECT_EQ(Line(4), "EPOCH: 18019.5? (999)");
}

TEST_F(OrbitDetailsTest, SunAndMoonInWords) {
    data->Site = MakeObserverSite({40 * kDegree, 0, 0});
    data->SunDir = {std::cos(10 * kDegree), 0, std::sin(10 * kDegree)};
    data->SunDec = -10.505 * kDegree;
    data->SunRA = 5.5 * kHour;
    data->MoonTopoDec = 9.25 * kDegree;
    data->MoonTopoRA = 23.75 * kHour;
    const AstroLines lines = AstroDetails(*data);
    EXPECT_EQ(lines.Sun[0], "SUN POSITION ");
    EXPECT_EQ(lines.Sun[1].substr(0, 14), "DEC: -010°30'");
    EXPECT_EQ(lines.Sun[1].back(), ' ');
    EXPECT_EQ(lines.Sun[2], "RA : 05h30'00\" ");
    // The Sun stands over 10 degrees north on the observer's meridian: 60 degrees high, cut below.
    EXPECT_TRUE(lines.Sun[3] == "EL : 60° " || lines.Sun[3] == "EL : 59.999° ") << lines.Sun[3];
    EXPECT_EQ(lines.Moon, (std::vector<std::string>{"MOON POSITION", "DEC : 009°15'00\" ", "RA  : 23h45'00\" "}));
}

TEST_F(OrbitDetailsTest, ElevationHasThreeDecimalsCutDownwards) {
    data->Site = MakeObserverSite({0, 0, 0});
    for (const auto& [elevation, text] : {std::pair{20.12345, "EL : 20.123° "}, {-20.12345, "EL : -20.124° "}}) {
        data->SunDir = {std::sin(elevation * kDegree), std::cos(elevation * kDegree), 0};
        EXPECT_EQ(AstroDetails(*data).Sun[3], text);
    }
}

TEST_F(OrbitDetailsTest, ThePhaseGoesFromOneNewMoonToTheNext) {
    for (const auto& [sun, moon, phase] :
         {std::array{5.0, 5.0, 0.0}, {5.0, 11.0, 0.25}, {5.0, 17.0, 0.5}, {20.0, 2.0, 0.25}, {5.0, 4.0, 23 / 24.0}}) {
        data->SunRA = sun * kHour;
        data->MoonRA = moon * kHour;
        EXPECT_NEAR(MoonPhase(*data), phase, 1e-9) << sun << " " << moon;
    }
}

}  // namespace
}  // namespace glintara
