// The windows of observations and output in the whole program.

#include "desktop/program/observation_windows.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <filesystem>

#include "desktop/main/bindings.h"
#include "desktop/program/desktop_program.h"
#include "desktop/window_checks.h"
#include "orbit/element_sets.h"
#include "orbit/observations.h"
#include "orbit/output.h"
#include "orbit/satellite_table.h"
#include "support/working_folder.h"

namespace glintara::desktop {
namespace {

using testing::Named;

constexpr const char* kLine = "25544 98 067A   2701 G 20180120174233508 17 35 0546125-012345 27";

struct ObservationWindowsTest : ::testing::Test {
    ObservationWindowsTest() {
        window.resize(900, 640);
        testing::Open(window);
    }

    QDialog* Dialog(const char* name) const { return window.findChild<QDialog*>(name); }
    bool IsOpen(const char* name) const { return Dialog(name) != nullptr && Dialog(name)->isVisible(); }

    glintara::testing::WorkingFolder folder;
    DesktopProgram program{QString::fromStdString((folder.Path() / "places.ini").string())};
    Application& app = program.State();
    MainScope& window = program.Window();
};

TEST_F(ObservationWindowsTest, TheMenuOpensTheWindowAndEscapeClosesIt) {
    EXPECT_TRUE(app.Main.MnuObservations.IsWired());
    EXPECT_FALSE(IsOpen("FormIOD"));
    app.Main.MnuObservations.Click();
    ASSERT_TRUE(IsOpen("FormIOD"));
    app.Main.MnuObservations.Click();
    EXPECT_TRUE(IsOpen("FormIOD"));
    QTest::keyClick(Dialog("FormIOD"), Qt::Key_Escape);
    EXPECT_FALSE(IsOpen("FormIOD"));
    app.Main.MnuObservations.Click();
    EXPECT_TRUE(IsOpen("FormIOD"));
}

TEST_F(ObservationWindowsTest, APointThatIsDefinedOpensIt) {
    app.Data.SetSimInstant({2018, 1, 20, 17, 42, 33.508}, DateToJD({2018, 1, 20, 17, 42, 33.508}));
    observations::DefineIODPoint(app, {0.1, 0.2}, 0.1, 0.01);
    ASSERT_TRUE(IsOpen("FormIOD"));
    EXPECT_EQ(Named<QListView>(*Dialog("FormIOD"), "LIOD").model()->rowCount(), 1);
}

TEST_F(ObservationWindowsTest, ExportOpensTheOutputAndItsClockStamps) {
    app.Main.MnuObservations.Click();
    ASSERT_TRUE(observations::EnterIODLines(app, kLine));
    QTest::mouseClick(&Named<QPushButton>(*Dialog("FormIOD"), "CExport"), Qt::LeftButton);
    ASSERT_TRUE(IsOpen("FormOutput"));
    EXPECT_NE(app.Output.TOutput.Text.Get().find(kLine), std::string::npos);
    EXPECT_EQ(app.Output.ReadClock().year, SystemClock().ReadUtc().year);
    QTest::keyClick(Dialog("FormOutput"), Qt::Key_Escape);
    EXPECT_FALSE(IsOpen("FormOutput"));
}

TEST_F(ObservationWindowsTest, AReportBringsTheOpenOutputToTheFront) {
    output::Init(app);
    QDialog* const form = Dialog("FormOutput");
    ASSERT_NE(form, nullptr);
    app.Main.MnuObservations.Click();
    ASSERT_TRUE(QTest::qWaitFor([form] { return !form->isActiveWindow(); }));
    output::Init(app);
    EXPECT_TRUE(QTest::qWaitFor([form] { return form->isActiveWindow(); }));
}

TEST_F(ObservationWindowsTest, FollowTheWorkingSatellite) {
    ASSERT_TRUE(LoadTLEFile(app, GLINTARA_SOURCE_DIR "/data/examples/stations.tle"));
    app.Main.MnuObservations.Click();
    CApplyTLEOrbit_click(app);
    app.Observations.COInfo.Value = true;
    const auto shown = [&] { return app.Observations.TSatNumber.Text.Get(); };
    EXPECT_EQ(shown(), app.Data.Satellite(app.Data.SatCount).SatNumber);
    const SatRecord first = app.Data.Satellite(1);
    ChangeWorkingSatellite(app, first.OrbitNumber);
    EXPECT_EQ(shown(), first.SatNumber);
}

TEST_F(ObservationWindowsTest, TheEndOfTheProgramClosesThem) {
    app.Main.MnuObservations.Click();
    app.Output.Visible = true;
    ASSERT_TRUE(IsOpen("FormOutput"));
    EXPECT_TRUE(program.Core().End.Form_Unload());
    EXPECT_FALSE(IsOpen("FormIOD"));
    EXPECT_FALSE(IsOpen("FormOutput"));
}

}  // namespace
}  // namespace glintara::desktop
