#include "core/map_tools.h"

#include "core/mouse.h"
#include "core/panels.h"
#include "core/program_fixture.h"
#include "orbit/files.h"
#include "scene/map_files.h"
#include "scene/map_text.h"
#include "scene/stages.h"
#include "scene/surface/recording_surface.h"

namespace glintara::testing {
namespace {

namespace fs = std::filesystem;

constexpr double kWidth = 12000;
constexpr double kHeight = 8000;
constexpr std::size_t kLargestFile = 100'000'000;
constexpr Color kMarkerColor = 0x8080FF;

const fs::path kData = fs::path(GLINTARA_SOURCE_DIR) / "data";
constexpr const char* kMapFiles[] = {"DB001.VDB", "DB002.VDB", "DB003.VDB", "DB004.VDB", "DB005.VDB"};

/// A picture of 12000 x 8000 twips at zoom 64: 4000 twips to the unit of the globe, the camera on latitude and
/// longitude 0. The program works in a folder of the test's.
struct MapToolsTest : ProgramTest {
    MapToolsTest() {
        fs::current_path(folder.Path());
        app.Run.AutoTurn = 1;  // the opening is over
        view.ZoomFactor = 64;
        view.ViewLat = view.ViewLon = view.ViewRoll = 0;
        RefreshViewCache(view);
        map.Border.Lat = {0, 29.8, 30, 30.2, 10, 40, 0, 0};
        map.Border.Lon = {0, 0, 0, 0, 110, 100, -170, 30};
        map.Border.Id = {0, 1, 1, 1, 2, 2, 3, 3};
        ConnectMapTools(app);
    }
    ~MapToolsTest() override { fs::current_path(before); }

    void LookAt(double lat, double lon, double roll = 0) {
        view.ViewLat = lat * kDegree;
        view.ViewLon = lon * kDegree;
        view.ViewRoll = roll * kDegree;
        RefreshViewCache(view);
    }

    /// The mouse goes to a place of the picture, twips, and the vertex is picked there.
    std::int32_t PickAt(double x, double y) {
        mouse.Moved({x, y, kWidth, kHeight}, {});
        main.CPolDbg.Click();
        return app.Run.BorderTool.Selected;
    }

    const std::string& Said() const { return app.Main.LCommandOutput.Caption; }
    static std::string Bytes(const fs::path& file) { return ReadWholeFile(file, kLargestFile).value_or("none"); }

    /// Puts a folder where a file is written before it replaces the old one.
    void BarWriting(const std::string& file) const { fs::create_directory(folder.Path() / (file + ".new")); }

    /// Where the marker stands in a whole picture: x, y and radius of each, twips.
    std::vector<std::vector<double>> Markers() {
        SatelliteWorkspace satellites;
        FrameMemory memory;
        RecordingSurface surface(kWidth, kHeight);
        GlobeFrame(app, surface, memory, StagesOfProgram(satellites));
        std::vector<std::vector<double>> markers;
        for (const RecordedOperation& circle : surface.OperationsOf(DrawOperation::Circle)) {
            // The observer's place wears the same colour; it is filled.
            const bool outlined = circle.state.FillStyle == FillPattern::Transparent;
            if (circle.state.ForeColor == kMarkerColor && outlined) markers.push_back(circle.numbers);
        }
        return markers;
    }

    const fs::path before = fs::current_path();
    ViewState& view = app.Data.View;
    MainControls& main = app.Main;
    MapTables& map = app.Data.Map;
    MouseSteering mouse{app, program.Loop};
};

TEST_F(MapToolsTest, TheMapFilesAreWrittenAsTheyWereRead) {
    // Alone, without the text of the cities, which is read when it is newer.
    const fs::path source = folder.Path() / "source";
    fs::create_directory(source);
    for (const char* file : kMapFiles) fs::create_symlink(kData / file, source / file);
    ASSERT_TRUE(LoadMapFiles(source, map, app.Data.Stars, app.Data.Cities).empty());
    main.CSaveBinDbg.Click();
    EXPECT_EQ(Said(), "Map files written");
    for (const char* file : kMapFiles) EXPECT_TRUE(Bytes(folder.Path() / file) == Bytes(kData / file)) << file;
}

TEST_F(MapToolsTest, StarsAndCitiesAreWrittenToo) {
    StarRecord star;
    star.Magnitude = -1.46;
    star.ProperName = "Sirius";
    SiteRecord city;
    city.CityName = "Torino";
    city.Y = 1;
    app.Data.Stars.StarCatalogue.push_back(star);
    app.Data.Stars.Constellations.push_back({1, 7});
    app.Data.Cities.SiteTable.assign({{}, city});
    app.Data.Cities.FirstSiteIndex = 2;
    main.CSaveBinDbg.Click();
    MapTables mapAgain;
    StarTables starsAgain;
    CityTables citiesAgain;
    ASSERT_TRUE(LoadMapFiles(folder.Path(), mapAgain, starsAgain, citiesAgain).empty());
    EXPECT_EQ(starsAgain.StarCatalogue.at(1), star);
    EXPECT_EQ(starsAgain.Constellations.at(1), (ConstellationLine{1, 7}));
    EXPECT_EQ(citiesAgain.SiteTable.at(1), city);
    EXPECT_EQ(mapAgain.Border.Lat, map.Border.Lat);
}

TEST_F(MapToolsTest, MapFilesThatCannotBeWrittenAreTold) {
    BarWriting("DB002.VDB");
    BarWriting("DB005.VDB");
    main.CSaveBinDbg.Click();
    EXPECT_EQ(Said(), "Cannot write DB002.VDB, DB005.VDB");
    EXPECT_TRUE(fs::exists(folder.Path() / "DB004.VDB"));
}

TEST_F(MapToolsTest, TheReducedBordersAreWrittenAsText) {
    map.Zip.Lat = {0, 45.5, -1};
    map.Zip.Lon = {0, 7.25, 180};
    map.Zip.Id = {0, 3, 4};
    main.CSavePolDbg.Click();
    EXPECT_EQ(Said(), "countryzip.txt written");
    EXPECT_EQ(Bytes("countryzip.txt"), "Header\n3,1,7.25,45.5\n4,2,180,-1\n");
    BarWriting("countryzip.txt");
    main.CSavePolDbg.Click();
    EXPECT_EQ(Said(), "Cannot write countryzip.txt");
}

TEST_F(MapToolsTest, TheSeaSpotsAreReadAndWritten) {
    ASSERT_TRUE(LoadSeaSpots(kData, map));
    const std::vector<SeaSpot> spots = map.SeaSpots;
    ASSERT_GT(spots.size(), 24U);
    main.CSaveDbg.Click();
    EXPECT_EQ(Said(), "SeaSpot.txt written");
    map.SeaSpots = {{}};
    ASSERT_TRUE(LoadSeaSpots(folder.Path(), map));
    ASSERT_EQ(map.SeaSpots.size(), spots.size());
    for (std::size_t i = 1; i < spots.size(); ++i) {
        EXPECT_NEAR(map.SeaSpots[i].lat, spots[i].lat, 1e-12);
        EXPECT_NEAR(map.SeaSpots[i].lon, spots[i].lon, 1e-12);
    }
    BarWriting("SeaSpot.txt");
    main.CSaveDbg.Click();
    EXPECT_EQ(Said(), "Cannot write SeaSpot.txt");
}

TEST_F(MapToolsTest, ATextOfSeaSpotsThatCouldNotBeReadIsNotReplaced) {
    map.SeaSpots = {{}, {0.5, 1}};
    ASSERT_TRUE(ReplaceFile("SeaSpot.txt", "2\n0.5\n1\nhalf\n"));
    EXPECT_FALSE(LoadSeaSpots(".", map));
    EXPECT_EQ(map.SeaSpots.size(), 2U) << "the spots stay as they were";
    EXPECT_FALSE(LoadSeaSpots("nowhere", map));

    map.SeaSpots = {{}};
    main.CSaveDbg.Click();
    EXPECT_EQ(Said(), "No sea spots");
    EXPECT_EQ(Bytes("SeaSpot.txt"), "2\n0.5\n1\nhalf\n");
}

TEST_F(MapToolsTest, TheNearestVertexIsPickedOnTheGlobe) {
    // Latitude 30 stands half a radius, 2000 twips, above the centre; a tenth of a degree is 6 twips there.
    EXPECT_EQ(PickAt(6000, 2000), 2);
    EXPECT_EQ(Said(), "Vertex 2, polygon 1");
    EXPECT_EQ(PickAt(6000, 1993), 3);
    EXPECT_EQ(PickAt(6000, 2007), 1);
    EXPECT_EQ(PickAt(8000, 4000), 7) << "30 degrees to the right";
}

TEST_F(MapToolsTest, TheGlobeIsPickedWhereTheCameraShowsIt) {
    LookAt(40, 100);
    view.PanX = 0.5;
    view.PanY = -0.25;
    EXPECT_EQ(PickAt(8000, 5000), 5) << "the centre of the disc";
    LookAt(0, 190);
    EXPECT_EQ(PickAt(8000, 5000), 6) << "190 degrees east are 170 west";
    LookAt(0, -30, 60);
    EXPECT_EQ(PickAt(8000, 5000), 7) << "the roll turns the globe under the camera";
}

TEST_F(MapToolsTest, TheNearestVertexIsPickedOnTheFlatMap) {
    main.CPlaniSphere.Value = true;
    view.ZoomFactor = 32;  // 2000 twips to the radian
    LookAt(0, 20);
    EXPECT_EQ(PickAt(6000 + 2000 * 90 * kDegree, 4000 - 2000 * 10 * kDegree), 4);
    EXPECT_EQ(PickAt(6000 + 2000 * 170 * kDegree, 4000), 6) << "beyond longitude 180";
    EXPECT_EQ(PickAt(6000 - 2000 * 20 * kDegree, 4000 - 2000 * 30 * kDegree), 2);
    LookAt(-20, 20);
    EXPECT_EQ(PickAt(6000 - 2000 * 20 * kDegree, 4000 - 2000 * 50.2 * kDegree), 3) << "the camera moves the map up";
}

TEST_F(MapToolsTest, NothingIsPickedOffTheEarth) {
    main.CPolDbg.Click();
    EXPECT_EQ(app.Run.BorderTool.Selected, 0) << "the mouse has not been over the picture";
    ASSERT_EQ(PickAt(6000, 2000), 2);
    EXPECT_EQ(PickAt(10001, 4000), 2);
    EXPECT_EQ(PickAt(9000, 1300), 2);
    EXPECT_EQ(PickAt(9999, 4000), 4) << "just inside the limb, some 89 degrees east";
    ASSERT_EQ(PickAt(6000, 2000), 2);
    main.CSkyOnly.Value = true;
    EXPECT_EQ(PickAt(8000, 4000), 2) << "there is no Earth in the picture";

    main.CSkyOnly.Value = false;
    main.CPlaniSphere.Value = true;
    view.ZoomFactor = 32;
    EXPECT_EQ(PickAt(6000 + 2000 * 181 * kDegree, 4000), 2);
    EXPECT_EQ(PickAt(6000, 4000 + 2000 * 91 * kDegree), 2);
    EXPECT_EQ(PickAt(6000 + 2000 * 30 * kDegree, 4000 + 2000 * 89 * kDegree), 7) << "in the map's corner";
}

TEST_F(MapToolsTest, TheSelectionGoesAlongTheBorder) {
    main.CPrevBorderDbg.Click();
    EXPECT_EQ(app.Run.BorderTool.Selected, 0);
    EXPECT_EQ(Said(), "");
    main.CNextBorderDbg.Click();
    EXPECT_EQ(Said(), "Vertex 1, polygon 1");
    for (int i = 0; i < 10; ++i) main.CNextBorderDbg.Click();
    EXPECT_EQ(Said(), "Vertex 7, polygon 3");
    main.CPrevBorderDbg.Click();
    EXPECT_EQ(Said(), "Vertex 6, polygon 3");
}

TEST_F(MapToolsTest, VerticesAreAddedUnderTheirPolygon) {
    main.CAddPolDbg.Click();
    EXPECT_EQ(Said(), "No vertex selected");
    EXPECT_EQ(map.Zip.Count(), 0);

    main.CNewPolDbg.Click();
    PickAt(6000, 2000);
    main.CAddPolDbg.Click();
    EXPECT_EQ(Said(), "#1/1");
    main.CNextBorderDbg.Click();
    main.CAddPolDbg.Click();
    EXPECT_EQ(Said(), "#2/1");
    main.CNewPolDbg.Click();
    EXPECT_EQ(Said(), "The next vertex begins a polygon");
    main.CAddPolDbg.Click();
    EXPECT_EQ(Said(), "#3/2");
    EXPECT_EQ(map.Zip.Id, (std::vector<std::int32_t>{0, 1, 1, 2}));
    EXPECT_EQ(map.Zip.Lat, (std::vector<double>{0, 30, 30.2, 30.2}));
}

TEST_F(MapToolsTest, APictureIsAskedForWhenTheMarkerMoves) {
    main.Timer2.Stop();
    main.CNextBorderDbg.Click();
    EXPECT_TRUE(main.Timer2.Enabled);
    main.Timer2.Stop();
    PickAt(6000, 2000);
    EXPECT_TRUE(main.Timer2.Enabled);
    main.Timer2.Stop();
    main.CAddPolDbg.Click();
    EXPECT_TRUE(main.Timer2.Enabled) << "the reduced borders are in the picture";
}

TEST_F(MapToolsTest, TheMenuGoesWithTheOthersInFullScreen) {
    EXPECT_TRUE(main.MnuMapTools.Visible);
    SetFullScreen(app, true);
    EXPECT_FALSE(main.MnuMapTools.Visible);
    SetFullScreen(app, false);
    EXPECT_TRUE(main.MnuMapTools.Visible);
}

TEST_F(MapToolsTest, TheMarkerStandsAtTheVertexThatIsSelected) {
    EXPECT_TRUE(Markers().empty());
    app.Run.BorderTool.Selected = 2;
    const auto onGlobe = Markers();
    ASSERT_EQ(onGlobe.size(), 1U);
    EXPECT_NEAR(onGlobe[0][0], 6000, 1e-6);
    EXPECT_NEAR(onGlobe[0][1], 2000, 1e-6);
    EXPECT_NEAR(onGlobe[0][2], 4, 1e-6) << "a thousandth of the radius";

    LookAt(0, 180);
    EXPECT_TRUE(Markers().empty()) << "behind the globe";
    main.CPlaniSphere.Value = true;
    LookAt(0, 0);
    const auto onMap = Markers();
    ASSERT_EQ(onMap.size(), 1U);
    EXPECT_NEAR(onMap[0][1], 4000 - 4000 * 30 * kDegree, 1e-6);
    main.CSkyOnly.Value = true;
    EXPECT_TRUE(Markers().empty());
}

}  // namespace
}  // namespace glintara::testing
