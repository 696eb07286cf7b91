// The sundial of view 9, against the Sun's place by the ERFA library and the classical formulas of dialling.

#include "scene/sundial.h"

#include <erfa.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "orbit/location.h"
#include "orbit/sun_and_moon.h"
#include "scene/mouse_text.h"
#include "support/globe_fixture.h"

namespace glintara::testing {
namespace {

struct Place {
    const char* name;
    double lat;  // geodetic, degrees
    double lon;
};

constexpr Place kTurin{"Turin", 45.07, 7.69};
constexpr Place kQuito{"Quito", -0.18, -78.47};
constexpr Place kSydney{"Sydney", -33.87, 151.21};
constexpr Place kTromso{"Tromso", 69.65, 18.96};

/// Azimuth and elevation of the Sun's middle by the library: its ephemeris, nutation and the Earth's turn, no air.
HorizonAngles LibrarySun(const Place& place, double jd) {
    double heliocentric[2][3];
    double barycentric[2][3];
    EXPECT_GE(eraEpv00(jd, 67 / 86400.0, heliocentric, barycentric), 0);
    double sun[3];
    constexpr double kLightTime = 499.004784 / 86400;
    for (int i = 0; i < 3; ++i) sun[i] = -heliocentric[0][i] + barycentric[1][i] * kLightTime;
    double matrix[3][3];
    eraC2t06a(jd, 67 / 86400.0, jd, 0, 0, 0, matrix);
    double fixed[3];
    eraRxp(matrix, sun, fixed);
    const double hourAngle = place.lon * kDegree - std::atan2(fixed[1], fixed[0]);
    const double dec = std::atan2(fixed[2], std::hypot(fixed[0], fixed[1]));
    HorizonAngles angles;
    eraHd2ae(hourAngle, dec, place.lat * kDegree, &angles.azimuth, &angles.altitude);
    return angles;
}

double JulianDate(int year, int month, int day, double hour) {
    double first;
    double second;
    EXPECT_EQ(eraCal2jd(year, month, day, &first, &second), 0);
    return first + second + hour / 24;
}

struct SundialTest : GlobeTest {
    MainControls& main = app.Main;

    SundialTest() {
        app.Run.PendingView = 9;
        view.ZoomFactor = 29;  // after the opening; the whole plate is on the picture
    }

    void Go(const Place& place, int year, int month, int day, int hour, int minute = 0) {
        SetLocation(app.Data, {place.lat * kDegree, place.lon * kDegree, 100});
        app.Data.SetSimInstant({static_cast<double>(year), static_cast<double>(month), static_cast<double>(day),
                                static_cast<double>(hour), static_cast<double>(minute), 0},
                               JulianDate(year, month, day, hour + minute / 60.0));
    }

    ObserverSite& Site() { return app.Data.Site; }

    /// End of the shadow at the displayed instant.
    std::optional<ShadowTip> Tip() { return ShadowAt(Site().SiteLat, SunHourAt(Site(), app.Data.SimTime)); }

    std::string Chart() {
        Frame();
        return "|" + Words();
    }

    bool Says(const std::string& text) { return Chart().find("|" + text + "|") != std::string::npos; }

    /// Lines as wide as the shadow.
    std::vector<RecordedOperation> ShadowLines() const {
        std::vector<RecordedOperation> found;
        for (const RecordedOperation& line : surface.OperationsOf(DrawOperation::Line))
            if (line.state.DrawWidth == 2.5) found.push_back(line);
        return found;
    }

    std::vector<RecordedOperation> Path() const { return LinesIn(0x20C0E0, DrawOperation::Polyline); }

    /// Twips of the picture in a height of the gnomon: the short side is 9000, and zoom 64 fills it.
    double Scale() const { return 4500 * view.ZoomFactor / 64 * kPlateRadius / kPlateShadow; }

    /// Numbers of hours beside the plate and on it.
    std::vector<int> Hours() {
        Frame();
        std::vector<int> hours;
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print))
            if (print.text.find_first_not_of("0123456789") == std::string::npos) hours.push_back(std::stoi(print.text));
        return hours;
    }
};

TEST_F(SundialTest, TheSunStandsWhereTheLibraryHasIt) {
    for (const Place& place : {kTurin, kQuito, kSydney, kTromso}) {
        SetLocation(app.Data, {place.lat * kDegree, place.lon * kDegree, 100});
        for (const int year : {2002, 2018, 2026}) {
            for (int month = 1; month <= 12; ++month) {
                for (const double hour : {0.5, 6.25, 11.0, 15.75, 21.3}) {
                    const double jd = JulianDate(year, month, 21, hour);
                    const HorizonAngles sun = SunInSky(Site().SiteLat, SunHourAt(Site(), jd));
                    const HorizonAngles library = LibrarySun(place, jd);
                    const double tolerance = 0.03 * kDegree;
                    EXPECT_NEAR(sun.altitude, library.altitude, tolerance) << place.name << month << " " << hour;
                    const double across =
                        std::remainder(sun.azimuth - library.azimuth, 2 * kPiExact) * std::cos(library.altitude);
                    EXPECT_NEAR(across, 0, tolerance) << place.name << month << " " << hour;
                }
            }
        }
    }
}

// What the rest of the program makes of the Sun: the state's direction, on the observer's axes.
TEST_F(SundialTest, TheSunStandsWhereTheProgramHasIt) {
    for (const Place& place : {kTurin, kQuito, kSydney}) {
        Go(place, 2018, 1, 20, 15);
        const HorizonAngles sun = SunInSky(Site().SiteLat, SunHourAt(Site(), app.Data.SimTime));
        const HorizonAngles world = WorldToHorizon(Site(), SunPlace(app.Data, app.Data.SimTime));
        EXPECT_NEAR(sun.altitude, world.altitude, 5e-5) << place.name << ", the parallax is 9 seconds of arc";
        EXPECT_NEAR(std::remainder(sun.azimuth - world.azimuth, 2 * kPiExact), 0, 1e-4) << place.name;
    }
}

TEST_F(SundialTest, TheShadowFallsAwayFromTheSunAndIsAsLongAsTheSunIsLow) {
    for (const Place& place : {kTurin, kQuito, kSydney}) {
        SetLocation(app.Data, {place.lat * kDegree, place.lon * kDegree, 100});
        for (int month = 1; month <= 12; ++month) {
            const double jd = JulianDate(2018, month, 15, 12.2 - place.lon / 15 + 1);
            const HorizonAngles library = LibrarySun(place, jd);
            ASSERT_GT(library.altitude, 0.2);
            const std::optional<ShadowTip> tip = ShadowAt(Site().SiteLat, SunHourAt(Site(), jd));
            ASSERT_TRUE(tip);
            const double length = 1 / std::tan(library.altitude);
            EXPECT_NEAR(tip->east, length * std::sin(library.azimuth + kPiExact), 0.003 * (1 + length)) << place.name;
            EXPECT_NEAR(tip->north, length * std::cos(library.azimuth + kPiExact), 0.003 * (1 + length)) << place.name;
        }
    }
}

TEST_F(SundialTest, TheShadowTellsTheSunsPlace) {
    const HorizonAngles sun = SunCasting({-1, 0});
    EXPECT_NEAR(sun.azimuth, 90 * kDegree, 1e-9);
    EXPECT_NEAR(sun.altitude, 45 * kDegree, 1e-9);
    const HorizonAngles south = SunCasting({0, 2});
    EXPECT_NEAR(south.azimuth, 180 * kDegree, 1e-9);
    EXPECT_NEAR(south.altitude, std::atan(0.5), 1e-9);
    EXPECT_NEAR(SunCasting({0, 0}).altitude, 90 * kDegree, 1e-9);
}

// The polar edge through the gnomon's tip meets the ground cot(latitude) to the south. Seen from there an hour line stands at
// the angle to the meridian whose tangent is sin(latitude) tan(hour angle): the rule of every book on sundials.
TEST_F(SundialTest, HourLinesFollowTheDiallersRule) {
    for (const double lat : {20.0, 45.07, 69.65, -33.87}) {
        const double centre = -1 / std::tan(lat * kDegree);
        for (int hour = -6; hour <= 6; ++hour) {
            const double hourAngle = hour * 15 * kDegree;
            const std::optional<HourLine> line = HourLineAt(lat * kDegree, hourAngle);
            ASSERT_TRUE(line) << lat << " " << hour;
            for (const ShadowTip& tip : {line->winter, line->summer})
                EXPECT_NEAR(tip.east * std::cos(hourAngle),
                            std::sin(lat * kDegree) * std::sin(hourAngle) * (tip.north - centre),
                            1e-6 * std::hypot(tip.east, tip.north) + 1e-9)
                    << lat << " " << hour;
            const bool south = lat < 0;
            EXPECT_LT(std::hypot(south ? line->winter.east : line->summer.east,
                                 south ? line->winter.north : line->summer.north),
                      std::hypot(south ? line->summer.east : line->winter.east,
                                 south ? line->summer.north : line->winter.north))
                << "in summer shadows are shorter";
        }
    }
}

TEST_F(SundialTest, AnHourWithoutSunHasNoLine) {
    EXPECT_FALSE(HourLineAt(45 * kDegree, kPiExact));
    EXPECT_FALSE(HourLineAt(0, 100 * kDegree));
    EXPECT_TRUE(HourLineAt(70 * kDegree, kPiExact)) << "the midnight sun";
    const std::optional<HourLine> line = HourLineAt(70 * kDegree, kPiExact);
    EXPECT_LT(line->summer.north, 0) << "at midnight the Sun stands in the north";
}

// At the equinox the end of the shadow runs along a straight line from west to east, tan(latitude) from the gnomon's foot.
TEST_F(SundialTest, TheEquinoxIsAStraightLine) {
    for (const double lat : {45.07, -33.87, 0.0}) {
        for (double hour = -4; hour <= 4; hour += 0.5) {
            const std::optional<ShadowTip> tip = ShadowAt(lat * kDegree, {0, hour * 15 * kDegree});
            ASSERT_TRUE(tip);
            EXPECT_NEAR(tip->north, std::tan(lat * kDegree), 1e-9);
            EXPECT_NEAR(tip->east, std::tan(hour * 15 * kDegree) / std::cos(lat * kDegree), 1e-9);
        }
    }
    Go(kTurin, 2018, 3, 20, 11);
    Frame();
    ASSERT_EQ(Path().size(), 1U);
    const std::vector<double> pixels = Path()[0].numbers;
    for (std::size_t i = 1; i < pixels.size(); i += 2)
        EXPECT_NEAR(pixels[i], 300 - Scale() / 15 * std::tan(kTurin.lat * kDegree), 2);
}

TEST_F(SundialTest, InTheSouthTheNoonShadowFallsToTheSouthAndTheHoursRunTheOtherWay) {
    const auto eastOf = [](double lat, double hour) { return ShadowAt(lat, {0.1, hour})->east; };
    EXPECT_GT(ShadowAt(45 * kDegree, {0.1, 0})->north, 0);
    EXPECT_LT(ShadowAt(-34 * kDegree, {0.1, 0})->north, 0);
    // In the morning the Sun is in the east, and so the shadow in the west, wherever one stands; but round the foot the hours
    // go with the clock's hand in the north and against it in the south.
    EXPECT_LT(eastOf(45 * kDegree, -0.5), 0);
    EXPECT_LT(eastOf(-34 * kDegree, -0.5), 0);
    Go(kSydney, 2018, 6, 21, 2);
    Frame();
    ASSERT_EQ(ShadowLines().size(), 1U);
    EXPECT_GT(ShadowLines()[0].numbers[3], ShadowLines()[0].numbers[1]) << "downwards";
}

TEST_F(SundialTest, WithoutSunThereIsNoShadow) {
    EXPECT_FALSE(ShadowAt(45 * kDegree, {0, 91 * kDegree}));
    EXPECT_FALSE(ShadowAt(45 * kDegree, {0, 90 * kDegree})) << "on the horizon itself";
    Go(kTurin, 2018, 1, 20, 22);
    EXPECT_TRUE(Says("No shadow: the Sun is down"));
    EXPECT_TRUE(ShadowLines().empty());
    EXPECT_FALSE(Path().empty()) << "the day has one all the same";
}

TEST_F(SundialTest, TheShadowOfTheMomentReachesItsEnd) {
    Go(kTurin, 2018, 6, 21, 10);
    Frame();
    ASSERT_EQ(ShadowLines().size(), 1U);
    const HorizonAngles sun = LibrarySun(kTurin, app.Data.SimTime);
    const double length = 1 / std::tan(sun.altitude) * Scale();
    ExpectNumbers(ShadowLines()[0],
                  {6000, 4500, 6000 - length * std::sin(sun.azimuth), 4500 + length * std::cos(sun.azimuth)}, 3);
    EXPECT_TRUE(Says("10:00")) << "the mark of the moment is labelled";
}

TEST_F(SundialTest, ALongShadowEndsAtTheEdgeOfThePlate) {
    Go(kTurin, 2018, 1, 20, 8, 0);
    ASSERT_GT(std::hypot(Tip()->east, Tip()->north), 4.5);
    Frame();
    const auto lines = ShadowLines();
    ASSERT_EQ(lines.size(), 3U) << "the shadow and the two sides of an arrow";
    const auto& n = lines[0].numbers;
    EXPECT_NEAR(std::hypot(n[2] - n[0], n[3] - n[1]), kPlateShadow * Scale(), 1);
    for (const RecordedOperation& line : LinesIn(0xFFFFFF, DrawOperation::Line))
        for (std::size_t i = 0; i < 4; i += 2)
            EXPECT_LE(std::hypot(line.numbers[i] - 6000, line.numbers[i + 1] - 4500), kPlateShadow * Scale() + 1);
}

TEST_F(SundialTest, ClippingKeepsWhatLiesOnThePlate) {
    ShadowTip a{-10, 0};
    ShadowTip b{10, 0};
    EXPECT_TRUE(ClipToPlate(a, b));
    EXPECT_NEAR(a.east, -4, 1e-12);
    EXPECT_NEAR(b.east, 4, 1e-12);
    a = {0, 3};
    b = {0, 5};
    EXPECT_TRUE(ClipToPlate(a, b));
    EXPECT_EQ(a.north, 3);
    EXPECT_NEAR(b.north, 4, 1e-12);
    a = {1, 1};
    b = {-2, 1};
    EXPECT_TRUE(ClipToPlate(a, b));
    EXPECT_EQ(b.east, -2);
    a = {-5, 4.5};
    b = {5, 4.5};
    EXPECT_FALSE(ClipToPlate(a, b)) << "past the plate";
    a = {5, 0};
    b = {9, 0};
    EXPECT_FALSE(ClipToPlate(a, b)) << "beyond it";
    a = b = {1, 0};
    EXPECT_TRUE(ClipToPlate(a, b));
}

TEST_F(SundialTest, PolarDayAndPolarNight) {
    Go(kTromso, 2026, 6, 21, 2);
    EXPECT_TRUE(Says("The Sun does not set on this day"));
    EXPECT_FALSE(Says("No shadow: the Sun is down"));
    Go(kTromso, 2026, 12, 21, 11);
    EXPECT_TRUE(Says("The Sun does not rise on this day"));
    EXPECT_TRUE(Path().empty());
    EXPECT_TRUE(ShadowLines().empty());
    Go(kTromso, 2026, 9, 21, 11);
    EXPECT_FALSE(Says("The Sun does not rise on this day"));
    EXPECT_FALSE(Says("The Sun does not set on this day"));
}

// At the pole the shadow goes round once a day, as long all day: cot(declination), 17.3 degrees on 9 May.
TEST_F(SundialTest, AtThePoleTheShadowGoesRound) {
    surface.ScaleWidth = 15000;  // the figures stand beside the plate
    for (const double lat : {90.0, -90.0}) {
        Go({"pole", lat, 0}, 2026, lat > 0 ? 5 : 11, lat > 0 ? 9 : 11, 6);
        const std::vector<int> hours = Hours();
        EXPECT_EQ(hours.size(), 24U) << lat;
        const double length = 1 / std::tan(17.3 * kDegree);
        EXPECT_NEAR(std::hypot(Tip()->east, Tip()->north), length, 0.1) << lat;
        const double first = std::atan2(Tip()->east, Tip()->north);
        app.Data.SimTime += 1 / 24.0;
        const double turned = std::remainder(std::atan2(Tip()->east, Tip()->north) - first, 2 * kPiExact);
        EXPECT_NEAR(turned, (lat > 0 ? 15 : -15) * kDegree, 0.01) << "with the clock's hand only in the north";
    }
}

// Well-known values of the equation of time, to the second or two that they change from year to year.
TEST_F(SundialTest, TheEquationOfTime) {
    const auto seconds = [](int year, int month, int day) {
        return EquationOfTime(JulianDate(year, month, day, 12)) / (2 * kPiExact) * 86400;
    };
    EXPECT_NEAR(seconds(2018, 2, 11), -(14 * 60 + 14), 5);
    EXPECT_NEAR(seconds(2018, 5, 14), 3 * 60 + 39, 5);
    EXPECT_NEAR(seconds(2018, 7, 26), -(6 * 60 + 32), 5);
    EXPECT_NEAR(seconds(2018, 11, 3), 16 * 60 + 26, 5);
}

TEST_F(SundialTest, AtNoonTheSunIsOnTheMeridian) {
    for (const Place& place : {kTurin, kQuito, kSydney, kTromso, Place{"Fiji", -18, 178}, Place{"Samoa", -14, -172}}) {
        for (const int month : {2, 5, 11}) {
            Go(place, 2018, month, 3, 1);
            const SundialDay day = SundialDayOf(app);
            const double noon = NoonOf(day, Site().SiteLon);
            EXPECT_GE(noon, day.start) << place.name;
            EXPECT_LT(noon, day.start + 1) << place.name;
            EXPECT_NEAR(SunHourAt(Site(), noon).hourAngle, 0, 0.02 * kDegree) << place.name << month;
        }
    }
}

TEST_F(SundialTest, TheDayIsThatOfTheTimeShown) {
    Go(kSydney, 2018, 3, 31, 20, 30);
    EXPECT_EQ(SundialDayOf(app).start, JulianDate(2018, 3, 31, 0));
    main.CLocalTime.Value = true;
    app.Run.Zone.shownMinutes = 11 * 60;
    EXPECT_NEAR(SundialDayOf(app).start, JulianDate(2018, 3, 31, 13), 1e-9) << "1 April there";
    app.Run.Zone.shownMinutes = -570;
    EXPECT_NEAR(SundialDayOf(app).start, JulianDate(2018, 3, 31, 9.5), 1e-9);
}

TEST_F(SundialTest, HoursAreThoseOfTheTimeShown) {
    Go(kTurin, 2018, 1, 20, 10);
    // In UTC noon is at 11:40, an hour later by the clocks there.
    EXPECT_TRUE(Says("noon 11:40:14") || Says("noon 11:40:13") || Says("noon 11:40:15"));
    const std::vector<int> utc = Hours();
    EXPECT_TRUE(Says("Hours in UTC"));
    main.CLocalTime.Value = true;
    app.Run.Zone.shownMinutes = 60;
    EXPECT_TRUE(Says("noon 12:40:14") || Says("noon 12:40:13") || Says("noon 12:40:15"));
    EXPECT_TRUE(Says("Hours in local time, UTC+1"));
    EXPECT_TRUE(Says("20/01/2018 11:00:00"));
    std::vector<int> local = Hours();
    ASSERT_EQ(local.size(), utc.size());
    for (std::size_t i = 0; i < utc.size(); ++i) EXPECT_EQ(local[i], utc[i] + 1);
    app.Run.Zone.shownMinutes = -570;
    EXPECT_TRUE(Says("Hours in local time, UTC-9:30"));
}

TEST_F(SundialTest, TitleAndFiguresInWhiteOfSizeEight) {
    Go(kTurin, 2018, 1, 20, 10, 20);
    Frame();
    const auto prints = surface.OperationsOf(DrawOperation::Print);
    const auto title = std::ranges::find_if(prints, [](const auto& p) { return p.text == "HORIZONTAL MERIDIANA"; });
    ASSERT_NE(title, prints.end());
    EXPECT_EQ(title->state.ForeColor, 0xFFFFFFU);
    EXPECT_EQ(title->state.FontSize, 8);
    EXPECT_EQ(title->state.FontName, "Courier New");
    for (const char* line : {"LAT: 045°04'11\"", "LON: 007°41'23\"", "20/01/2018 10:20:00"}) {
        const std::string shorter = std::string(line).substr(0, std::strlen(line) - 3);
        EXPECT_NE(Words().find(shorter), std::string::npos) << line << " in " << Words();
    }
    const HorizonAngles sun = LibrarySun(kTurin, app.Data.SimTime);
    const auto number = [this](const std::string& label) {
        const std::string words = Words();
        return std::stod(words.substr(words.find(label) + label.size()));
    };
    EXPECT_NEAR(number("Sun's azimuth: "), sun.azimuth / kDegree, 0.04);
    EXPECT_NEAR(number("Sun's elevation: "), sun.altitude / kDegree, 0.04);
    EXPECT_NEAR(number("Shadow: "), 1 / std::tan(sun.altitude), 0.005);
    EXPECT_NE(Words().find("Equation of time: -10m5"), std::string::npos) << Words();
}

TEST_F(SundialTest, FollowsZoomAndPanAndTicksKeepTheirSize) {
    Go(kTurin, 2018, 1, 20, 10);
    double tick = 0;
    for (const double zoom : {29.0, 58.0}) {
        view.ZoomFactor = zoom;
        Pan(0.25, -0.5);
        Frame();
        const auto circles = surface.OperationsOf(DrawOperation::Circle);
        const double unit = 4500 * zoom / 64;
        ExpectNumbers(circles.front(), {6000 + 0.25 * unit, 4500 + 0.5 * unit, 1.9 * unit}, 1e-3);
        // The tick of noon, half as long as the whole one, on the meridian.
        const auto lines = surface.OperationsOf(DrawOperation::Line);
        const auto noon = std::ranges::find_if(lines, [](const RecordedOperation& line) {
            return line.state.DrawWidth == 1.5 && line.numbers[0] == line.numbers[2] &&
                   std::fabs(line.numbers[1] - line.numbers[3]) > 300;
        });
        ASSERT_NE(noon, lines.end());
        EXPECT_NEAR(noon->numbers[0], 6000 + 0.25 * unit, 1e-6);
        const double length = std::fabs(noon->numbers[1] - noon->numbers[3]);
        EXPECT_NEAR(length, 9.9 / zoom / 2 * unit, 1e-6);
        EXPECT_TRUE(tick == 0 || std::fabs(tick - length) < 1e-6);
        tick = length;
    }
}

TEST_F(SundialTest, SaysHowToFindAChartThatIsOutOfSight) {
    Go(kTurin, 2018, 1, 20, 10);
    EXPECT_FALSE(Says("F5 brings the chart"));
    Pan(9, 0);
    EXPECT_TRUE(Says("F5 brings the chart"));
}

TEST_F(SundialTest, NoTextCoversAnotherInAnyPicture) {
    for (const auto& [width, height] : {std::pair{683, 160}, {1000, 300}, {1366, 480}, {1366, 768}, {1920, 1080}}) {
        surface.ScaleWidth = width * 15;
        surface.ScaleHeight = height * 15;
        for (const Place& place : {kTurin, kQuito, kSydney, kTromso}) {
            for (const double zoom : {8.0, 29.0, 64.0, 500.0}) {
                Go(place, 2018, 6, 21, 12);
                view.ZoomFactor = zoom;
                Frame();
                const auto prints = surface.OperationsOf(DrawOperation::Print);
                const auto right = [](const RecordedOperation& p) {
                    const auto letters = std::ranges::count_if(
                        p.text, [](char c) { return (c & 0xC0) != 0x80; });
                    return p.state.CurrentX + 0.6 * 20 * p.state.FontSize * static_cast<double>(letters) - 1e-6;
                };
                const auto bottom = [](const RecordedOperation& p) {
                    return p.state.CurrentY + 1.25 * 20 * p.state.FontSize - 1e-6;
                };
                for (std::size_t i = 0; i < prints.size(); ++i) {
                    EXPECT_LE(right(prints[i]), surface.ScaleWidth + 1) << prints[i].text;
                    EXPECT_LE(bottom(prints[i]), surface.ScaleHeight) << prints[i].text;
                    for (std::size_t k = 0; k < i; ++k)
                        EXPECT_FALSE(prints[i].state.CurrentX < right(prints[k]) &&
                                     prints[k].state.CurrentX < right(prints[i]) &&
                                     prints[i].state.CurrentY < bottom(prints[k]) &&
                                     prints[k].state.CurrentY < bottom(prints[i]))
                            << prints[i].text << " over " << prints[k].text << " " << place.name << zoom << width;
                }
            }
        }
    }
}

// The path has the colour of the label of the moment, and the ring would hide a number.
TEST_F(SundialTest, TheMarkOfTheMomentIsFreeOfTextsAndTheTimesAreBesideThePath) {
    surface.ScaleWidth = 1366 * 15;
    surface.ScaleHeight = 576 * 15;
    struct Moment {
        Place place;
        int month, day, hour, minute;
    };
    for (const Moment& moment :
         {Moment{kTurin, 1, 20, 10, 20}, Moment{kTurin, 6, 21, 10, 0}, Moment{kSydney, 6, 21, 2, 0},
          Moment{kTurin, 6, 21, 13, 0}, Moment{kSydney, 12, 21, 0, 0}}) {
        Go(moment.place, 2018, moment.month, moment.day, moment.hour, moment.minute);
        Frame();
        const auto circles = surface.OperationsOf(DrawOperation::Circle);
        const auto ring = std::ranges::find_if(
            circles, [](const RecordedOperation& circle) { return std::fabs(circle.numbers[2] - 6.5 * 15) < 1; });
        ASSERT_NE(ring, circles.end());
        const double x = ring->numbers[0];
        const double y = ring->numbers[1];
        bool told = false;
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print)) {
            const double left = print.state.CurrentX;
            const double top = print.state.CurrentY;
            const double right = left + 0.6 * 20 * print.state.FontSize * static_cast<double>(print.text.size());
            const double bottom = top + 1.25 * 20 * print.state.FontSize;
            const double reach = ring->numbers[2] - 1;
            EXPECT_FALSE(left < x + reach && right > x - reach && top < y + reach && bottom > y - reach)
                << print.text << " " << moment.place.name;
            const bool ofMoment = print.state.ForeColor == 0x20C0E0U;
            told = told || ofMoment;
            if (!ofMoment && print.text.substr(0, 5) != "noon ") continue;
            for (const RecordedOperation& curve : Path())
                for (std::size_t i = 0; i + 1 < curve.numbers.size(); i += 2)
                    EXPECT_FALSE(curve.numbers[i] * 15 > left && curve.numbers[i] * 15 < right &&
                                 curve.numbers[i + 1] * 15 > top && curve.numbers[i + 1] * 15 < bottom)
                        << print.text << " " << moment.place.name;
        }
        EXPECT_TRUE(told) << moment.place.name;
        if (moment.place.lat < 0 && moment.month == 6) {
            const std::vector<int> hours = Hours();
            EXPECT_NE(std::ranges::find(hours, 2), hours.end()) << "the hour's own number moves away";
        }
    }
}

TEST_F(SundialTest, StandsInPlaceOfTheGlobeAndGoesAgain) {
    NoteAllStages();
    stages.unseen = Notes("unseen");
    stages.beforeLabels = Notes("labels");
    main.CDrawSky.Value = main.CAstroDetails.Value = main.C2OrbitDetails.Value = true;
    app.Data.SatCount = 1;
    Go(kTurin, 2018, 1, 20, 10);
    Frame();
    EXPECT_EQ(called, (std::vector<std::string>{"unseen", "astro details", "labels"}));
    EXPECT_TRUE(FillsIn(app.Data.SeaColor).empty());
    EXPECT_EQ(surface.OperationsOf(DrawOperation::Cls).size(), 1U);
    EXPECT_NE(Words().find("Glintara"), std::string::npos) << "the title stands in every picture";
    app.Run.PendingView = 8;
    Frame();
    EXPECT_FALSE(FillsIn(app.Data.SeaColor).empty());
    EXPECT_EQ(Words().find("HORIZONTAL"), std::string::npos);
    EXPECT_EQ(std::ranges::count(called, "unseen"), 0);
}

TEST_F(SundialTest, LeavesClockSunAndCameraAlone) {
    Go(kTurin, 2018, 1, 20, 10, 37);
    app.Data.SunRA = 5.25;
    app.Data.SunDec = -0.35;
    app.Data.SunDir = {0.6, 0, -0.8};
    view.PanStackDepth = 0;
    RefreshViewCache(view);
    const CalendarFields before = app.Data.SimFields();
    const ViewState camera = view;
    Frame();
    const CalendarFields after = app.Data.SimFields();
    EXPECT_TRUE(before.year == after.year && before.month == after.month && before.day == after.day &&
                before.hour == after.hour && before.minute == after.minute && before.second == after.second);
    EXPECT_EQ(app.Data.SimTime, JulianDate(2018, 1, 20, 10 + 37 / 60.0));
    EXPECT_EQ(app.Data.SunRA, 5.25);
    EXPECT_EQ(app.Data.SunDec, -0.35);
    EXPECT_EQ(app.Data.SunDir.z, -0.8);
    EXPECT_EQ(view.ViewLat, camera.ViewLat);
    EXPECT_EQ(view.ZoomFactor, camera.ZoomFactor);
    EXPECT_EQ(view.PanX, camera.PanX);
    EXPECT_EQ(view.PanStackDepth, 0);
    EXPECT_FALSE(surface.FontOutlined);
}

TEST_F(SundialTest, TheLineOfTheMouseReadsTheChart) {
    Pan(0.5, 0);
    main.CDrawSky.Value = true;
    // A gnomon's height to the north of the foot, which the pan has moved.
    EXPECT_EQ(MouseText(app, {0.5, 1.9 / 4}),
              "SUNDIAL: shadow 1 of the gnomon's height, with the Sun at Az:180°, El:45°");
    EXPECT_EQ(MouseText(app, {3, 0}), "SUNDIAL");
    app.Run.PendingView = 0;
    EXPECT_EQ(MouseText(app, {0.5, 1.9 / 4}).substr(0, 6), "EARTH:");
}

TEST_F(SundialTest, AnUnlikelyStateDrawsAPicture) {
    for (const double lat : {90.0, -90.0, 0.0, 120.0}) {
        Go({"odd", lat, 179.9}, 9999, 12, 31, 23, 59);
        Frame();
        Go({"odd", lat, -180}, -4700, 1, 1, 0);
        Frame();
        for (const RecordedOperation& operation : surface.Operations())
            for (const double number : operation.numbers) ASSERT_TRUE(std::isfinite(number));
    }
}

}  // namespace
}  // namespace glintara::testing
