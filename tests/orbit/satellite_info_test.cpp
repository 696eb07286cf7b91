#include "orbit/satellite_info.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "engine/astro/number_text.h"
#include "engine/astro/sidereal.h"
#include "flare/observed_night.h"
#include "orbit/satellite_motion.h"

namespace glintara::observed_night {
namespace {

using satellite_info::LineParts;
using satellite_info::Lines;
using satellite_info::LinesOf;
using satellite_info::NoteOf;
using satellite_info::PartsOf;

struct SatelliteInfoTest : ::testing::Test {
    Observatory o;
    Application& app = o.app;
    CommonData& data = o.app.Data;

    SatRecord& LoadStation() {
        o.LoadOne("stations.tle", "ISS (ZARYA)");
        MoveToNow(app, data.Satellite(1));
        return data.Satellite(1);
    }

    /// The block of the working satellite as a picture would have left it.
    void Leave(const Vector3& position, const Vector3& velocity, const Vector3& world) {
        ::EngineBlock& block = data.Satellite(data.SatCount).EngineBlock;
        block.InertialPosition[0] = position.x;
        block.InertialPosition[1] = position.y;
        block.InertialPosition[2] = position.z;
        block.InertialVelocity[0] = velocity.x;
        block.InertialVelocity[1] = velocity.y;
        block.InertialVelocity[2] = velocity.z;
        block.WorldPosition[0] = world.x;
        block.WorldPosition[1] = world.y;
        block.WorldPosition[2] = world.z;
    }
};

const Lines kNotAvailable = {"",         "X: n.a.",  "Y: n.a.",   "Z: n.a.",   "D: n.a.",  "vX: n.a.", "vY: n.a.",
                             "vZ: n.a.", "vW: n.a.", "Dec: n.a.", "RA:  n.a.", "El: n.a.", "Az: n.a.", ""};

void ExpectNotAvailable(const Lines& lines, const std::string& title) {
    EXPECT_EQ(lines[0], title);
    for (std::size_t i = 1; i < lines.size(); ++i) EXPECT_EQ(lines[i], kNotAvailable[i]);
}

TEST_F(SatelliteInfoTest, TellsWhatTheLastPictureLeft) {
    LoadStation();
    Leave({-4000.5, 3000, 0.0005}, {7.5, -0.25, 1.0005}, {0, 0, 2});
    const Lines lines = LinesOf(app);
    EXPECT_EQ(lines[0], "Satellite #1 - ISS (ZARYA)");
    EXPECT_EQ(lines[1], "X: -4000.5 km");
    EXPECT_EQ(lines[2], "Y: 3000 km");
    EXPECT_EQ(lines[3], "Z: 0 km") << "half a thousandth goes to the even one";
    EXPECT_EQ(lines[4], "D: 5000.4 km");  // sqrt(4000.5^2 + 3000^2) = 5000.40001...
    EXPECT_EQ(lines[5], "vX: 7.5 km/s");
    EXPECT_EQ(lines[6], "vY: -0.25 km/s");
    EXPECT_EQ(lines[8], "vW: 7.571 km/s");
    EXPECT_EQ(lines[13], "");
}

TEST_F(SatelliteInfoTest, RoundsToTheNearestThousandthTiesToEven) {
    LoadStation();
    Leave({1, 2, 3}, {1.0014999, 1.0015001, -0.0004}, {0, 0, 2});
    const Lines lines = LinesOf(app);
    EXPECT_EQ(lines[5], "vX: 1.001 km/s");
    EXPECT_EQ(lines[6], "vY: 1.002 km/s");
    EXPECT_EQ(lines[7], "vZ: 0 km/s") << "without a sign";
    Leave({0.5 / 1000, 1.5 / 1000, 2.5 / 1000}, {-0.5 / 1000, -1.5 / 1000, 1e6}, {0, 0, 2});
    const Lines ties = LinesOf(app);
    EXPECT_EQ(ties[1], "X: 0 km");
    EXPECT_EQ(ties[2], "Y: 0.002 km");
    EXPECT_EQ(ties[3], "Z: 0.002 km");
    EXPECT_EQ(ties[5], "vX: 0 km/s");
    EXPECT_EQ(ties[6], "vY: -0.002 km/s");
    EXPECT_EQ(ties[7], "vZ: 1000000 km/s");
}

// The angles once more, by spherical trigonometry on the inertial axes (Meeus, Astronomical Algorithms, 2nd ed., 13.5).
TEST_F(SatelliteInfoTest, TheAnglesAreThoseOfTheObserver) {
    SatRecord& station = LoadStation();
    for (int hour = 0; hour < 24; ++hour) {
        SetInstant(data, kNight + hour * kHour);
        const WorldMotion motion = MoveToNow(app, station);
        const Lines lines = LinesOf(app);
        // The observer: geodetic zenith, geocentric place on the unit sphere.
        const double theta = SiderealFromDate(data.SimFields()) + data.Site.SiteLon;
        const Vector3 inertial{station.EngineBlock.InertialPosition[0] * 1000 / data.Site.SiteRadius,
                               station.EngineBlock.InertialPosition[1] * 1000 / data.Site.SiteRadius,
                               station.EngineBlock.InertialPosition[2] * 1000 / data.Site.SiteRadius};
        EXPECT_NEAR(Length(inertial), Length(motion.position), 1e-12);
        const double g = data.Site.SiteGeoLat;
        const Vector3 observer{std::cos(g) * std::cos(theta), std::cos(g) * std::sin(theta), std::sin(g)};
        const Vector3 sight = Normalized(inertial - observer);
        const double dec = std::atan2(sight.z, std::hypot(sight.x, sight.y));
        const double ra = std::atan2(sight.y, sight.x);
        const double hourAngle = theta - ra;
        const double lat = data.Site.SiteLat;
        const double elevation =
            std::asin(std::sin(lat) * std::sin(dec) + std::cos(lat) * std::cos(dec) * std::cos(hourAngle));
        const double azimuth =
            std::atan2(-std::cos(dec) * std::sin(hourAngle),
                       std::cos(lat) * std::sin(dec) - std::sin(lat) * std::cos(dec) * std::cos(hourAngle));
        const auto degreesOf = [](const std::string& line) { return LeadingNumber(line.substr(4)); };
        EXPECT_NEAR(degreesOf(lines[11]), elevation / kDegree - 0.0005, 0.0006) << lines[11];
        const double told = degreesOf(lines[12]);
        EXPECT_NEAR(std::remainder(told - azimuth / kDegree + 0.0005, 360), 0, 0.0006) << lines[12];
        EXPECT_GE(told, 0);
        EXPECT_LT(told, 360);
        EXPECT_EQ(lines[11].substr(lines[11].size() - 2), "\u00B0");
        // Dec: [-]DDD°MM'SS"; RA: HHhMM'SS".
        const std::string& decText = lines[9];
        const bool south = decText[5] == '-';
        const std::size_t at = south ? 6 : 5;
        const double decTold = std::stod(decText.substr(at, 3)) + std::stod(decText.substr(at + 5, 2)) / 60 +
                               std::stod(decText.substr(at + 8, 2)) / 3600;
        EXPECT_NEAR((south ? -1 : 1) * decTold, dec / kDegree, 1.01 / 3600) << decText;
        const std::string& raText = lines[10];
        const double hours = std::stod(raText.substr(4, 2)) + std::stod(raText.substr(7, 2)) / 60 +
                             std::stod(raText.substr(10, 2)) / 3600;
        EXPECT_NEAR(std::remainder(hours * 15 - ra / kDegree, 360), 0, 15.2 / 3600) << raText;
    }
}

TEST_F(SatelliteInfoTest, RightAscensionsBelowZeroComeBackBelowAWholeTurn) {
    LoadStation();
    // A place far away in the direction of right ascension -1 second of time.
    const double ra = -15.0 / 3600 * kDegree;
    const double lon = ra - SiderealFromDate(data.SimFields());
    Leave({1, 2, 3}, {1, 2, 3}, 1e9 * Vector3{std::cos(lon), std::sin(lon), 0});
    EXPECT_EQ(LinesOf(app)[10].substr(0, 9), "RA: 23h59");
    const double past = 15.5 / 3600 * kDegree - SiderealFromDate(data.SimFields());
    Leave({1, 2, 3}, {1, 2, 3}, 1e9 * Vector3{std::cos(past), std::sin(past), 0});
    EXPECT_EQ(LinesOf(app)[10], "RA: 00h00'01\"");
}

TEST_F(SatelliteInfoTest, SGP1HasATitleAndNoNumbers) {
    LoadStation();
    app.Main.CSGP4.Value = false;
    ExpectNotAvailable(LinesOf(app), "Satellite #1 - ISS (ZARYA)");
    EXPECT_EQ(NoteOf(app), "SGP1 gives no numbers: choose SGP4/SDP4.");
}

TEST_F(SatelliteInfoTest, AnEmptyListIsSpokenOf) {
    ExpectNotAvailable(LinesOf(app), "No satellite in the list");
    EXPECT_EQ(NoteOf(app), "Add element sets: the last one is shown here.");
}

TEST_F(SatelliteInfoTest, ASatelliteThatTheEngineHasNoPlaceForHasNoNumbers) {
    LoadStation();
    for (const double bad : {0.0, std::numeric_limits<double>::quiet_NaN()}) {
        Leave({bad, bad, bad}, {0, 0, 0}, {0, 0, 0});
        ExpectNotAvailable(LinesOf(app), "Satellite #1 - ISS (ZARYA)");
        EXPECT_EQ(NoteOf(app), "The elements have no place for this instant.");
    }
}

TEST_F(SatelliteInfoTest, TheWorkingSatelliteIsTheLastOne) {
    LoadStation();
    o.LoadOne("geo.tle", "METEOSAT-10 (MSG-3)");
    data.Satellite(2).Name = "line\nbreak";
    data.Satellite(2).OrbitNumber = 77;
    EXPECT_EQ(LinesOf(app)[0], "Satellite #77 - line?break");
}

TEST_F(SatelliteInfoTest, LinesComeInParts) {
    EXPECT_EQ(PartsOf("vX: -1.5 km/s"), (LineParts{"vX:", "-1.5", "km/s"}));
    EXPECT_EQ(PartsOf("X: 0 km"), (LineParts{"X:", "0", "km"}));
    EXPECT_EQ(PartsOf("RA:  n.a."), (LineParts{"RA:", "n.a.", ""}));
    EXPECT_EQ(PartsOf("El: 12.5\u00B0"), (LineParts{"El:", "12.5\u00B0", ""}));
    EXPECT_EQ(PartsOf("Dec: -045\u00B030'09\""), (LineParts{"Dec:", "-045\u00B030'09\"", ""}));
    EXPECT_EQ(PartsOf("RA: 08h05'09\""), (LineParts{"RA:", "08h05'09\"", ""}));
    EXPECT_EQ(PartsOf(""), LineParts{});
}

TEST_F(SatelliteInfoTest, TheWindowsLabelsHaveTheLinesAndTheirTextIsAllOfThem) {
    LoadStation();
    satellite_info::RefreshInfo(app);
    const Lines lines = LinesOf(app);
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(app.SatPosition.LInfo[i].Caption.Get(), lines[i]);
        if (i < 13) text += lines[i] + "\n";
    }
    EXPECT_EQ(satellite_info::TextOf(app.SatPosition), text);
    EXPECT_EQ(app.SatPosition.LNote.Caption.Get(),
              "X, Y, Z on the equator and equinox of date; the angles from your place.");
    satellite_info::Connect(app);
    app.SatPosition.Visible = true;
    app.SatPosition.CClose.Click();
    EXPECT_FALSE(app.SatPosition.Visible);
}

}  // namespace
}  // namespace glintara::observed_night
