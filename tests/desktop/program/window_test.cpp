// The whole program in its window, steered as a user steers it: with the mouse and keys.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QtTest/QTest>
#include <cmath>
#include <filesystem>
#include <numbers>

#include "desktop/main/bindings.h"
#include "desktop/program/window_fixture.h"
#include "orbit/location.h"

namespace glintara::desktop {
namespace {

bool IsLand(const QColor& c) { return c.green() > c.red() + 10 && c.green() > c.blue() + 10; }
bool IsSea(const QColor& c) { return c.blue() > c.red() + 20 && c.blue() > c.green() + 20; }

TEST_F(WindowTest, OpensOnTheTurningGlobe) {
    ASSERT_TRUE(WaitFor([&] { return main_.Timer5.Enabled.Get(); }));
    EXPECT_EQ(view_.ZoomFactor, 29);
    EXPECT_EQ(view_.ViewLat, 0);
    EXPECT_TRUE(main_.TimerHRot.Enabled);
    const double lon = view_.ViewLon;
    EXPECT_TRUE(WaitFor([&] { return view_.ViewLon != lon; }));
    EXPECT_EQ(window_.windowTitle(), "Glintara - v.1.5.2");
}

TEST_F(WindowTest, StarsAreListedFromTheStart) {
    Settle();
    StarTables& stars = app_.Data.Stars;
    EXPECT_EQ(stars.StarCount(), 85752);
    EXPECT_EQ(view_.MaxStarMag, 11);
    EXPECT_NEAR(stars.VisibleStarCount(), 85000, 500) << "all but faint neighbours of the Sun";
    const std::int32_t before = stars.VisibleStarCount();
    for (int i = 0; i < 10; ++i) main_.CMaxMagDec.Click();
    EXPECT_EQ(view_.MaxStarMag, 8.5);
    EXPECT_LT(stars.VisibleStarCount(), before - 10000);
}

TEST_F(WindowTest, PictureShowsTheEarth) {
    Settle();
    main_.CSunLight.Value = false;
    WaitForPicture();
    // Zoom 29 makes the radius 29/128 of the short side; some two thirds of the disc are sea.
    const QSize size = window_.Picture().size();
    const double radius = std::min(size.width(), size.height()) * 29.0 / 128;
    const double disc = std::numbers::pi * radius * radius;
    const int land = CountPixels(IsLand);
    const int sea = CountPixels(IsSea);
    EXPECT_GT(land, 0.1 * disc);
    EXPECT_GT(sea, 0.3 * disc);
    EXPECT_LT(land + sea, 1.1 * disc);
}

/// Whether a widget of words shows all of them, inside of its window.
bool IsWhole(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool wraps = label != nullptr && label->wordWrap();
    const QSize needed = wraps ? QSize(0, label->heightForWidth(widget.width())) : widget.sizeHint();
    const QRect inWindow(widget.mapTo(widget.window(), QPoint(0, 0)), widget.size());
    return widget.width() >= needed.width() && widget.height() >= needed.height() &&
           widget.window()->rect().contains(inWindow);
}

TEST_F(WindowTest, NothingIsClippedAtTheLeastSize) {
    Settle();
    LoadIridium();
    main_.LStatus.Caption =
        "EARTH: Latitude= -45.1234\u00B0 N,  N,  Longitude= -109.1234\u00B0 E, RA= 08h05'09\": DEC= -045\u00B030'09\"";
    window_.resize(window_.minimumSize());
    EXPECT_LE(window_.width(), 1276) << "a screen of 1280 has room for it";
    for (int group = 0; group < 2; ++group) {
        int looked = 0;
        QStringList clipped;
        const auto isWhole = [&] {
            looked = 0;
            clipped.clear();
            for (const QWidget* widget : window_.findChildren<QWidget*>()) {
                const bool holdsWords = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                                        qobject_cast<const QLabel*>(widget) != nullptr;
                if (!holdsWords || !widget->isVisible()) continue;
                ++looked;
                if (!IsWhole(*widget)) clipped << widget->property("text").toString();
            }
            return clipped.isEmpty();
        };
        // The layout follows its widgets with a later event.
        QTest::qWait(20);
        WaitFor(isWhole, 3000);
        EXPECT_TRUE(clipped.isEmpty()) << clipped.join(" | ").toStdString();
        EXPECT_GT(looked, 20);
        main_.FrameInfo.Click();
    }
}

TEST_F(WindowTest, EveryControlTellsWhatItIsFor) {
    Settle();
    for (const QAbstractButton* button : window_.findChildren<QAbstractButton*>()) {
        if (button->text().isEmpty()) continue;  // Qt's own
        EXPECT_FALSE(button->toolTip().isEmpty()) << button->text().toStdString();
        EXPECT_GT(button->accessibleName().size(), 2) << button->text().toStdString();
    }
}

TEST_F(WindowTest, ElementSetsComeInByTheButton) {
    Settle();
    LoadIridium();
    WaitForPicture();
    EXPECT_TRUE(main_.CPlotOrbit.Enabled);
    EXPECT_TRUE(main_.MnuFindFlare.Enabled);
    // The marks of the near side are gold in sunlight.
    EXPECT_GT(CountPixels([](const QColor& c) { return c.red() > 200 && c.green() > 170 && c.blue() < 80; }), 40);
}

TEST_F(WindowTest, LeftDragTurnsTheGlobe) {
    Settle();
    PictureBox& picture = window_.Picture();
    const double lon = view_.ViewLon;
    const double lat = view_.ViewLat;
    const double width = picture.width();
    const double height = picture.height();
    QTest::mousePress(&picture, Qt::LeftButton, {}, {200, 200});
    QTest::mouseMove(&picture, {220, 205});
    QMouseEvent move(QEvent::MouseMove, QPointF(260, 210), picture.mapToGlobal(QPointF(260, 210)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&picture, &move);
    const double s = 50.0 / 29;
    EXPECT_NEAR(std::remainder(view_.ViewLon - (lon - 60 / width * 4 * s), 2 * std::numbers::pi), 0, 1e-9);
    EXPECT_NEAR(view_.ViewLat, lat + 10 / height * 4 * s, 1e-9);
    QTest::qWait(80);  // held still: it does not turn on by itself
    QTest::mouseRelease(&picture, Qt::LeftButton, {}, {260, 210});
    EXPECT_FALSE(main_.TimerHRot.Enabled);
}

TEST_F(WindowTest, KeysSteer) {
    Settle();
    window_.Picture().setFocus();
    EXPECT_TRUE(main_.CSunLight.Value);
    QTest::keyClick(&window_.Picture(), Qt::Key_G);
    EXPECT_FALSE(main_.CSunLight.Value);
    const int hours = app_.Data.TimeOffset.HourOffset;
    QTest::keyClick(&window_.Picture(), Qt::Key_H);
    EXPECT_EQ(app_.Data.TimeOffset.HourOffset, hours + 1);
    QTest::keyClick(&window_.Picture(), Qt::Key_H, Qt::ShiftModifier);
    EXPECT_EQ(app_.Data.TimeOffset.HourOffset, hours);
    QTest::keyClick(&window_.Picture(), Qt::Key_F5);
    EXPECT_EQ(view_.ViewLon, 0);
}

TEST_F(WindowTest, TextFieldsKeepTheirKeys) {
    Settle();
    auto* const box = window_.findChild<QPlainTextEdit*>();
    ASSERT_NE(box, nullptr);
    window_.activateWindow();
    box->setFocus();
    QTest::keyClicks(box, "gh");
    EXPECT_TRUE(main_.CSunLight.Value);
    EXPECT_EQ(main_.TTLE.Text.Get(), "gh");
}

TEST_F(WindowTest, SpaceFillsTheScreenAndEscapeLeavesIt) {
    Settle();
    QTest::keyClick(&window_.Picture(), Qt::Key_Space);
    EXPECT_TRUE(app_.Run.FullScreen);
    EXPECT_TRUE(window_.isFullScreen());
    EXPECT_TRUE(WaitFor([&] { return window_.Picture().height() == window_.height(); }));
    QTest::keyClick(&window_.Picture(), Qt::Key_Escape);
    EXPECT_FALSE(app_.Run.FullScreen);
    EXPECT_FALSE(window_.isFullScreen());
    EXPECT_TRUE(WaitFor([&] { return window_.Picture().height() < window_.height() - 100; }));
}

TEST_F(WindowTest, ClickOnInfoSwitchesThePanels) {
    Settle();
    const auto frames = window_.findChildren<QGroupBox*>();
    const auto shown = [&](const QString& title) {
        for (const QGroupBox* frame : frames)
            if (frame->title() == title) return frame->isVisible();
        ADD_FAILURE() << title.toStdString();
        return false;
    };
    EXPECT_TRUE(shown("Time"));
    EXPECT_FALSE(shown("Draw"));
    for (QGroupBox* frame : frames)
        if (frame->title() == "Info") QTest::mouseClick(frame, Qt::LeftButton, {}, {20, 20});
    EXPECT_FALSE(shown("Time"));
    EXPECT_TRUE(shown("Draw"));
}

TEST_F(WindowTest, DoubleClickHidesThePanels) {
    Settle();
    const int before = window_.Picture().height();
    QTest::mouseDClick(&window_.Picture(), Qt::LeftButton, {}, {10, 10});
    EXPECT_TRUE(app_.Run.PanelsHidden);
    EXPECT_TRUE(WaitFor([&] { return window_.Picture().height() > before; }));
    QTest::mouseDClick(&window_.Picture(), Qt::LeftButton, {}, {10, 10});
    EXPECT_FALSE(app_.Run.PanelsHidden);
    EXPECT_TRUE(WaitFor([&] { return window_.Picture().height() == before; }));
}

TEST_F(WindowTest, PictureFollowsTheWindow) {
    Settle();
    window_.resize(1400, 900);
    EXPECT_TRUE(WaitFor([&] { return window_.Picture().Image().size() == window_.Picture().size(); }));
}

TEST_F(WindowTest, MenuEntriesMirrorTheBoxes) {
    Settle();
    QAction* const entry = EntryNamed("2D Rendering");
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(entry->isChecked());
    entry->trigger();
    EXPECT_TRUE(main_.CPlaniSphere.Value);
    EXPECT_TRUE(entry->isChecked());
    main_.CPlaniSphere.Value = false;
    EXPECT_FALSE(entry->isChecked());
}

TEST_F(WindowTest, SearchFindsTheFlareAndTheClockJumpsThere) {
    Settle();
    SetLocation(app_.Data, {45.07 * kDegree, 7.69 * kDegree, 240});
    LoadIridium();
    program_.Core().Time.SetJDToTimeOffset(kNight);
    for (int s = 1; s <= app_.Data.SatCount; ++s) app_.Data.Satellite(s).Selected = true;
    QAction* const entry = EntryNamed("Search Flares/Transits...");
    ASSERT_NE(entry, nullptr);
    entry->trigger();
    app_.FindFlare.CFindFirst.Click();
    EXPECT_EQ(app_.FindFlare.LStatus.Caption.Get(), "Flare Found! (IRIDIUM 32 [+])");
    // Comes within 30 km at 5:03:21 and a half; the nearest moment is two seconds later.
    EXPECT_NEAR((app_.Data.SimTime - kNight) * 86400, 5 * 3600 + 3 * 60 + 20, 10);
    EXPECT_EQ(main_.LDateTime.Caption.Get().substr(0, 20), "DATE 20/01/2018 05:0");
    // Its mark stands beside the observer's.
    view_.ViewLat = app_.Data.Site.SiteGeoLat;
    view_.ViewLon = app_.Data.Site.SiteLon;
    view_.ZoomFactor = 300;
    UpdateGraphicsLevel2(main_);
    WaitForPicture();
    EXPECT_GT(CountPixels([](const QColor& c) { return c.green() > 150 && c.red() < 120 && c.blue() < 150; }), 20);
}

TEST_F(WindowTest, WheelComesNearerOverThePicture) {
    Settle();
    PictureBox& picture = window_.Picture();
    const QPointF at(300, 200);
    QWheelEvent nearer(at, picture.mapToGlobal(at), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                       false);
    QCoreApplication::sendEvent(&picture, &nearer);
    EXPECT_NEAR(view_.ZoomFactor, 29 * 1.1, 1e-9);
}

TEST_F(WindowTest, EverythingStaysReadableAtTwoPixelsAPoint) {
    Settle();
    main_.FrameInfo.Click();
    QTest::qWait(20);
    QImage fine(window_.size() * 2, QImage::Format_RGB32);
    fine.setDevicePixelRatio(2);
    window_.render(&fine);
    QImage plain(window_.size(), QImage::Format_RGB32);
    window_.render(&plain);
    // The same window, only finer: brought down to one size they agree.
    const QImage down = fine.scaled(plain.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double sum = 0;
    for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x) sum += std::abs(qGreen(plain.pixel(x, y)) - qGreen(down.pixel(x, y)));
    EXPECT_LT(sum / (plain.width() * plain.height()), 3);
}

TEST_F(WindowTest, WindowOpensWhereItStood) {
    Settle();
    window_.resize(1300, 780);
    QTest::qWait(20);
    ASSERT_TRUE(window_.close());
    DesktopProgram next(QString::fromStdString((folder_.Path() / "places.ini").string()));
    EXPECT_EQ(next.Window().size(), QSize(1300, 780));
}

TEST_F(WindowTest, InANarrowWindowThePanelsAreScrolledSideways) {
    Settle();
    auto* const panels = window_.findChild<QScrollArea*>();
    ASSERT_NE(panels, nullptr);
    QTest::qWait(20);
    EXPECT_FALSE(panels->horizontalScrollBar()->isVisible()) << "the usual window has room for them";
    const int before = panels->height();
    window_.setMinimumSize(0, 0);
    window_.resize(900, 500);
    EXPECT_TRUE(WaitFor([&] { return panels->horizontalScrollBar()->isVisible() && panels->height() > before; }));
    for (const char* text : {"Clear", "Add TLE", "Update TLE"}) {
        QPushButton* const button = ButtonNamed(text);
        panels->ensureWidgetVisible(button);
        EXPECT_EQ(button->visibleRegion().boundingRect(), button->rect()) << text;
    }
    EXPECT_GT(window_.Picture().height(), 160);
    window_.resize(1300, 780);
    EXPECT_TRUE(WaitFor([&] { return !panels->horizontalScrollBar()->isVisible() && panels->height() == before; }));
}

TEST_F(WindowTest, WhatIsStillToComeIsGreyed) {
    Settle();
    LoadIridium();
    for (const char* text : {"Constellations", "NOSS Flare"}) {
        for (const QCheckBox* box : window_.findChildren<QCheckBox*>())
            if (box->text() == text) EXPECT_FALSE(box->isEnabled()) << text;
    }
    EXPECT_FALSE(EntryNamed("Export Flare/Transit Track")->isEnabled());
    for (const char* text :
         {"SGP4/SDP4", "SGP1", "Orbit Details", "Astronomical Details", "Satellite Info...", "Next Satellite",
          "Download TLE From Internet...", "Save picture...", "Print picture...", "Update and News Check",
          "Open Workspace...", "Floating Site", "Search Flares/Transits...", "Transit Mode", "Reset View",
          "Show Atmosphere", "Mark Cities", "Show Flare/Transit Tracks", "Cities..."})
        EXPECT_TRUE(EntryNamed(text)->isEnabled()) << text;
}

TEST_F(WindowTest, TheBoxesOfTheSkyComeWithIt) {
    Settle();
    const char* const boxes[] = {"Constellations", "Star Names", "Flat Sky", "Reverse Sky", "Sky Circle"};
    for (const bool sky : {true, false}) {
        EntryNamed("Draw Sky")->trigger();
        for (const char* text : boxes) {
            for (const QCheckBox* box : window_.findChildren<QCheckBox*>())
                if (box->text() == text) EXPECT_EQ(box->isEnabled(), sky) << text;
            EXPECT_EQ(EntryNamed(text)->isEnabled(), sky) << text;
        }
    }
}

TEST_F(WindowTest, TheSearchWindowIsNeverOverTheMiddleOfThePicture) {
    Settle();
    LoadIridium();
    EntryNamed("Search Flares/Transits...")->trigger();
    const auto* form = window_.findChild<QDialog*>("FormFindFlare");
    ASSERT_NE(form, nullptr);
    ASSERT_TRUE(WaitFor([&] { return form->isVisible(); }));
    const QWidget& picture = window_.Picture();
    EXPECT_FALSE(form->frameGeometry().contains(picture.mapToGlobal(picture.rect().center())));
}

TEST_F(WindowTest, APasteIntoTheElementFieldIsReadLikeAFile) {
    Settle();
    auto* field = window_.findChild<QPlainTextEdit*>();
    ASSERT_NE(field, nullptr);
    QGuiApplication::clipboard()->setText("ISS (ZARYA)      \r\r\n1 25544U  \r\r\n");
    field->paste();
    EXPECT_EQ(main_.TTLE.Text.Get(), "ISS (ZARYA)\r\n1 25544U\r\n");
    EXPECT_EQ(field->toPlainText(), "ISS (ZARYA)\n1 25544U\n");
    QGuiApplication::clipboard()->clear();
}

// A catalogue as JSON is one line of many megabytes, which a field could not show.
TEST_F(WindowTest, AMessagePastedIntoTheElementFieldBecomesTwoLines) {
    Settle();
    auto* field = window_.findChild<QPlainTextEdit*>();
    ASSERT_NE(field, nullptr);
    const auto record = [](const char* name, const char* number) {
        return QString(R"({"OBJECT_NAME":"%1","OBJECT_ID":"1998-067A","EPOCH":"2008-09-20T12:25:40.104192",)"
                       R"("MEAN_MOTION":15.72125391,"ECCENTRICITY":0.0006703,"INCLINATION":51.6416,)"
                       R"("RA_OF_ASC_NODE":247.4627,"ARG_OF_PERICENTER":130.536,"MEAN_ANOMALY":325.0288,)"
                       R"("NORAD_CAT_ID":%2,"ELEMENT_SET_NO":292,"REV_AT_EPOCH":56353,"BSTAR":-1.1606e-5,)"
                       R"("MEAN_MOTION_DOT":-2.182e-5,"MEAN_MOTION_DDOT":0})")
            .arg(name, number);
    };
    main_.TTLE.Text = std::string("old");
    field->selectAll();
    QGuiApplication::clipboard()->setText("[" + record("ISS", "25544") + "," + record("FAR", "340000") + "]");
    field->paste();
    EXPECT_EQ(main_.TTLE.Text.Get(),
              "ISS\r\n1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927\r\n"
              "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537\r\n");
    EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "1 of 2 records left out: 1 has a number above 339999, FAR (340000)");
    QGuiApplication::clipboard()->setText("[" + record("FAR", "340000") + "]");
    field->selectAll();
    const std::string before = main_.TTLE.Text.Get();
    field->paste();
    EXPECT_EQ(main_.TTLE.Text.Get(), before) << "nothing came in its place";
    QGuiApplication::clipboard()->clear();
}

TEST_F(WindowTest, CuttingAllOfALongTextTakesWhatIsNotShownToo) {
    Settle();
    auto* field = window_.findChild<QPlainTextEdit*>();
    std::string text;
    while (text.size() < 4 * kTextPortion) text += "a line of twenty chars\r\n";
    main_.TTLE.Text = text;
    ASSERT_LT(field->toPlainText().size(), static_cast<qsizetype>(2 * kTextPortion));
    field->selectAll();
    field->cut();
    EXPECT_EQ(main_.TTLE.Text.Get(), "");
    field->paste();
    EXPECT_EQ(main_.TTLE.Text.Get(), text);
    QGuiApplication::clipboard()->clear();
}

TEST_F(WindowTest, ClosingEndsTheClock) {
    Settle();
    EXPECT_TRUE(window_.close());
    EXPECT_TRUE(app_.Run.Closing);
    EXPECT_FALSE(main_.Timer5.Enabled && window_.isVisible());
}

TEST_F(WindowTest, WhatACommandSaysIsReadInFullUnderTheMouse) {
    Settle();
    const std::string path = "/home/anna/" + std::string(200, 'x') + "/update.html?r=1&c=2";
    main_.LCommandOutput.Caption = "Fish <b> & chips:\r\n" + path;
    auto* const label = window_.findChild<QLabel*>("LCommandOutput");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text().remove(QChar(0x200B)).replace("\r\n", "\n"),
              QString::fromStdString("Fish <b> & chips:\n" + path));
    QHelpEvent rest(QEvent::ToolTip, QPoint(2, 2), label->mapToGlobal(QPoint(2, 2)));
    QCoreApplication::sendEvent(label, &rest);
    EXPECT_TRUE(QToolTip::text().contains("Fish &lt;b&gt; &amp; chips:")) << QToolTip::text().toStdString();
    EXPECT_TRUE(QToolTip::text().contains("update.html?"));
    QToolTip::hideText();
    EXPECT_LE(label->width(), label->parentWidget()->width()) << "a path breaks behind its slashes";
}

}  // namespace
}  // namespace glintara::desktop
