#include "scene/city_marks.h"

#include <string>
#include <vector>

#include "engine/astro/geodesy.h"
#include "scene/scene_fixture.h"
#include "scene/stages.h"

namespace glintara::testing {
namespace {

struct CityMarksTest : SceneFixture {
    CityMarksTest() { LookAt(0, 0); }

    void Add(const std::string& name, double population, double lat, double lon) {
        CityTables& tables = app.Data.Cities;
        SiteRecord city;
        city.CityName = name;
        city.Population = population;
        const Vector3 position = LLRToSameXYZ(lat * kDegree, lon * kDegree, 1);
        city.X = position.x;
        city.Y = position.y;
        city.Z = position.z;
        tables.SiteTable.push_back(city);
        tables.SelectedCities.push_back(tables.SiteCount());
    }

    std::vector<RecordedOperation> Dots() {
        surface.Forget();
        DrawCityMarks(scene);
        return surface.OperationsOf(DrawOperation::Circle);
    }

    std::vector<std::string> Names() {
        surface.Forget();
        board.Clear();
        DrawCityNames(scene, board);
        std::vector<std::string> names;
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print)) {
            EXPECT_EQ(print.state.ForeColor, kCityNameColor);
            EXPECT_EQ(print.state.FontSize, 8);
            names.push_back(print.text);
        }
        return names;
    }

    using Texts = std::vector<std::string>;

    /// Large enough for words: 6000 twips to the radius at a zoom of 64.
    RecordingSurface surface{18000, 12000};
    SceneContext scene{app, surface, polygon};
    NameBoard board{1000};
};

// At a zoom of 64 the limit is 1.2e8 / 64 = 1,875,000.
TEST_F(CityMarksTest, MoreCitiesAppearWhenTheGlobeIsNear) {
    Add("A", 1875000, 0, 0);
    Add("B", 1874999, 0, 30);
    EXPECT_EQ(Dots().size(), 1U);
    EXPECT_EQ(Names(), (Texts{" A"}));
    view.ZoomFactor = 128;
    EXPECT_EQ(Dots().size(), 2U);
    view.ZoomFactor = 64;
    app.Data.Cities.ShowAllCities = true;
    Add("C", 0, 30, 0);
    EXPECT_EQ(LeastMarkedPopulation(app.Data), -1);
    EXPECT_EQ(Dots().size(), 3U);
    app.Data.Cities.SelectedCities = {2};
    EXPECT_EQ(Names(), (Texts{" B"})) << "only those that are selected";
}

TEST_F(CityMarksTest, TheFarSideOfTheGlobeHasNone) {
    Add("Near", 1e7, 0, 89);
    Add("Far", 1e7, 0, 91);
    ASSERT_EQ(Dots().size(), 1U);
    // Sine of 89 degrees.
    EXPECT_NEAR(Dots()[0].numbers[0], 9000 + 6000 * 0.99984769515639124, 1e-6);
    EXPECT_NEAR(Dots()[0].numbers[1], 6000, 1e-6);
    EXPECT_EQ(Dots()[0].state.FillColor, 0xFFFFFFU);
    app.Main.CPlaniSphere.Value = true;
    view.ZoomFactor = 32;
    app.Data.Cities.ShowAllCities = true;
    EXPECT_EQ(Dots().size(), 2U) << "the map has both";
}

TEST_F(CityMarksTest, OfTwoNamesThatWouldTouchTheLargerCitysIsWritten) {
    Add("Small", 2e6, 0, 0.5);
    Add("Large", 9e6, 0, 0);
    Add("Medium", 5e6, 0.2, 0.2);
    EXPECT_EQ(Names().at(0), " Large");
    for (const std::string& name : Names()) EXPECT_NE(name, " Small");
    EXPECT_EQ(Dots().size(), 3U) << "all have their dots";
}

TEST_F(CityMarksTest, OfTooManyTheLargestAreNamed) {
    view.ZoomFactor = 5000;
    for (int i = 0; i < 3000; ++i)
        Add("City " + std::to_string(i), 1e5 + i, (i % 50 - 25) * 0.008, (i / 50 - 30) * 0.008);
    const Texts names = Names();
    ASSERT_FALSE(names.empty());
    EXPECT_EQ(names[0], " City 2999");
    EXPECT_LE(names.size(), kMostNames);
}

TEST_F(CityMarksTest, TheProgramsStagesDrawThem) {
    SatelliteWorkspace satellites;
    const FrameStages stages = StagesOfProgram(satellites);
    ASSERT_TRUE(stages.cities);
    Add("Torino", 1e7, 0, 0);
    stages.cities(scene);
    EXPECT_EQ(surface.OperationsOf(DrawOperation::Circle).size(), 1U);
    const auto names = [&] {
        surface.Forget();
        stages.satellites(scene);
        return surface.OperationsOf(DrawOperation::Print).size();
    };
    EXPECT_EQ(names(), 0U) << "not without the option";
    app.Main.MnuMarkCities.Checked = true;
    EXPECT_EQ(names(), 1U);
    app.Main.CSkyOnly.Value = true;
    EXPECT_EQ(names(), 0U);
}

}  // namespace
}  // namespace glintara::testing
