// The surface editor in the program: what the other rooms tell it.

#include "core/program_fixture.h"
#include "orbit/satellite_table.h"

namespace glintara::testing {
namespace {

struct EditorSignalsTest : ProgramTest {
    EditorSignalsTest() {
        RunAtOnce();
        for (int i = 1; i <= 2; ++i) {
            AddSatellite();
            SatRecord& satellite = app.Data.Satellite(i);
            satellite.Name = "Iridium " + std::to_string(i);
            ApplyDefaultModel(satellite);
        }
        app.Main.MnuModelSatSurfaces.Click();
    }

    MirrorControls& form = app.Mirror;
};

TEST_F(EditorSignalsTest, TheMenuOpensIt) {
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(form.LSatRef.Caption.Get(), SatelliteIdentityText(app.Data.Satellite(2)));
}

TEST_F(EditorSignalsTest, ItGoesOverToTheSatelliteThatWorks) {
    form.TAngle.Text = std::string("7");
    ChangeWorkingSatellite(app, 1);
    EXPECT_EQ(form.LSatRef.Caption.Get(), SatelliteIdentityText(app.Data.Satellite(2)));
    EXPECT_EQ(app.Data.Satellite(2).Name, "Iridium 1");
    EXPECT_EQ(app.Data.Satellite(2).Surface.Mirror(1).Angle, 0);
    EXPECT_EQ(app.Data.Satellite(1).Surface.Mirror(1).Angle, 7) << "what was typed went to the satellite before";
}

TEST_F(EditorSignalsTest, ItGoesOverToASatelliteThatIsAdded) {
    AddSatellite();
    EXPECT_EQ(form.LSatRef.Caption.Get(), SatelliteIdentityText(app.Data.Satellite(3)));
    EXPECT_TRUE(form.LMirrors.Lines.Get().empty());
}

TEST_F(EditorSignalsTest, ItClosesWithTheLastSatellite) {
    app.Data.SatCount = 0;
    signals.UpDateAll();
    EXPECT_FALSE(form.Visible);
    EXPECT_TRUE(app.Main.CApplyTLEOrbit.Enabled);
}

TEST_F(EditorSignalsTest, AnApplyAsksForAPicture) {
    form.TAngle.Text = std::string("7");
    EXPECT_FALSE(app.Main.Timer2.Armed());
    form.CApply.Click();
    EXPECT_TRUE(app.Main.Timer2.Armed());
}

TEST_F(EditorSignalsTest, TheListPressedTwiceMovesTheClock) {
    app.Main.CRealTime.Value = false;
    form.CUpTime.Click();
    const double noted = app.Data.SimTime;
    app.Main.CMonthOffsetInc.Click();
    ASSERT_GT(app.Data.SimTime, noted + 20);
    form.LMirrorsTwice.Click();
    EXPECT_NEAR(app.Data.SimTime, noted, 0.001 * kSecond);
}

}  // namespace
}  // namespace glintara::testing
