#include <QApplication>
#include <QMessageBox>
#include <QProgressBar>
#include <fstream>
#include <sstream>

#include "desktop/core/form_progress.h"
#include "desktop/program/window_fixture.h"
#include "flare/cities.h"
#include "orbit/progress.h"
#include "state/recording_services.h"

namespace glintara::desktop {
namespace {

class TrackWindowsTest : public WindowTest {
  protected:
    template <class Widget>
    Widget* WindowNamed(const QString& name) {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == name) return qobject_cast<Widget*>(widget);
        return nullptr;
    }
};

TEST_F(TrackWindowsTest, TheMenuOpensTheWindowOfCities) {
    Settle();
    EXPECT_EQ(app_.Data.Cities.SelectedCityCount(), 4442);
    EXPECT_EQ(app_.Data.Cities.FirstSiteIndex, 49026);
    EntryNamed("Cities...")->trigger();
    auto* const form = WindowNamed<QDialog>("FormCities");
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(form->isVisible());
    EntryNamed("Cities...")->trigger();
    EXPECT_TRUE(form->isVisible());
    form->close();
    EXPECT_FALSE(app_.Cities.Visible);
    EntryNamed("Cities...")->trigger();
    EXPECT_TRUE(form->isVisible());
}

TEST_F(TrackWindowsTest, TracksNeedSatellitesToBeOffered) {
    Settle();
    EXPECT_FALSE(EntryNamed("Export Flare/Transit Track")->isEnabled());
    EXPECT_FALSE(EntryNamed("Find Cities along Track")->isEnabled());
    LoadIridium();
    EXPECT_FALSE(EntryNamed("Export Flare/Transit Track")->isEnabled());
    EntryNamed("Show Flare/Transit Tracks")->trigger();
    EXPECT_TRUE(main_.CFlareTrack.Value);
    EXPECT_TRUE(EntryNamed("Export Flare/Transit Track")->isEnabled());
    EXPECT_TRUE(EntryNamed("Find Cities along Track")->isEnabled());
    EXPECT_TRUE(EntryNamed("Include Day Time Tracks")->isEnabled());
}

// The key T, up to the files and the message that has to be closed.
TEST_F(TrackWindowsTest, ATrackIsExportedByItsKey) {
    Settle();
    LoadIridium();
    program_.Core().Time.SetJDToTimeOffset(kNight + 0.2);
    main_.CFlareTrack.Value = true;
    main_.CDayFlares.Value = true;
    WaitForPicture();
    QString said;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&said] {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            said = box->text();
            box->accept();
        }
    });
    answer.start(5);
    window_.Picture().setFocus();
    QTest::keyClick(&window_.Picture(), Qt::Key_T);
    ASSERT_TRUE(WaitFor([&] { return !said.isEmpty() && !app_.Run.ExportPending; }));
    EXPECT_EQ(said, "Flare Track Exported");
    std::ifstream kml(folder_.Path() / "Track.kml");
    std::ostringstream text;
    text << kml.rdbuf();
    EXPECT_NE(text.str().find("<coordinates>"), std::string::npos);
    EXPECT_TRUE(fs::exists(folder_.Path() / "Track.txt"));
    const auto pictures = app_.Run.FrameCounter;
    main_.CGlobeGrid.Value = !main_.CGlobeGrid.Value;
    EXPECT_TRUE(WaitFor([&] { return app_.Run.FrameCounter != pictures; })) << "pictures go on";
}

TEST_F(TrackWindowsTest, AScanShowsItsProgressAndEnds) {
    Settle();
    LoadIridium();
    program_.Core().Time.SetJDToTimeOffset(kNight + 0.2);
    main_.CFlareTrack.Value = true;
    main_.CDayFlares.Value = true;
    WaitForPicture();
    bool modal = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* const form = WindowNamed<QDialog>("FormProgress");
        modal = modal || (form != nullptr && form->isVisible() && form->isModal());
    });
    look.start(1);
    EntryNamed("Find Cities along Track")->trigger();
    ASSERT_TRUE(WaitFor([&] { return !app_.Run.CityScanPending && !app_.Run.TrackBusy; }));
    EXPECT_TRUE(modal) << "no other window takes a command meanwhile";
    EXPECT_FALSE(app_.Progress.Visible);
    EXPECT_TRUE(app_.Output.Visible);
    EXPECT_NE(app_.Output.TOutput.Text.Get().find("List of cities along the track"), std::string::npos);
}

struct FormProgressTest : ::testing::Test {
    FormProgressTest() { ConnectProgress(app.Progress); }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app{boxes, events, windows};
    FormProgress form{app, nullptr};
};

TEST_F(FormProgressTest, AbortsByButtonEscapeAndFrame) {
    app.Progress.Visible = true;
    form.show();
    SetProgress(app.Progress, 41.95);
    EXPECT_EQ(form.findChild<QProgressBar*>("ProgressBar1")->value(), 42);
    form.findChild<QPushButton*>("CAbort")->click();
    EXPECT_TRUE(app.Progress.Aborted);
    app.Progress.Aborted = false;
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_TRUE(app.Progress.Aborted);
    EXPECT_TRUE(form.isVisible()) << "the work's end closes it";
    app.Progress.Aborted = false;
    form.close();
    EXPECT_TRUE(app.Progress.Aborted);
    EXPECT_TRUE(form.isVisible());
    app.Progress.Visible = false;
    form.close();
    EXPECT_FALSE(form.isVisible());
}

}  // namespace
}  // namespace glintara::desktop
