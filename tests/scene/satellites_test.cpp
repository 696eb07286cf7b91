#include "scene/satellites.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "engine/astro/number_text.h"
#include "engine/geometry/attitude_types.h"
#include "flare/observed_night.h"
#include "orbit/location.h"
#include "orbit/propagation.h"
#include "scene/flare_marks.h"
#include "scene/orbits.h"
#include "scene/overlays.h"
#include "scene/scene_fixture.h"

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

using observed_night::kTurin;
using observed_night::Observatory;

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

NameWish Wish(double x, double y, double range, std::string_view name, NameRank rank = NameRank::Other) {
    NameWish wish;
    wish.x = x;
    wish.y = y;
    wish.range = range;
    wish.name = name;
    wish.rank = rank;
    return wish;
}

struct SatellitesTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;
    MainControls& main = o.app.Main;
    RecordingSurface surface{600, 400};
    PolygonBuffer polygon;
    SceneContext scene{o.app, surface, polygon};
    SatelliteWorkspace work;

    void SetUp() override { data.SunDir = {0, 0, 1}; }

    /// METEOSAT-10 works; it stands over Greenwich. Only its mark is shown.
    SatRecord& LoadMeteosat() {
        o.LoadOne("geo.tle", "METEOSAT-10 (MSG-3)");
        main.CPlotOrbit.Value = false;
        main.CSatNames.Value = false;
        return data.Satellite(data.SatCount);
    }

    void LookAt(double lat, double lon, double zoom) {
        data.View.ViewLat = lat * kDegree;
        data.View.ViewLon = lon * kDegree;
        data.View.ZoomFactor = zoom;
        RefreshViewCache(data.View);
    }

    /// 800 by 600 pixels, where words have room.
    void Enlarge() {
        surface.ScaleWidth = 12000;
        surface.ScaleHeight = 9000;
    }

    void Draw() {
        surface.Forget();
        DrawSatellites(scene, work);
    }

    /// What a board writes.
    std::vector<RecordedOperation> Written(NameBoard& board) {
        surface.Forget();
        board.Draw(scene);
        return surface.OperationsOf(DrawOperation::Print);
    }

    /// The area of a written name; its first character is a blank.
    BoxArea AreaOf(const RecordedOperation& name) {
        const double width = surface.TextWidth(name.text);
        const double height = surface.TextHeight(name.text);
        return {name.state.CurrentX, name.state.CurrentY, name.state.CurrentX + width, name.state.CurrentY + height};
    }

    std::vector<RecordedOperation> Circles() {
        Draw();
        return surface.OperationsOf(DrawOperation::Circle);
    }

    /// The marks of `flares`, then the names.
    void DrawMarks(const SatRecord& satellite, const LiveFlares& flares) {
        surface.Forget();
        work.names.Clear();
        DrawFlareMarks(scene, satellite, flares, work.names);
        work.names.Draw(scene);
    }

    std::vector<RecordedOperation> Names() {
        Draw();
        return surface.OperationsOf(DrawOperation::Print);
    }
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

TEST_F(SatellitesTest, TheSimplePropagatorShowsNone) {
    SatRecord& meteosat = LoadMeteosat();
    LookAt(0, -90, 8);
    main.CSGP4.Value = false;
    Draw();
    EXPECT_TRUE(surface.Operations().empty());
    EXPECT_FALSE(o.app.Run.Working.IsOf(meteosat));
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

// Names.

TEST_F(SatellitesTest, TheNameStandsBesideTheMark) {
    LoadMeteosat();
    Enlarge();
    LookAt(0, -90, 8);
    EXPECT_TRUE(Names().empty());
    main.CSatNames.Value = true;
    const auto names = Names();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].text, " METEOSAT-10 (MSG-3)");
    EXPECT_EQ(names[0].state.ForeColor, 0xFFFFFFU);
    EXPECT_TRUE(names[0].state.FontOutlined);
    EXPECT_FALSE(surface.FontOutlined);
    const auto circles = surface.OperationsOf(DrawOperation::Circle);
    EXPECT_NEAR(names[0].state.CurrentX, circles[0].numbers[0] + circles[1].numbers[2], 1e-9);
    const double size = names[0].state.FontSize;
    main.CThinLines.Value = true;
    EXPECT_LT(Names()[0].state.FontSize, size);
}

TEST_F(SatellitesTest, OfNamesAtOnePlaceTheWorkingSatellitesIsWritten) {
    SatRecord& meteosat = LoadMeteosat();
    Enlarge();
    main.CSatNames.Value = true;
    o.Append(meteosat).Name = "WORKS";
    LookAt(0, -90, 8);
    const auto names = Names();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].text, " WORKS");
}

TEST_F(SatellitesTest, NamesNeverCoverEachOther) {
    o.Load("all.tle");
    o.LoadOne("geo.tle", "METEOSAT-10 (MSG-3)");
    surface.ScaleWidth = 28800;  // 1920 by 1080 pixels
    surface.ScaleHeight = 16200;
    main.CPlotOrbit.Value = false;
    LookAt(0, 10, 29);
    const auto names = Names();
    EXPECT_GT(names.size(), 100U);
    EXPECT_LE(names.size(), kMostNames);
    EXPECT_EQ(names[0].text, " METEOSAT-10 (MSG-3)");
    const double height = surface.TextHeight("X");
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(names[i].state.ForeColor, i == 0 ? 0xFFFFFFU : 0x9E948BU);
        for (std::size_t k = 0; k < i; ++k) {
            const bool apartX = std::fabs(names[i].state.CurrentX - names[k].state.CurrentX) >=
                                std::min(surface.TextWidth(names[i].text), surface.TextWidth(names[k].text));
            const bool apartY = std::fabs(names[i].state.CurrentY - names[k].state.CurrentY) >= height;
            EXPECT_TRUE(apartX || apartY) << names[i].text << names[k].text;
        }
    }
}

TEST_F(SatellitesTest, TheNearerNameComesFirst) {
    surface.ScaleWidth = 28800;
    surface.ScaleHeight = 16200;
    NameBoard board(8);
    board.Add(Wish(3000, 2000, 5, "far"));
    board.Add(Wish(3010, 2010, 1, "near"));
    board.Add(Wish(3000, 9000, 9, "else"));
    board.Draw(scene);
    const auto names = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[0].text, " near");
    EXPECT_EQ(names[1].text, " else");
}

TEST_F(SatellitesTest, NamesOfMarksOutOfThePictureAreLeftOut) {
    Enlarge();
    NameBoard board(8);
    board.Add(Wish(12100, 4000, 1, "right"));
    board.Add(Wish(-10, 4000, 1, "left"));
    board.Add(Wish(6000, -10, 1, "above"));
    board.Add(Wish(6000, 9010, 1, "below"));
    board.Add(Wish(6000, 4000, 1, ""));
    EXPECT_TRUE(Written(board).empty());
    // In a picture that is smaller than a name there is room for none.
    surface.ScaleWidth = 500;
    surface.ScaleHeight = 9000;
    board.Add(Wish(250, 4000, 1, "LONGER THAN THAT"));
    EXPECT_TRUE(Written(board).empty());
    surface.ScaleWidth = 12000;
    surface.ScaleHeight = 100;
    board.Add(Wish(6000, 50, 1, "higher"));
    EXPECT_TRUE(Written(board).empty());
}

// Five characters and a blank of 108 twips each are 648 twips wide, and 225 high.
TEST_F(SatellitesTest, NamesThatTheEdgeWouldCutStandToTheLeft) {
    Enlarge();
    NameBoard board(8);
    const auto wish = [](double x, double y) {
        NameWish made = Wish(x, y, 1, "NAMED");
        made.gap = 50;
        return made;
    };
    const auto placed = [&](double x, double y) {
        board.Clear();
        board.Add(wish(x, y));
        const auto names = Written(board);
        EXPECT_EQ(names.size(), 1U);
        return AreaOf(names.at(0));
    };
    EXPECT_NEAR(placed(6000, 4000).left, 6050, 1e-9);
    EXPECT_NEAR(placed(6000, 4000).top, 4000 - 0.7 * 225, 1e-9);
    EXPECT_NEAR(placed(11302, 4000).right, 12000, 1e-9);
    // With a blank between the name and its mark.
    EXPECT_NEAR(placed(11303, 4000).right, 11303 - 50 - 108, 1e-9);
    EXPECT_NEAR(placed(12000, 4000).right, 12000 - 50 - 108, 1e-9);
    // Up and down the name moves as far as it has to.
    EXPECT_NEAR(placed(6000, 10).top, 0, 1e-9);
    EXPECT_NEAR(placed(6000, 8990).bottom, 9000, 1e-9);
}

TEST_F(SatellitesTest, NoNameStandsOverTheTitle) {
    Enlarge();
    NameBoard board(400);
    const BoxArea title = TitleArea(surface);
    EXPECT_GT(title.right, 3000);
    EXPECT_GT(title.bottom, 500);
    for (int x = 0; x < 20; ++x)
        for (int y = 0; y < 8; ++y) board.Add(Wish(300 * x, 150 * y, 1, "A NAME"));
    const auto names = Written(board);
    ASSERT_GT(names.size(), 3U);
    for (const RecordedOperation& name : names) {
        const BoxArea area = AreaOf(name);
        EXPECT_TRUE(area.left >= title.right || area.top >= title.bottom) << OperationText(name);
    }
    // One whose mark is right of the title still finds its place to the right, one just at its end too.
    board.Clear();
    board.Add(Wish(title.right + 10, 200, 1, "BESIDE"));
    EXPECT_EQ(Written(board).size(), 1U);
    // What the title covers is where the title is written.
    DrawTitleBlock(scene);
    for (const RecordedOperation& word : surface.OperationsOf(DrawOperation::Print)) {
        if (word.state.FontName != kTitleFont) continue;
        EXPECT_LT(word.state.CurrentX, title.right);
        EXPECT_LT(word.state.CurrentY, title.bottom);
    }
}

TEST_F(SatellitesTest, TheLabelOfAFlareStandsBesideTheObserversMark) {
    Enlarge();
    SetLocationDegrees(data, 0, 0);
    LookAt(0, 0, 64);
    const double radius = 4500 * 0.002 > 37.5 ? 4500 * 0.002 : 37.5;
    const auto leftOf = [&](double x, double y) {
        NameBoard board(1);
        NameWish label = Wish(x, y, 1, "- 3 km", NameRank::Flare);
        label.rise = 0;
        board.AddLabel(label);
        const auto words = Written(board);
        EXPECT_EQ(words.size(), 1U);
        return words.at(0).state.CurrentX;
    };
    EXPECT_NEAR(leftOf(6000, 4500), 6000 + radius, 1e-9);
    EXPECT_NEAR(leftOf(5980, 4520), 6000 + radius, 1e-9);
    EXPECT_NEAR(leftOf(6000, 4500 + radius), 6000, 1e-9);
    EXPECT_NEAR(leftOf(6000 + radius, 4500), 6000 + radius, 1e-9);
    main.CSkyOnly.Value = true;  // no mark, nothing to be beside
    EXPECT_NEAR(leftOf(6000, 4500), 6000, 1e-9);
}

// Flares.

TEST_F(SatellitesTest, FlaresShowWhenTheirOptionsSaySo) {
    o.Load("iridium.tle");
    main.CPlotOrbit.Value = true;
    main.CSatOnly.Value = true;
    main.CSatNames.Value = false;
    main.CPlaniSphere.Value = true;
    LookAt(0, 0, 20);
    const auto inFlareColor = [&] {
        Draw();
        return std::ranges::count_if(surface.Operations(),
                                     [](const auto& op) { return op.state.ForeColor == 0x208040; });
    };
    EXPECT_GT(inFlareColor(), 100);
    main.CPlotOrbit.Value = false;
    EXPECT_EQ(inFlareColor(), 0);
    main.CPlotOrbit.Value = true;
    main.CSkyOnly.Value = true;
    EXPECT_EQ(inFlareColor(), 0);
    main.CSkyOnly.Value = false;
    main.CIridiumFlares.Value = false;
    EXPECT_EQ(inFlareColor(), 0);
}

TEST_F(SatellitesTest, RaysBelongToTheFlaresAndLieBelowTheMark) {
    SatRecord& meteosat = LoadMeteosat();
    meteosat.Surface.ModelFlags[0] = '1';
    meteosat.Surface.MirrorCount = 1;
    main.CSatOnly.Value = true;
    o.app.Mirror.CShowSourceRay.Value = true;
    o.app.Mirror.CForceIllumination.Value = true;
    LookAt(0, -90, 8);
    Draw();
    ASSERT_FALSE(surface.OperationsOf(DrawOperation::Line).empty());
    EXPECT_EQ(surface.Operations().front().operation, DrawOperation::Line);
    EXPECT_EQ(surface.Operations().back().operation, DrawOperation::Circle);
    main.CIridiumFlares.Value = false;
    Draw();
    EXPECT_TRUE(surface.OperationsOf(DrawOperation::Line).empty());
}

TEST_F(SatellitesTest, TheReadOutIsOfTheWorkingSatellite) {
    const auto giveMirror = [](SatRecord& satellite, double tilt) {
        satellite.Surface.ModelFlags[0] = '1';
        satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Rotating);
        satellite.Surface.RotAxisDEC = 90 * kDegree;
        satellite.Surface.MirrorCount = 1;
        satellite.Surface.Mirror(1).Tilt = tilt;
    };
    giveMirror(LoadMeteosat(), 15.015);
    giveMirror(o.Append(data.Satellite(1)), 30.126);
    const MirrorControls& editor = o.app.Mirror;
    Draw();
    EXPECT_EQ(editor.LRotDEC.Caption.Get(), "DEC [°]: ");
    o.app.Mirror.CRotAng.Value = true;
    Draw();
    EXPECT_EQ(editor.LRotDEC.Caption.Get(), "DEC [°]: 30.12");
    EXPECT_EQ(editor.LRotRMA.Caption.Get(), "RMA [°]: 59.87");
    EXPECT_NE(editor.LRotAngle.Caption.Get(), "ANGLE [°]: ");
    data.Satellite(2).Surface.OrientationType = 0;
    Draw();
    EXPECT_EQ(editor.LRotDEC.Caption.Get(), "DEC [°]: ");
    EXPECT_EQ(editor.LRotAngle.Caption.Get(), "ANGLE [°]: ");
}

TEST_F(SatellitesTest, AFlareFarAwayIsACircleOfHalfADegree) {
    main.CPlotOrbit.Value = true;
    LookAt(0, 0, 64);
    SatRecord satellite;
    LiveFlares flares;
    LiveFlare flare;
    flare.centre = {1, 0, 0};
    flare.distance = 300000;
    flares.Add(flare);
    DrawMarks(satellite, flares);
    const auto lines = surface.OperationsOf(DrawOperation::Polyline);
    ASSERT_EQ(lines.size(), 1U);
    const auto& xy = lines[0].numbers;
    for (std::size_t i = 0; i + 1 < xy.size(); i += 2)
        EXPECT_NEAR(std::hypot(xy[i] * 15 - 300, xy[i + 1] * 15 - 200), 200 * std::sin(0.45 * kDegree), 1e-9);
    EXPECT_NEAR(xy[0], xy[xy.size() - 2], 1e-9);
    EXPECT_EQ(lines[0].state.ForeColor, 0x208040U);
    main.CPlotOrbit.Value = false;
    DrawMarks(satellite, flares);
    EXPECT_TRUE(surface.Operations().empty());
}

TEST_F(SatellitesTest, ANearFlareIsAPointWithItsLabelOnTheNearSide) {
    SatRecord satellite;
    satellite.Surface.Mirror(2).MirrorName = "L";
    LiveFlares flares;
    LiveFlare flare;
    flare.centre = {0, 1, 0};
    flare.distance = 34120;
    flare.surface = 2;
    flares.Add(flare);
    flare.moon = true;
    flare.centre = {0, std::cos(0.5), std::sin(0.5)};
    flare.distance = 299000;
    flares.Add(flare);
    surface.ScaleWidth = 12000;
    surface.ScaleHeight = 9000;
    LookAt(0, 90, 64);
    main.CAntennaID.Value = true;
    DrawMarks(satellite, flares);
    const auto labels = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(labels.size(), 2U);
    EXPECT_EQ(labels[0].text, " L - 34.12 km (0°)");
    EXPECT_NEAR(labels[0].state.CurrentX, 6000, 1e-9);
    EXPECT_NEAR(labels[0].state.CurrentY, 4500, 1e-9);
    EXPECT_EQ(labels[1].text, " L");
    EXPECT_NEAR(labels[1].state.CurrentY, 4500 - 4500 * std::sin(0.5), 1e-9);
    EXPECT_EQ(labels[0].state.ForeColor, 0x00FF00U);
    EXPECT_EQ(labels[1].state.ForeColor, 0x80FFFFU);
    EXPECT_EQ(surface.OperationsOf(DrawOperation::PSet).size(), 2U);
    LookAt(0, -90, 64);
    DrawMarks(satellite, flares);
    EXPECT_TRUE(surface.Operations().empty());
}

// Part of the circle lies on the far side; what is seen of it ends at the limb, and none of it is drawn as one line.
TEST_F(SatellitesTest, TheLimbCutsTheCircleOfAFlare) {
    main.CPlotOrbit.Value = true;
    Enlarge();
    LookAt(0, 0, 640);
    const double unit = 45000;
    SatRecord satellite;
    LiveFlares flares;
    LiveFlare flare;
    const double off = 89.8 * kDegree;  // from the middle of the disc
    flare.centre = {std::cos(off), std::sin(off), 0};
    flare.distance = 400000;
    flares.Add(flare);
    DrawMarks(satellite, flares);
    EXPECT_TRUE(surface.OperationsOf(DrawOperation::Polyline).empty());
    const auto lines = surface.OperationsOf(DrawOperation::Line);
    ASSERT_GT(lines.size(), 10U);
    double least = 1;
    double highest = 0;
    for (const RecordedOperation& line : lines) {
        EXPECT_EQ(line.state.ForeColor, 0x208040U);
        EXPECT_EQ(line.state.DrawWidth, 1);
        for (const std::size_t i : {0U, 2U}) {
            const double y = (line.numbers[i] - 6000) / unit;
            const double z = (4500 - line.numbers[i + 1]) / unit;
            const double x = std::sqrt(std::max(0.0, 1 - y * y - z * z));
            // On the Earth, 0.45 degrees from the centre of the light.
            EXPECT_LE(std::hypot(y, z), 1 + 1e-9);
            const double along = Dot(Vector3{x, y, z}, flare.centre);
            EXPECT_NEAR(std::acos(std::min(1.0, along)) / kDegree, 0.45, 1e-3);
            least = std::min(least, y);
            highest = std::max(highest, std::fabs(z));
        }
    }
    EXPECT_NEAR(least, std::sin(off - 0.45 * kDegree), 1e-6);
    // The circle meets the limb 0.2 degrees beyond its centre: sqrt(0.45^2 - 0.2^2) degrees up; its widest place is
    // seen.
    EXPECT_NEAR(highest / kDegree, 0.45, 0.01);
}

TEST_F(SatellitesTest, TheCircleOfAFlareOnTheFlatMap) {
    main.CPlotOrbit.Value = true;
    main.CPlaniSphere.Value = true;
    Enlarge();
    LookAt(0, 0, 16);
    const double unit = 4500 * 16.0 / 64;
    SatRecord satellite;
    LiveFlare flare;
    flare.distance = 400000;
    const auto draw = [&](double lat, double lon) {
        flare.centre = LLRToSameXYZ(lat * kDegree, lon * kDegree, 1);
        LiveFlares flares;
        flares.Add(flare);
        DrawMarks(satellite, flares);
        EXPECT_TRUE(surface.OperationsOf(DrawOperation::Polyline).empty());
        return surface.OperationsOf(DrawOperation::Line);
    };
    // At 60 degrees of latitude it is twice as wide as high; a circle behind the globe is drawn as any other.
    for (const double lon : {0.0, 150.0}) {
        const auto lines = draw(60, lon);
        ASSERT_GE(lines.size(), 12U);
        double wide = 0;
        double high = 0;
        for (const RecordedOperation& line : lines) {
            EXPECT_EQ(line.state.ForeColor, 0x208040U);
            wide = std::max(wide, std::fabs((line.numbers[0] - 6000) / unit / kDegree - lon));
            high = std::max(high, std::fabs((4500 - line.numbers[1]) / unit / kDegree - 60));
        }
        EXPECT_NEAR(wide, 0.9, 0.05);
        EXPECT_NEAR(high, 0.45, 0.03);
    }
    // Across the seam it comes in two parts, neither of which crosses the map.
    const auto parts = draw(0, 180);
    int atLeft = 0;
    int atRight = 0;
    for (const RecordedOperation& line : parts) {
        EXPECT_LT(std::fabs(line.numbers[0] - line.numbers[2]), 2 * unit * kDegree);  // half a percent beyond the seam
        (line.numbers[0] < 6000 ? atLeft : atRight) += 1;
    }
    EXPECT_GE(atLeft, 6);
    EXPECT_GE(atRight, 6);
}

TEST_F(SatellitesTest, OfFlareLabelsAtOnePlaceTheNearestIsWritten) {
    SatRecord satellite;
    LiveFlares flares;
    LiveFlare flare;
    flare.centre = {1, 0, 0};
    for (const double distance : {120000.0, 34120.0, 90000.0}) {
        flare.distance = distance;
        flares.Add(flare);
    }
    Enlarge();
    LookAt(0, 0, 64);
    DrawMarks(satellite, flares);
    const auto labels = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(labels.size(), 1U);
    EXPECT_EQ(labels[0].text, " - 34.12 km (0°)");
    EXPECT_EQ(surface.OperationsOf(DrawOperation::PSet).size(), 3U) << "but all points are there";
}

TEST_F(SatellitesTest, LabelsComeFirstThenTheWorkingSatellite) {
    Enlarge();
    NameBoard board(8);
    board.Add(Wish(6000, 4000, 1, "other"));
    board.Add(Wish(6000, 4000, 1, "working", NameRank::Working));
    std::string text = "label";
    board.AddLabel(Wish(6000, 4000, 9, text, NameRank::Flare));
    text = "XXXXX";  // the board has its own
    board.Draw(scene);
    auto words = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(words[0].text, " label");
    board.Clear();
    surface.Forget();
    board.Add(Wish(6000, 4000, 1, "other"));
    board.Add(Wish(6000, 4000, 5, "working", NameRank::Working));
    board.Draw(scene);
    words = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(words[0].text, " working");
}

TEST_F(SatellitesTest, AFullBoardStillTakesNames) {
    Enlarge();
    NameBoard board(1);
    for (std::size_t i = 0; i < 2 * kMostLabels; ++i) board.AddLabel(Wish(-5000, 0, 1, "far out"));
    board.AddLabel(Wish(-5000, 0, 1, std::string(kLabelRoom, 'x')));
    board.Add(Wish(6000, 4000, 1, "name"));
    board.Add(Wish(6000, 6000, 1, "one too many"));
    board.Draw(scene);
    const auto words = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(words[0].text, " name");
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
    main.CSGP4.Value = false;
    Draw();
    EXPECT_EQ(finder.FinderCount(), 0);
}

}  // namespace
}  // namespace glintara::testing
