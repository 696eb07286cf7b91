// Whole sessions, made at random, written and read back; and what a program that is killed leaves behind.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <locale>
#include <random>
#include <thread>

#include "core/option_text.h"
#include "core/options.h"
#include "core/satellite_panel.h"
#include "core/views.h"
#include "core/workspace.h"
#include "core/workspace_fixture.h"
#include "flare/surface_editor.h"
#include "orbit/files.h"
#include "orbit/location.h"
#include "orbit/satellite_table.h"

namespace glintara::testing {
namespace {

namespace fs = std::filesystem;

using WorkspaceSessionsTest = WorkspaceTest;

class Randoms {
  public:
    explicit Randoms(unsigned seed) : engine_(seed) {}

    double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine_); }
    int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
    bool Toss() { return Whole(0, 1) == 1; }

    std::string Text() {
        const std::string letters = "abcXYZ 019_,.;\"'/\\-\t\xC3\xA9";
        std::string text;
        for (int length = Whole(0, 20); length > 0; --length)
            text += letters[static_cast<std::size_t>(Whole(0, static_cast<int>(letters.size()) - 1))];
        return text;
    }

  private:
    std::mt19937 engine_;
};

void RandomSurfaces(SatRecord& satellite, Randoms& random) {
    SurfaceModel& model = satellite.Surface;
    model.ModelFlags[0] = random.Toss() ? '1' : '0';
    model.MirrorCount = random.Whole(0, 20);
    model.OrientationType = random.Whole(0, 4);
    for (double* number : {&model.TargetSatID, &model.RotAxisDEC, &model.RotAxisRA, &model.ModelSpareD,
                           &model.ModelSpareB, &model.ModelSpareA[1], &model.ModelSpareA[2], &model.ModelSpareA[3]})
        *number = random.Between(-1e3, 1e3);
    for (int index = 1; index <= kMirrorCapacity; ++index) {
        MirrorRecord& mirror = model.Mirror(index);
        for (std::string* text : {&mirror.MirrorName, &mirror.MirrorOrigin, &mirror.MirrorSpare, &mirror.MirrorID})
            *text = random.Text();
        for (double* number :
             {&mirror.Angle, &mirror.Tilt, &mirror.Spare1, &mirror.Spare2, &mirror.Spare3, &mirror.MirrorJD})
            *number = random.Between(-1e6, 1e6);
        mirror.ScatterFactor = random.Between(1, 50);
    }
}

/// Puts a session of all kinds into force, by the hands of the user where those have much to say.
void MakeSession(Application& app, Program& program, Randoms& random) {
    MainControls& main = app.Main;
    main.MnuLib3D.Enabled = true;  // as after every load
    LoadTLEFile(app, GLINTARA_SOURCE_DIR "/data/examples/stations.tle");
    if (random.Toss()) CApplyTLEOrbit_click(app);
    for (int index = 1; index <= app.Data.SatCount; ++index) {
        SatRecord& satellite = app.Data.Satellite(index);
        RandomSurfaces(satellite, random);
        satellite.Name = random.Text();
        satellite.OptionFlags[static_cast<std::size_t>(random.Whole(0, 15))] = '1';
    }
    if (app.Data.SatCount > 0) ChangeWorkingSatellite(app, random.Whole(1, app.Data.SatCount));
    SetLocation(app.Data, {random.Between(-1.5, 1.5), random.Between(-3, 3), random.Between(0, 5000)});
    app.Data.UTCOffsetHours = static_cast<std::int16_t>(random.Whole(-12, 14));
    app.Data.RealTimeStep = random.Whole(1, 60);
    app.Data.SetTwilightAngle(random.Between(-90, 90));
    app.Data.SoilColor = static_cast<std::uint32_t>(random.Whole(0, 0xFFFFFF));
    app.Data.SeaColor = static_cast<std::uint32_t>(random.Whole(0, 0xFFFFFF));
    app.Data.UpdateCheckDays = random.Whole(0, 7);
    for (int slot = 0; slot <= static_cast<int>(kViewCount); ++slot) {
        for (const OptionPair& pair : OptionPairs(main))
            if (pair.box->Enabled && random.Whole(0, 5) == 0) pair.box->Value = !pair.box->Value;
        app.Data.TimeOffset = {random.Whole(-20, 20), random.Whole(-400, 400), random.Whole(-90, 90),
                               random.Whole(-50, 50), random.Whole(-90, 90),   random.Whole(-9999, 9999),
                               random.Whole(-10, 10)};
        if (main.CRealTime.Value) app.Data.TimeOffset.MilliOffset = 0;
        ViewState& view = app.Data.View;
        view.ZoomFactor = std::exp(random.Between(-2, 8));
        view.PanX = random.Between(-3, 3);
        view.PanY = random.Between(-3, 3);
        view.ViewLat = random.Between(-4, 4);
        view.ViewLon = random.Between(-7, 7);
        view.ViewRoll = random.Between(-4, 4);
        view.OrbitTurns = random.Whole(1, 300);
        view.StarSizeScale = static_cast<std::int16_t>(random.Whole(0, 30));
        view.MaxStarMag = random.Whole(-20, 60) * 0.25;
        if (main.CMaximizeSky.Value && !main.CStarsOnGlobe.Value)
            view.SkyScale = view.SkyScaleSaved = 64 / view.ZoomFactor;
        else if (!main.CStarsOnGlobe.Value)
            view.SkyScale = random.Between(0.5, 80);
        program.Time.TimeSyncronize();
        ShowStarLimits(app);
        ShowOrbitLabel(app);
        if (slot > 0 && random.Toss()) SaveUserView(app, slot);
    }
}

/// Every field of a satellite that a workspace keeps, the first spare numbers and the engine's block left out.
void ExpectSameSatellite(const SatRecord& a, const SatRecord& b) {
    EXPECT_EQ(a.SatNumber, b.SatNumber);
    EXPECT_EQ(a.Designator, b.Designator);
    EXPECT_EQ(a.EpochText, b.EpochText);
    const auto elements = [](const SatRecord& s) {
        return std::array{s.Inclination, s.RaanAngle,   s.Eccentricity,  s.ArgPerigee,     s.MeanAnomaly,
                          s.MeanMotion,  s.MeanRadiusA, s.MeanMotionDot, s.MeanMotionDDot, s.BStar};
    };
    EXPECT_EQ(elements(a), elements(b));
    EXPECT_EQ(a.ElementSetNumber, b.ElementSetNumber);
    EXPECT_EQ(a.OrbitNumber, b.OrbitNumber);
    EXPECT_EQ(a.Name, b.Name);
    EXPECT_EQ(a.OptionFlags, b.OptionFlags);
    EXPECT_EQ(a.TitleLine, b.TitleLine);
    EXPECT_EQ(a.Line1, b.Line1);
    EXPECT_EQ(a.Line2, b.Line2);
    const SurfaceModel& m = a.Surface;
    const SurfaceModel& n = b.Surface;
    EXPECT_EQ(m.ModelFlags, n.ModelFlags);
    EXPECT_EQ(m.MirrorCount, n.MirrorCount);
    EXPECT_EQ(m.OrientationType, n.OrientationType);
    EXPECT_EQ(m.TargetSatID, n.TargetSatID);
    EXPECT_EQ(m.RotAxisDEC, n.RotAxisDEC);
    EXPECT_EQ(m.RotAxisRA, n.RotAxisRA);
    EXPECT_EQ(m.ModelSpareD, n.ModelSpareD);
    EXPECT_EQ(m.ModelSpareB, n.ModelSpareB);
    EXPECT_EQ(m.ModelSpareA, n.ModelSpareA);
    for (int index = 1; index <= kMirrorCapacity; ++index) {
        const MirrorRecord& p = m.Mirror(index);
        const MirrorRecord& q = n.Mirror(index);
        EXPECT_EQ(p.MirrorName, q.MirrorName);
        EXPECT_EQ(p.MirrorOrigin, q.MirrorOrigin);
        EXPECT_EQ(p.MirrorSpare, q.MirrorSpare);
        EXPECT_EQ(p.MirrorID, q.MirrorID);
        const auto numbers = [](const MirrorRecord& r) {
            return std::array{r.Angle, r.Tilt, r.Spare1, r.Spare2, r.Spare3, r.MirrorJD, r.ScatterFactor};
        };
        EXPECT_EQ(numbers(p), numbers(q));
    }
}

/// A locale in which numbers have a comma and grouped thousands.
class CommaLocale : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// A second program, into which the session of the first is loaded.
struct OtherProgram : WorkspaceTest {
    void TestBody() override {}
};

TEST_F(WorkspaceSessionsTest, RandomSessionsComeBackEqual) {
    Randoms random(2018);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        OtherProgram one;
        MakeSession(one.app, one.program, random);
        const std::locale before = std::locale::global(
            round % 2 == 0 ? std::locale::classic() : std::locale(std::locale::classic(), new CommaLocale));
        ASSERT_TRUE(one.program.Files.SaveWorkspace(File()));
        OtherProgram two;
        // Without the notice, whose events would let the clock go on.
        ASSERT_TRUE(two.program.Files.LoadWorkspaceCommand(File(), false));
        std::locale::global(before);

        EXPECT_EQ(OptionsToString(two.main), OptionsToString(one.main));
        EXPECT_TRUE(CaptureHead(two.app) == CaptureHead(one.app));
        EXPECT_EQ(two.data.TimeOffset, one.data.TimeOffset);
        EXPECT_EQ(two.data.SimTime, one.data.SimTime);
        EXPECT_EQ(two.data.Site.SiteRadius, one.data.Site.SiteRadius);
        EXPECT_EQ(two.data.Site.SiteGeoLat, one.data.Site.SiteGeoLat);
        EXPECT_EQ(two.data.TwilightSine, one.data.TwilightSine);
        EXPECT_EQ(two.data.SunRA, one.data.SunRA);
        EXPECT_EQ(two.data.MoonTopoRA, one.data.MoonTopoRA);
        EXPECT_EQ(two.main.LDateTime.Caption.Get(), one.main.LDateTime.Caption.Get());
        EXPECT_EQ(two.main.LJD.Caption.Get(), one.main.LJD.Caption.Get());
        EXPECT_EQ(two.main.LOrbit.Caption.Get(), one.main.LOrbit.Caption.Get());
        EXPECT_EQ(two.main.LMaxStarMag.Caption.Get(), one.main.LMaxStarMag.Caption.Get());
        ASSERT_EQ(two.data.SatCount, one.data.SatCount);
        for (int index = 1; index <= one.data.SatCount; ++index)
            ExpectSameSatellite(two.data.Satellite(index), one.data.Satellite(index));
        EXPECT_EQ(two.data.SavedViews, one.data.SavedViews);
        for (const OptionPair& pair : OptionPairs(two.main)) EXPECT_EQ(pair.entry->Checked, pair.box->Value);
        if (HasFailure()) return;
    }
}

TEST_F(WorkspaceSessionsTest, AProgramThatIsKilledLeavesTheOldFileOrTheNew) {
    AddIridiums();
    ASSERT_TRUE(program.Files.SaveWorkspace(File()));
    std::mt19937 random(9);
    double height = 150;
    int moved = 0;
    // As often as it takes to be killed in the middle of writing.
    constexpr int kRounds = 50;
    constexpr int kMostRounds = 2000;
    for (int round = 0; round < kRounds || (moved == 0 && round < kMostRounds); ++round) {
        std::array<int, 2> ends{};
        ASSERT_EQ(pipe(ends.data()), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (double next = height;;) {
                next += 1;
                SetLocation(data, {0.5, 0.5, next});
                if (!program.Files.SaveWorkspace(File())) _exit(1);
                if (write(ends[1], "+", 1) != 1) _exit(2);
            }
        }
        char one = 0;
        ASSERT_EQ(read(ends[0], &one, 1), 1) << "the child saves";
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 4000));
        kill(child, SIGKILL);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        close(ends[0]);
        close(ends[1]);

        Workspace workspace;
        std::string why;
        const std::optional<std::string> text = ReadWholeFile(File(), kLargestWorkspaceFile, &why);
        ASSERT_TRUE(text) << why;
        ASSERT_EQ(ReadWorkspace(*text, workspace, why), WorkspaceReading::Whole) << why;
        EXPECT_EQ(workspace.Satellites.size(), 86U);
        EXPECT_GT(workspace.Head.SiteAlt, height) << "the first save was complete";
        EXPECT_EQ(text->find('\0'), std::string::npos);
        height = workspace.Head.SiteAlt;
        moved += fs::exists(File("night.cst.new")) ? 1 : 0;
    }
    EXPECT_GT(moved, 0) << "at least once it was killed in the middle of writing";
    ASSERT_TRUE(program.Files.SaveWorkspace(File())) << "what a killed program has left is in nobody's way";
}

}  // namespace
}  // namespace glintara::testing
