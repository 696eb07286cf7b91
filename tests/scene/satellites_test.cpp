#include "scene/satellites.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "engine/astro/number_text.h"
#include "orbit/location.h"
#include "orbit/propagation.h"
#include "scene/flare_marks.h"
#include "scene/orbits.h"
#include "support/satellites_fixture.h"

namespace {
// Counts what the program asks memory for. Not inlined, so that the compiler sees no pair of new and free.
std::size_t allocations = 0;
}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace glintara::testing {
namespace {

/// A surface that takes everything and keeps nothing.
class Nowhere : public RecordingSurface {
  public:
    Nowhere() : RecordingSurface(600, 400) {}
    void Line(double, double, double, double) override {}
    void Circle(double, double, double) override {}
    void PSet(double, double) override { ++points; }
    void Print(std::string_view) override {}
    void Polyline(std::span<const double>) override {}

    int points = 0;
};

TEST_F(SatellitesTest, AMarkStandsWhereTheSatelliteIs) {
    LoadMeteosat();
    LookAt(0, -90, 8);  // 25 twips to the unit; Greenwich is at the right
    const auto circles = Circles();
    ASSERT_EQ(circles.size(), 2U);
    const double expected = 300 + 25 * 42164.2e3 / data.Site.SiteRadius;
    EXPECT_NEAR(circles[0].numbers[0], expected, 0.5);
    EXPECT_NEAR(circles[0].numbers[1], 200, 3);  // its orbit is inclined by less than a degree
    EXPECT_EQ(circles[0].state.FillStyle, FillPattern::Solid);
}

TEST_F(SatellitesTest, TheWorkingSatelliteWearsARing) {
    SatRecord& meteosat = LoadMeteosat();
    LookAt(0, -90, 8);
    const auto one = Circles();
    ASSERT_EQ(one.size(), 2U);
    EXPECT_EQ(one[1].state.FillStyle, FillPattern::Transparent);
    EXPECT_NEAR(one[1].numbers[2] / one[0].numbers[2], 1.8, 1e-9);
    o.Append(meteosat);
    EXPECT_EQ(Circles().size(), 3U);
}

TEST_F(SatellitesTest, AMarkKeepsItsSizeOnTheScreenBelowZoom155) {
    LoadMeteosat();
    const auto radius = [&](double zoom) {
        LookAt(0, 0, zoom);
        const auto circles = Circles();
        return circles.empty() ? 0 : circles[0].numbers[2];
    };
    const double small = radius(8);
    EXPECT_NEAR(small, 0.0024 * 155 * 400 / 128, 1e-9);
    EXPECT_NEAR(radius(64), small, 1e-9);
    EXPECT_NEAR(radius(154.9), small, 1e-9);
    data.View.PanY = 0;
    EXPECT_NEAR(radius(310), 2 * small, 1e-9);
}

TEST_F(SatellitesTest, BehindTheEarthThereIsNoMark) {
    LoadMeteosat();
    LookAt(0, 180, 8);
    EXPECT_TRUE(Circles().empty());
    main.CPlaniSphere.Value = true;
    EXPECT_EQ(Circles().size(), 2U);
}

TEST_F(SatellitesTest, TheShadowDarkensAMarkOnlyWithSunLight) {
    LoadMeteosat();
    LookAt(0, -90, 8);
    EXPECT_EQ(Circles()[0].state.FillColor, 0x20C0E0U);
    data.SunDir = {-1, 0, 0};
    EXPECT_EQ(Circles()[0].state.FillColor, 0x204060U);
    main.CSunLight.Value = false;
    EXPECT_EQ(Circles()[0].state.FillColor, 0x20C0E0U);
    EXPECT_EQ(Circles()[0].state.DrawStyle, PenPattern::None);
}

double Luminance(Color color) {
    const auto linear = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(RedOf(color)) + 0.7152 * linear(GreenOf(color)) + 0.0722 * linear(BlueOf(color));
}

/// Contrast of two colours as the Web Content Accessibility Guidelines define it.
double Contrast(Color a, Color b) {
    const double la = Luminance(a) + 0.05;
    const double lb = Luminance(b) + 0.05;
    return std::max(la, lb) / std::min(la, lb);
}

// 3:1 is what the guidelines ask of a graphical object.
TEST_F(SatellitesTest, MarksInShadowWearAHairlineThatReadsOnNightLand) {
    LoadMeteosat();
    LookAt(0, -90, 8);
    data.SunDir = {-1, 0, 0};
    const auto circles = Circles();
    ASSERT_EQ(circles.size(), 2U);
    EXPECT_EQ(circles[0].state.DrawStyle, PenPattern::Solid);
    EXPECT_LT(circles[0].state.DrawWidth, 1);
    constexpr Color kNightLand = 0x152715;  // land, masked by 90 of 255
    EXPECT_GT(Contrast(circles[0].state.ForeColor, kNightLand), 3);
    EXPECT_LT(Contrast(circles[0].state.FillColor, kNightLand), 3);  // why it is there
}

// 4.5:1 is what they ask of text.
TEST_F(SatellitesTest, NamesReadOnTheirOutline) {
    for (const Color color : {kQuietNameColor, kWorkingNameColor, kSunFlareColor, kMoonFlareColor})
        EXPECT_GT(Contrast(color, kTextOutline), 4.5);
}

TEST_F(SatellitesTest, OnTheGroundTheSmallMark) {
    LoadMeteosat();
    LookAt(0, -45, 8);
    main.CSatOnly.Value = true;  // marks alone
    main.CProjectOrbit.Value = true;
    const auto ground = Circles();
    ASSERT_EQ(ground.size(), 2U);
    EXPECT_NEAR(ground[0].numbers[2], 0.3 * 400 / 128, 1e-9);
    EXPECT_NEAR(ground[1].numbers[2] / ground[0].numbers[2], 3, 1e-9);
    EXPECT_NEAR(ground[0].numbers[0], 300 + 25 * std::sqrt(0.5), 0.3);
    main.CPlotOrbit.Value = true;
    EXPECT_EQ(Circles().size(), 4U);
    main.CProjectOrbit.Value = false;
    EXPECT_EQ(Circles().size(), 2U);
    // The point below is on the far side, the satellite itself beside the disc.
    LookAt(0, -135, 8);
    main.CProjectOrbit.Value = true;
    EXPECT_EQ(Circles().size(), 2U);
}

TEST_F(SatellitesTest, WithAllOrbitModesOffOnlyMarksAreDrawn) {
    LoadMeteosat();
    LookAt(0, -90, 8);
    Draw();
    for (const RecordedOperation& operation : surface.Operations())
        EXPECT_EQ(operation.operation, DrawOperation::Circle);
}

TEST_F(SatellitesTest, HiddenOrbitsAreThoseOfTheOthers) {
    SatRecord& meteosat = LoadMeteosat();
    o.Append(meteosat);
    main.CPlotOrbit.Value = true;
    LookAt(90, 0, 8);
    const auto lines = [&] {
        Draw();
        return surface.OperationsOf(DrawOperation::Line).size();
    };
    data.Satellite(1).OptionFlags = kNewOptionFlags;
    EXPECT_EQ(lines(), 200U);
    data.Satellite(1).OptionFlags[0] = '0';
    EXPECT_EQ(lines(), 400U);
    data.Satellite(1).OptionFlags.clear();
    EXPECT_EQ(lines(), 400U);
    main.CSatOnly.Value = true;
    EXPECT_EQ(lines(), 0U);
}

TEST_F(SatellitesTest, DisabledSatellitesAreSkippedButTheWorkingOneStillTells) {
    SatRecord& meteosat = LoadMeteosat();
    meteosat.OptionFlags[1] = '1';
    LookAt(0, -90, 8);
    Draw();
    EXPECT_TRUE(surface.Operations().empty());
    EXPECT_TRUE(o.app.Run.Working.IsOf(meteosat));
    // From Turin the satellite stands in the south, some 38 degrees high.
    EXPECT_NEAR(o.app.Run.Working.LastElevation / kDegree, 38, 1);
    EXPECT_NEAR(o.app.Run.Working.LastAzimuth / kDegree, 191, 2);
    EXPECT_FALSE(main.LSatDetail.Caption.Get().empty());
    o.Append(meteosat).OptionFlags[1] = '0';
    EXPECT_EQ(Circles().size(), 2U);
}

TEST_F(SatellitesTest, TheHeightOfTheWorkingSatellite) {
    LoadMeteosat();
    LookAt(0, 0, 8);
    Draw();
    const std::string text = main.LSatDetail.Caption;
    const std::string head = "Satellite height: ";
    const std::string tail = " km";
    ASSERT_TRUE(text.starts_with(head) && text.ends_with(tail)) << text;
    const std::string number = text.substr(head.size(), text.size() - head.size() - tail.size());
    // 42,164 km from the centre, over a sphere through Turin.
    EXPECT_NEAR(LeadingNumber(number), 42164.2 - data.Site.SiteRadius / 1000, 20);
    const std::size_t mark = number.find('.');
    EXPECT_TRUE(mark == std::string::npos || mark + 2 == number.size()) << number;
}

TEST_F(SatellitesTest, WithoutTheEarthTheSatelliteTellsButShowsOnTheSkyOnly) {
    SatRecord& meteosat = LoadMeteosat();
    LookAt(0, -90, 8);
    main.CPlotOrbit.Value = true;
    main.CSatNames.Value = true;
    main.CSkyOnly.Value = true;
    Draw();
    EXPECT_TRUE(surface.Operations().empty());
    EXPECT_TRUE(o.app.Run.Working.IsOf(meteosat));
    main.CDrawSky.Value = true;
    main.CDrawFrontStars.Value = true;
    data.View.SkyScale = 4;
    EXPECT_EQ(Circles().size(), 2U);
    // It stands high over the horizon, so all of the sky or the visible one makes no difference.
    main.CLocalSky.Value = true;
    EXPECT_EQ(Circles().size(), 2U);
    SetLocation(data, {0, kPiExact, 0});  // on the other side of the Earth
    EXPECT_TRUE(Circles().empty());
}

TEST_F(SatellitesTest, NoSatellites) {
    Draw();
    EXPECT_TRUE(surface.Operations().empty());
}

TEST_F(SatellitesTest, ASatelliteWithoutElementsIsLeftOut) {
    LoadMeteosat().EngineBlock = {};
    LookAt(0, -90, 8);
    Draw();
    EXPECT_TRUE(surface.Operations().empty());
    EXPECT_EQ(main.LSatDetail.Caption.Get(), "");
}

TEST_F(SatellitesTest, TheBlockKeepsTheDisplayedInstantWhateverIsDrawn) {
    SatRecord& meteosat = LoadMeteosat();
    EngineBlock block = meteosat.EngineBlock;
    const Vector3 expected = PropagateSatellite(data, EarthRotation::Displayed, block, data.SimTime).position;
    main.CPlotOrbit.Value = true;
    LookAt(0, 0, 8);
    Draw();
    // The block is packed: its values may be read, not referred to.
    const EngineBlock& kept = meteosat.EngineBlock;
    ExpectVector({kept.WorldPosition[0], kept.WorldPosition[1], kept.WorldPosition[2]}, expected, 0);
}

TEST_F(SatellitesTest, VisibilityCircles) {
    LoadMeteosat();
    LookAt(0, 0, 8);
    const auto lines = [&] {
        Draw();
        return surface.OperationsOf(DrawOperation::Line).size();
    };
    main.CSatCircle.Value = true;
    EXPECT_EQ(lines(), 100U);  // 76 degrees round the point below: all on the near side
    main.CSatCircle.Value = false;
    main.CDrawArea.Value = true;
    EXPECT_GT(lines(), 50U);
    main.CSkyOnly.Value = true;
    EXPECT_EQ(lines(), 0U);
}

// Memory.
TEST_F(SatellitesTest, TheLoopAllocatesNothingPerSatellite) {
    o.Load("all.tle");
    main.CSatOnly.Value = true;
    Nowhere nowhere;
    const SceneContext quiet{o.app, nowhere, polygon};
    LookAt(30, 10, 29);
    const auto used = [&](int satellites) {
        // The same satellite works each time.
        std::swap(data.Satellite(satellites), data.Satellite(data.SatCount));
        const int all = data.SatCount;
        data.SatCount = satellites;
        DrawSatellites(quiet, work);
        const std::size_t before = allocations;
        DrawSatellites(quiet, work);
        const std::size_t after = allocations;
        data.SatCount = all;
        std::swap(data.Satellite(satellites), data.Satellite(all));
        return after - before;
    };
    ASSERT_GT(data.SatCount, 900);
    main.CIridiumFlares.Value = false;
    EXPECT_EQ(used(900), used(10));
    // All that there is to be drawn of a satellite, with the observer below a flare, whose label is then a text.
    main.CIridiumFlares.Value = true;
    main.CPlotOrbit.Value = true;
    main.CProjectOrbit.Value = true;
    main.CAntennaID.Value = true;
    main.CSatCircle.Value = true;
    main.CDrawSky.Value = true;
    main.CDrawFrontStars.Value = true;
    o.app.Mirror.CShowSourceRay.Value = true;
    o.app.Mirror.CShowMirrorNormal.Value = true;
    o.app.Mirror.CShowRotAxis.Value = true;
    const LightPlaces lights = LightPlacesAt(data);
    for (int s = data.SatCount; s > 0; --s) {
        SatRecord& satellite = data.Satellite(s);
        const WorldMotion motion =
            PropagateSatellite(data, EarthRotation::Displayed, satellite.EngineBlock, data.SimTime);
        FindLiveFlares(o.app, satellite, motion, lights, {}, work.flares);
        if (work.flares.All().empty()) continue;
        const LatLonRadius below = XYZToLatLon(work.flares.All()[0].centre);
        SetLocation(data, {below.lat, below.lon, 0});
        LookAt(below.lat / kDegree, below.lon / kDegree, 29);
        std::swap(satellite, data.Satellite(5));
        break;
    }
    EXPECT_EQ(used(900), used(10));
    EXPECT_GT(nowhere.points, 0);
    main.CSatOnly.Value = false;
    for (int s = 1; s <= 40; ++s) data.Satellite(s).OptionFlags[0] = '0';  // each with its orbit
    EXPECT_EQ(used(40), used(10));
    main.CPlaniSphere.Value = true;
    EXPECT_EQ(used(40), used(10));
    main.CSGP4.Value = false;
    EXPECT_EQ(used(40), used(10)) << "by the simple model";
}

TEST_F(SatellitesTest, TheFinderKnowsTheLastMarkOfAFullList) {
    LoadMeteosat();
    const SatRecord meteosat = data.Satellite(data.SatCount);
    for (int s = 1; s <= kSatCapacity; ++s) data.SatTable[static_cast<std::size_t>(s)] = meteosat;
    data.SatCount = kSatCapacity;
    main.CSatOnly.Value = true;
    LookAt(0, 0, 10);
    Nowhere nowhere;
    DrawSatellites({o.app, nowhere, polygon}, work);
    const FinderState& finder = o.app.Run.Finder;
    ASSERT_EQ(finder.FinderCount(), 3000);
    EXPECT_EQ(finder.FinderList[3000].satellite, 3000);
    main.CDrawSky.Value = main.CDrawFrontStars.Value = main.CDrawBackStars.Value = true;
    data.View.SkyScale = 2;
    DrawSatellites({o.app, nowhere, polygon}, work);
    EXPECT_EQ(finder.FinderCount(), 6000) << "with the marks on the sky";
}

TEST_F(SatellitesTest, TheFinderKnowsEachMarkWhereItIsDrawn) {
    LoadMeteosat();
    LookAt(0, 0, 10);
    data.View.PanX = 0.3;
    data.View.PanY = -0.2;
    Draw();
    const FinderState& finder = o.app.Run.Finder;
    ASSERT_EQ(finder.FinderCount(), 1);
    EXPECT_EQ(finder.FinderList[1].satellite, data.SatCount);
    const double unit = 200 * 10 / 64.0;
    const std::vector<double> drawn = Circles()[0].numbers;
    EXPECT_NEAR(300 + finder.FinderList[1].x * unit, drawn[0], 1e-6);
    EXPECT_NEAR(200 - finder.FinderList[1].y * unit, drawn[1], 1e-6);
    Draw();
    EXPECT_EQ(finder.FinderCount(), 1) << "each picture has its own";
    data.View.PanX = 1e5;
    Draw();
    EXPECT_EQ(finder.FinderCount(), 0) << "a mark beyond the picture";
    data.View.PanX = 0;
    main.CDrawSky.Value = main.CDrawFrontStars.Value = main.CDrawBackStars.Value = true;
    data.View.SkyScale = 2;
    Draw();
    EXPECT_EQ(finder.FinderCount(), 2) << "on the sky it has a mark of its own";
}

// While a chart stands for the globe.
TEST_F(SatellitesTest, TheWorkingSatelliteIsFollowedWithoutBeingDrawn) {
    LoadMeteosat();
    LookAt(0, 0, 8);
    Draw();
    const std::string height = main.LSatDetail.Caption;
    const double elevation = o.app.Run.Working.LastElevation;
    ASSERT_EQ(height.substr(0, 18), "Satellite height: ");
    ASSERT_GT(o.app.Run.Finder.FinderCount(), 0);
    main.LSatDetail.Caption = "";
    o.app.Run.Working.Forget();
    surface.Forget();
    FollowWorkingSatellite(o.app, work);
    EXPECT_TRUE(surface.Operations().empty());
    EXPECT_EQ(main.LSatDetail.Caption.Get(), height);
    EXPECT_TRUE(o.app.Run.Working.IsOf(data.Satellite(data.WorkingSat())));
    EXPECT_EQ(o.app.Run.Working.LastElevation, elevation);
    EXPECT_EQ(o.app.Run.Finder.FinderCount(), 0) << "no mark is under the mouse";
    data.SatCount = 0;
    FollowWorkingSatellite(o.app, work);
}

}  // namespace
}  // namespace glintara::testing
