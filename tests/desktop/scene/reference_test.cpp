// Whole pictures as the window shows them, against pictures that have been looked at and found right. They were painted
// by this program; a change of the scene shows here before a user sees it. After a change that is meant, run the tests
// once with GLINTARA_PAINT_REFERENCES=1 and look at the new pictures.

#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <cstdlib>

#include "desktop/scene/painter_surface.h"
#include "engine/astro/sun_moon.h"
#include "flare/observed_night.h"
#include "scene/map_files.h"
#include "scene/stages.h"
#include "scene/star_list.h"

namespace glintara::desktop {
namespace {

using observed_night::kHour;
using observed_night::kNight;
using observed_night::kSecond;
using observed_night::Observatory;

constexpr int kWidth = 480;
constexpr int kHeight = 320;

/// How much of the picture may differ, by how much: type and the last bit of antialiasing are the library's.
constexpr int kVisible = 40;           // of 255, in the channel that differs most
constexpr double kMostVisible = 0.01;  // share of the pixels
constexpr double kMostMean = 1.0;      // of 255, over all pixels

struct Difference {
    double visible = 1;
    double mean = 255;
};

Difference Compare(const QImage& a, const QImage& b) {
    if (a.size() != b.size()) return {};
    double visible = 0;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            const int most =
                std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)), std::abs(qBlue(p) - qBlue(q))});
            visible += most > kVisible ? 1 : 0;
            sum += most;
        }
    }
    const double pixels = static_cast<double>(a.width()) * a.height();
    return {visible / pixels, sum / pixels};
}

bool IsTheSame(const Difference& difference) {
    return difference.visible <= kMostVisible && difference.mean <= kMostMean;
}

class ReferenceTest : public ::testing::Test {
  protected:
    Observatory o_;
    MainControls& main_ = o_.app.Main;
    CommonData& data_ = o_.app.Data;
    ViewState& view_ = o_.app.Data.View;
    SatelliteWorkspace satellites_;
    FrameStages stages_ = StagesOfProgram(satellites_);
    FrameMemory memory_;
    PainterSurface surface_;

    void SetUp() override {
        ASSERT_TRUE(LoadMapFiles(GLINTARA_SOURCE_DIR "/data", data_.Map, data_.Stars, data_.Cities).empty());
        main_.CSGP4.Value = true;
        main_.CSolidGlobe.Value = true;
        main_.CSunLight.Value = true;
        main_.CGlobeGrid.Value = true;
        main_.CDrawSun.Value = true;
        main_.CSatNames.Value = true;
        main_.CIridiumFlares.Value = true;
        view_.ZoomFactor = 55;
        view_.ViewLat = 0.6;
        view_.ViewLon = 0.2;
        SetNight(kNight + 5 * kHour);
    }

    void SetNight(double jd) {
        observed_night::SetInstant(data_, jd);
        const Equatorial sun = SunPosition(jd);
        data_.SunDir = LLRToSameXYZ(sun.dec, EastLongitudeOf(sun.ra, SiderealFromDate(data_.SimFields())), 1);
        const MoonPlace moon = MoonPosition(jd);
        data_.MoonRA = moon.ra;
        data_.MoonDec = moon.dec;
    }

    QImage Paint(double ratio = 1) {
        QImage image(static_cast<int>(kWidth * ratio), static_cast<int>(kHeight * ratio), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::black);
        surface_.Begin(image);
        GlobeFrame(o_.app, surface_, memory_, stages_);
        surface_.End();
        return image;
    }

    static void ExpectReference(const QImage& picture, const QString& name) {
        const QString file = QString(GLINTARA_SOURCE_DIR "/tests/desktop/scene/references/") + name + ".png";
        if (std::getenv("GLINTARA_PAINT_REFERENCES") != nullptr) ASSERT_TRUE(picture.save(file));
        const QImage reference(file);
        ASSERT_FALSE(reference.isNull()) << file.toStdString();
        const Difference difference = Compare(picture, reference.convertToFormat(QImage::Format_RGB32));
        EXPECT_TRUE(IsTheSame(difference)) << name.toStdString() << ": " << 100 * difference.visible
                                           << " % of the pixels differ, mean " << difference.mean;
        if (!IsTheSame(difference)) picture.save(QString("differs_") + name + ".png");
    }
};

TEST_F(ReferenceTest, GlobeByNight) { ExpectReference(Paint(), "globe"); }

TEST_F(ReferenceTest, GlobeAtTwoPixelsAPoint) { ExpectReference(Paint(2), "globe_fine_display"); }

TEST_F(ReferenceTest, NorthPole) {
    view_.ViewLat = 1.5;
    view_.ViewRoll = 0.4;
    ExpectReference(Paint(), "north_pole");
}

TEST_F(ReferenceTest, SouthPoleInTheLightOfJanuary) {
    view_.ViewLat = -1.4;
    ExpectReference(Paint(), "south_pole");
}

TEST_F(ReferenceTest, FlatMap) {
    main_.CPlaniSphere.Value = true;
    view_.ZoomFactor = 26;
    view_.ViewLat = 0;
    view_.ViewLon = 2.5;
    ExpectReference(Paint(), "flat_map");
}

TEST_F(ReferenceTest, OutlinesWithoutLand) {
    main_.CSolidGlobe.Value = false;
    main_.CSunLight.Value = false;
    ExpectReference(Paint(), "outlines");
}

TEST_F(ReferenceTest, FlareOfIridium32OverTurin) {
    o_.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    main_.CPlotOrbit.Value = true;
    main_.CHCircle.Value = true;
    // The flare is nearest to the observer at 5:03:23.6.
    SetNight(kNight + 5 * kHour + (3 * 60 + 20) * kSecond);
    view_.ViewLat = data_.Site.SiteGeoLat;
    view_.ViewLon = data_.Site.SiteLon;
    view_.ZoomFactor = 200;
    ExpectReference(Paint(), "flare");
}

/// The sky of the night, with all stars that the program knows.
struct SkyReferenceTest : ReferenceTest {
    void SetUp() override {
        ReferenceTest::SetUp();
        SetNight(kNight + 22 * kHour);
        main_.CDrawSky.Value = true;
        main_.CDrawConstallations.Value = true;
        main_.CStarNames.Value = true;
        main_.CSkyCircle.Value = true;
        main_.CGlobeGrid.Value = false;
        RebuildStarList(data_.Stars, view_.MaxStarMag);
    }

    /// The sky as it stands over the observer, seen from below: north up, east to the left.
    void ShowChart() {
        main_.CSkyOnly.Value = true;
        main_.CFlatSky.Value = true;
        main_.CReverseSky.Value = true;
        main_.CDrawFrontStars.Value = true;
        main_.CDrawBackStars.Value = false;
        main_.CAutoMag.Value = true;
        view_.ViewLat = data_.Site.SiteLat;
        view_.ViewLon = data_.Site.SiteLon;
        view_.ZoomFactor = 60;
        view_.SkyScale = kFullZoom / view_.ZoomFactor;
    }
};

TEST_F(SkyReferenceTest, ChartOfTheSky) {
    ShowChart();
    ExpectReference(Paint(), "sky_chart");
}

TEST_F(SkyReferenceTest, StarGlobe) {
    view_.ZoomFactor = 29;
    view_.SkyScale = kFullZoom / view_.ZoomFactor;
    ExpectReference(Paint(), "star_globe");
}

// A chart held overhead: Orion stands in the south that evening, Betelgeuse to the left of Rigel; turned over, east and
// west change places.
TEST_F(SkyReferenceTest, TheMirroredChartIsTheOtherWayRound) {
    ShowChart();
    main_.CStarNames.Value = false;
    main_.CDrawConstallations.Value = false;
    main_.CDrawSun.Value = false;
    main_.CSkyCircle.Value = false;
    const QImage below = Paint();
    main_.CReverseSky.Value = false;
    const QImage above = Paint();
    EXPECT_FALSE(IsTheSame(Compare(below, above)));
    // Below the title, which is not mirrored.
    const QRect sky(0, 40, kWidth, kHeight - 40);
    EXPECT_TRUE(IsTheSame(Compare(below.copy(sky), above.mirrored(true, false).copy(sky))));
}

TEST_F(ReferenceTest, AShiftedPictureIsNotTheSame) {
    const QImage picture = Paint();
    view_.ViewLon += 0.02;
    EXPECT_FALSE(IsTheSame(Compare(picture, Paint())));
    view_.ViewLon -= 0.02;
    EXPECT_TRUE(IsTheSame(Compare(picture, Paint())));
    main_.CSunLight.Value = false;
    EXPECT_FALSE(IsTheSame(Compare(picture, Paint())));
}

}  // namespace
}  // namespace glintara::desktop
