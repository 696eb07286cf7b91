#include "desktop/flare/form_cities.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <array>
#include <filesystem>

#include "desktop/window_checks.h"
#include "flare/city_files.h"
#include "state/recording_services.h"

namespace glintara::desktop {
namespace {

using testing::ExpectNothingClipped;
using testing::Named;
using testing::Open;

class StandingClock : public SearchClock {
  public:
    void SetJDToTimeOffset(double jd) override { instants.push_back(jd); }
    std::vector<double> instants;
};

struct FormCitiesTest : ::testing::Test {
    FormCitiesTest() {
        const std::array<std::filesystem::path, 1> folders = {GLINTARA_SOURCE_DIR "/data"};
        EXPECT_TRUE(LoadCities(folders, app.Data.Cities));
        LoadSites(folders, app.Data.Cities);
        DeselectAllCities(app.Data.Cities);
        ConnectCities(app);
        app.Cities.Visible.SetHandler([this] {
            if (!app.Cities.Visible) form.close();
        });
        Open(form);
    }

    QListView& Cities() { return Named<QListView>(form, "CityListBox"); }
    QString Line(int row) { return Cities().model()->index(row, 0).data().toString(); }
    QString Total() const { return Named<QLabel>(form, "LTotal").text(); }

    /// A click on the first line, as soon as it is laid out.
    static void ClickFirstLine(QListView& list) {
        const auto first = [&list] { return list.visualRect(list.model()->index(0, 0)); };
        ASSERT_TRUE(QTest::qWaitFor([&] { return first().isValid(); }));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, first().center());
    }

    void Type(const char* field, const QString& text) {
        auto& line = Named<QLineEdit>(form, field);
        line.setFocus();
        line.selectAll();
        QTest::keyClick(&line, Qt::Key_Delete);
        QTest::keyClicks(&line, text);
    }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    glintara::testing::RecordingWindows windows;
    Application app{boxes, events, windows};
    StandingClock clock;
    int zeniths = 0;
    FormCities form{app, {&clock, [this] { ++zeniths; }}, nullptr};
};

TEST_F(FormCitiesTest, OpensWithTheSelectedCities) {
    EXPECT_EQ(form.windowTitle(), "Cities");
    EXPECT_EQ(Total(), "Total Cities: 4442");
    EXPECT_EQ(Cities().model()->rowCount(), 4442);
    EXPECT_EQ(Named<QListView>(form, "SiteListBox").model()->rowCount(), 10);
    ExpectNothingClipped(form);
}

TEST_F(FormCitiesTest, ReturnInAFieldAppliesTheFilters) {
    Type("TCountryFilter", "it");
    EXPECT_EQ(Total(), "Total Cities: 4442") << "typing alone does nothing";
    QTest::keyClick(&Named<QLineEdit>(form, "TCountryFilter"), Qt::Key_Return);
    EXPECT_NE(Total(), "Total Cities: 4442");
    EXPECT_TRUE(Line(0).contains(" (IT) ")) << Line(0).toStdString();
    Named<QRadioButton>(form, "OptionCountry").click();
    EXPECT_TRUE(Line(0).startsWith("IT - ")) << Line(0).toStdString();
    Type("TNameFilter", "tur");
    QTest::mouseClick(&Named<QPushButton>(form, "CApply"), Qt::LeftButton);
    EXPECT_EQ(Line(0), "IT - Turin 870456");
    EXPECT_EQ(Total(), "Total Cities: 1");
}

TEST_F(FormCitiesTest, AClickMovesTheObserver) {
    Type("TCountryFilter", "it");
    Type("TNameFilter", "turin");
    QTest::keyClick(&Named<QLineEdit>(form, "TNameFilter"), Qt::Key_Return);
    ASSERT_EQ(Line(0), "Turin (IT) 870456");
    ClickFirstLine(Cities());
    EXPECT_NEAR(app.Data.Site.SiteLat, 45.07 * kDegToRad, 1e-3);
    EXPECT_NEAR(app.Data.Site.SiteLon, 7.69 * kDegToRad, 1e-3);
    EXPECT_EQ(zeniths, 0);
    EXPECT_TRUE(clock.instants.empty());

    const std::int32_t turin = app.Cities.CityListBox.Places[0];
    app.Data.Cities.Site(turin).FoundFlag = true;
    app.Data.Cities.Site(turin).FoundJD = 2458138.71;
    app.Cities.CMoveZenith.Value = true;
    Cities().setFocus();
    QTest::keyClick(&Cities(), Qt::Key_Return);
    EXPECT_EQ(clock.instants, (std::vector<double>{2458138.71}));
    EXPECT_EQ(zeniths, 1);
    EXPECT_EQ(Line(0), "Turin (IT) 870456") << "Return chooses, and does not filter anew";

    auto& sites = Named<QListView>(form, "SiteListBox");
    ClickFirstLine(sites);
    EXPECT_NEAR(app.Data.Site.SiteLat, -31.2754 * kDegToRad, 1e-6) << "Siding Spring";
    EXPECT_EQ(zeniths, 2);
}

TEST_F(FormCitiesTest, ButtonsSelect) {
    QTest::mouseClick(&Named<QPushButton>(form, "CGetSites"), Qt::LeftButton);
    EXPECT_EQ(Total(), "Total Cities: 10");
    QTest::mouseClick(&Named<QPushButton>(form, "CGetTracked"), Qt::LeftButton);
    EXPECT_EQ(Total(), "Total Cities: 0");
    EXPECT_EQ(Cities().model()->rowCount(), 0);
}

TEST_F(FormCitiesTest, ClosesByButtonAndByEscape) {
    QTest::mouseClick(&Named<QPushButton>(form, "CClose"), Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(app.Cities.Visible);
    Open(form);
    EXPECT_TRUE(app.Cities.Visible);
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(app.Cities.Visible);
}

}  // namespace
}  // namespace glintara::desktop
