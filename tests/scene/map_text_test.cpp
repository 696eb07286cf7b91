#include "scene/map_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "orbit/files.h"
#include "scene/scene_fixture.h"
#include "support/temporary_folder.h"

namespace glintara {
namespace {

using testing::ExpectNumbers;
using testing::kDegree;
using testing::SceneFixture;
using testing::TemporaryFolder;

using Numbers = std::vector<double>;
using Ids = std::vector<std::int32_t>;

void ExpectTable(const std::optional<BorderTable>& table, const Numbers& lat, const Numbers& lon, const Ids& id) {
    ASSERT_TRUE(table);
    ASSERT_EQ(table->Id, id);
    ASSERT_EQ(table->Lat.size(), lat.size());
    ASSERT_EQ(table->Lon.size(), lon.size());
    for (std::size_t i = 1; i < lat.size(); ++i) {
        EXPECT_NEAR(table->Lat[i], lat[i], 1e-12) << i;
        EXPECT_NEAR(table->Lon[i], lon[i], 1e-12) << i;
    }
}

TEST(CountryBorders, ShiftsEachVertexAndClosesAllPolygonsButTheLast) {
    const auto table = ReadCountryBorders(
        "polygon,vertex,lon,lat\n"
        "1,1,10,40\n1,2,11,40\n1,3,10.5,41\n"
        "2,1,-70.25,-33\n2,2,-71,-33\n");
    ExpectTable(table, {0, 40.35, 40.35, 41.35, 40.35, -32.65, -32.65}, {0, 9.6, 10.6, 10.1, 9.6, -70.65, -71.4},
                {0, 1, 1, 1, 1, 2, 2});
}

TEST(CountryBorders, KeepsVerticesHoweverNear) {
    ExpectTable(ReadCountryBorders("h\n1,1,10,40\n1,2,10.001,40\n1,3,10.001,40\n"), {0, 40.35, 40.35, 40.35},
                {0, 9.6, 9.601, 9.601}, {0, 1, 1, 1});
}

TEST(CountryBorders, APolygonOfNumberZeroIsNotClosed) {
    ExpectTable(ReadCountryBorders("h\n0,1,10,40\n0,2,12,40\n3,1,50,0\n"), {0, 40.35, 40.35, 0.35},
                {0, 9.6, 11.6, 49.6}, {0, 0, 0, 3});
}

TEST(CountryBorders, APolygonThatIsClosedAlreadyGetsNoSecondEnd) {
    const auto table = ReadCountryBorders("h\n1,1,10,40\n1,2,12,40\n1,3,11,41\n1,4,10,40\n2,1,0,0\n");
    ASSERT_TRUE(table);
    EXPECT_EQ(table->Id, (Ids{0, 1, 1, 1, 1, 2}));
}

TEST(CountryBorders, TheVertexNumberMeansNothing) {
    const auto table = ReadCountryBorders("h\n4,999,10,40\n4,-5,12,40\n");
    ASSERT_TRUE(table);
    EXPECT_EQ(table->Id, (Ids{0, 4, 4}));
}

TEST(CountryBorders, ValuesMayBeSpacedAndEndInAnyLineEnd) {
    const auto unix = ReadCountryBorders("h\n1,1,10,40\n1,2,12,40\n");
    const auto dos = ReadCountryBorders("h\r\n 1 , 1 , 10 , 40\r\n1,2,12,40\r\n\r\n");
    const auto open = ReadCountryBorders("h\n1,1,10,40\n1,2,12,40");
    ASSERT_TRUE(unix && dos && open);
    for (const auto& table : {dos, open}) {
        EXPECT_EQ(table->Lat, unix->Lat);
        EXPECT_EQ(table->Lon, unix->Lon);
    }
}

TEST(CountryBorders, AHeaderAloneIsAnEmptyTable) {
    for (const char* text : {"", "header", "header\n"}) {
        const auto table = ReadCountryBorders(text);
        ASSERT_TRUE(table);
        EXPECT_EQ(table->Count(), 0);
    }
}

TEST(CountryBorders, RefusesTextThatIsNoTable) {
    for (const char* line :
         {"1,1,10", "1,1,ten,40", "1.5,1,10,40", "99999999999,1,10,40", "1,1,,40", "1,1,nan,40", "1,1,1e999,40"}) {
        EXPECT_FALSE(ReadCountryBorders(std::string("h\n1,1,10,40\n") + line)) << line;
        EXPECT_FALSE(ReadCountryZip(std::string("h\n1,1,10,40\n") + line)) << line;
    }
}

TEST(CountryZip, OfTwoVerticesNearerThanHalfADegreeTheEarlierStays) {
    ExpectTable(ReadCountryZip("h\n1,1,10,40\n1,2,10.49,40\n1,3,12,40\n"), {0, 40, 40, 40}, {0, 10, 12, 10},
                {0, 1, 1, 1});
}

TEST(CountryZip, HalfADegreeExactlyIsFarEnough) {
    ExpectTable(ReadCountryZip("h\n1,1,10,40\n1,2,10.5,40\n1,3,10.5,41\n"), {0, 40, 40, 41, 40},
                {0, 10, 10.5, 10.5, 10}, {0, 1, 1, 1, 1});
}

TEST(CountryZip, TheDistanceIsThatOfBothAngles) {
    // 0.3 and 0.4 make 0.5; a little less of one makes less.
    const auto table = ReadCountryZip("h\n1,1,0,0\n1,2,0.3,0.39\n1,3,0.375,0.5\n");
    ExpectTable(table, {0, 0, 0.5, 0}, {0, 0, 0.375, 0}, {0, 1, 1, 1});
}

TEST(CountryZip, TheNextVertexIsMeasuredFromTheOneKept) {
    ExpectTable(ReadCountryZip("h\n1,1,10,40\n1,2,10.3,40\n1,3,10.6,40\n1,4,10.9,40\n"), {0, 40, 40, 40},
                {0, 10, 10.6, 10}, {0, 1, 1, 1});
}

TEST(CountryZip, NearVerticesOfDifferentPolygonsBothStay) {
    ExpectTable(ReadCountryZip("h\n1,1,10,40\n1,2,12,40\n2,1,10.1,40\n2,2,12,41\n"), {0, 40, 40, 40, 40, 41, 40},
                {0, 10, 12, 10, 10.1, 12, 10.1}, {0, 1, 1, 1, 2, 2, 2});
}

TEST(CountryZip, TakesTheValuesAsTheyAreAndClosesTheLastPolygonToo) {
    ExpectTable(ReadCountryZip("h\n5,1,-180,-84.5\n5,2,0,-70\n5,3,180,-84.5\n"), {0, -84.5, -70, -84.5, -84.5},
                {0, -180, 0, 180, -180}, {0, 5, 5, 5, 5});
}

TEST(CountryZip, TextOfATableReadsBackAsTheTable) {
    const auto table =
        ReadCountryZip("h\n1,1,10,40.125\n1,2,12,40\n1,3,11,42\n7,1,-70.3,-33\n7,2,-71,-33\n7,3,-71,-34\n");
    ASSERT_TRUE(table);
    const std::string text = CountryZipText(*table);
    EXPECT_EQ(text.substr(0, 28), "Header\n1,1,10,40.125\n1,2,12,");
    const auto again = ReadCountryZip(text);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->Lat, table->Lat);
    EXPECT_EQ(again->Lon, table->Lon);
    EXPECT_EQ(again->Id, table->Id);
}

TEST(SeaSpots, TextHasTheCountThenEachCoordinateOnALine) {
    const std::vector<SeaSpot> spots = {{}, {0.5, -0.75}, {-1.25, 3}};
    EXPECT_EQ(SeaSpotText(spots), "2\n0.5\n-0.75\n-1.25\n3\n");
    const auto read = ReadSeaSpots("2\r\n0.5\r\n-0.75\r\n-1.25,3");
    ASSERT_TRUE(read);
    ASSERT_EQ(read->size(), 3U);
    EXPECT_EQ((*read)[1].lat, 0.5);
    EXPECT_EQ((*read)[1].lon, -0.75);
    EXPECT_EQ((*read)[2].lon, 3);
}

TEST(SeaSpots, RefusesACountThatTheTextDoesNotHold) {
    for (const char* text : {"", "two", "-1", "1.5\n0\n0\n0", "2\n0.5\n-0.75\n", "1\n0.5", "2000000000\n1\n2\n"})
        EXPECT_FALSE(ReadSeaSpots(text)) << text;
    const auto none = ReadSeaSpots("0\n");
    ASSERT_TRUE(none);
    EXPECT_EQ(none->size(), 1U);
}

TEST(MapText, ControlsWriteTheFiles) {
    const TemporaryFolder folder;
    MapTables map;
    map.Zip.Lat = {0, 45.5, -1};
    map.Zip.Lon = {0, 7.25, 180};
    map.Zip.Id = {0, 3, 4};
    map.SeaSpots.push_back({0.125, -2});
    EXPECT_TRUE(CSavePolDbg(folder.Path(), map));
    EXPECT_TRUE(CSaveDbg(folder.Path(), map));
    EXPECT_EQ(ReadWholeFile(folder.Path() / "countryzip.txt", 1000), "Header\n3,1,7.25,45.5\n4,2,180,-1\n");
    EXPECT_EQ(ReadWholeFile(folder.Path() / "SeaSpot.txt", 1000), "1\n0.125\n-2\n");
    EXPECT_FALSE(CSavePolDbg(folder.Path() / "none", map));
    EXPECT_FALSE(CSaveDbg(folder.Path() / "none", map));
}

struct PolygonToolTest : SceneFixture {
    MapTables& map = app.Data.Map;
    PolygonTool tool;

    void SetUp() override {
        map.Border.Lat = {0, 10, 20, 30, 20};
        map.Border.Lon = {0, 50, 60, 70, 80};
        map.Border.Id = {0, 1, 1, 1, 2};
    }
};

TEST_F(PolygonToolTest, AddsTheSelectedVertexUnderTheNumberBefore) {
    tool.Selected = 2;
    EXPECT_EQ(AddPolygonDbg(map, tool), "#1/0");
    CNewPolDbg(tool);
    tool.Selected = 3;
    EXPECT_EQ(AddPolygonDbg(map, tool), "#2/1");
    EXPECT_EQ(AddPolygonDbg(map, tool), "#3/1") << "the mark is used up";
    EXPECT_EQ(map.Zip.Lat, (Numbers{0, 20, 30, 30}));
    EXPECT_EQ(map.Zip.Lon, (Numbers{0, 60, 70, 70}));
    EXPECT_EQ(map.Zip.Id, (Ids{0, 0, 1, 1}));
}

TEST_F(PolygonToolTest, AddsNothingWithoutASelection) {
    EXPECT_EQ(AddPolygonDbg(map, tool), "");
    tool.Selected = 5;
    EXPECT_EQ(AddPolygonDbg(map, tool), "");
    EXPECT_EQ(map.Zip.Count(), 0);
}

TEST_F(PolygonToolTest, TheSelectionMovesWithinTheTable) {
    EXPECT_TRUE(MoveBorderDbg(map, tool, 4));
    EXPECT_EQ(tool.Selected, 4);
    EXPECT_FALSE(MoveBorderDbg(map, tool, 1));
    EXPECT_TRUE(MoveBorderDbg(map, tool, -3));
    EXPECT_EQ(tool.Selected, 1);
    EXPECT_FALSE(MoveBorderDbg(map, tool, -1));
    EXPECT_FALSE(MoveBorderDbg(map, tool, std::numeric_limits<std::int32_t>::max()));
    EXPECT_FALSE(MoveBorderDbg(map, tool, std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(tool.Selected, 1);
}

TEST_F(PolygonToolTest, SelectsTheNearestVertex) {
    EXPECT_TRUE(CPolDbg(map, tool, {29 * kDegree, 72 * kDegree}));
    EXPECT_EQ(tool.Selected, 3);
}

TEST_F(PolygonToolTest, OfEquallyNearVerticesTheFirstIsSelected) {
    map.Border.Lon = {0, 50, 60, 70, 60};
    EXPECT_TRUE(CPolDbg(map, tool, {20 * kDegree, 61 * kDegree}));
    EXPECT_EQ(tool.Selected, 2);
}

TEST_F(PolygonToolTest, SelectsNothingWhereNothingIsNear) {
    tool.Selected = 3;
    EXPECT_FALSE(CPolDbg(map, tool, {std::numeric_limits<double>::quiet_NaN(), 0}));
    map.Border = {};
    EXPECT_FALSE(CPolDbg(map, tool, {0, 0}));
    EXPECT_EQ(tool.Selected, 3);
}

TEST_F(PolygonToolTest, TheMarkerIsASmallCircleOnTheNearSide) {
    tool.Selected = 2;
    LookAt(20, 60);
    PlotPolygonMarker(scene, tool);
    const auto circles = surface.OperationsOf(DrawOperation::Circle);
    ASSERT_EQ(circles.size(), 1U);
    ExpectNumbers(circles[0], {300, 200, 0.2});
    EXPECT_EQ(circles[0].state.ForeColor, 0x8080FFU);

    surface.Forget();
    LookAt(-20, -120);
    PlotPolygonMarker(scene, tool);
    EXPECT_TRUE(surface.Operations().empty());
}

TEST_F(PolygonToolTest, TheMarkerStandsOnTheFlatMapWhereverItLooks) {
    app.Main.CPlaniSphere.Value = true;
    tool.Selected = 2;
    LookAt(20, 60 - 90);
    PlotPolygonMarker(scene, tool);
    const auto circles = surface.OperationsOf(DrawOperation::Circle);
    ASSERT_EQ(circles.size(), 1U);
    // A quarter turn to the right; 200 twips to the radian.
    ExpectNumbers(circles[0], {300 + 200 * 1.5707963267948966, 200, 0.2}, 1e-6);
}

}  // namespace
}  // namespace glintara
