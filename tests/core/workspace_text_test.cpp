#include "core/workspace_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <string>
#include <vector>

#include "core/workspace_lines.h"

namespace glintara::testing {
namespace {

/// A reading with the present values of a session in its head.
struct Reading {
    explicit Reading(const std::string& text) {
        workspace.Head.TwilightAngle = 11;
        workspace.Head.SoilColor = 22;
        workspace.Head.UpdateCheckDays = 1;
        workspace.Head.PanX = 33;
        workspace.Head.SiteAlt = 44;
        workspace.Head.UTCOffsetHours = 5;
        workspace.Head.RealTimeStep = 6;
        end = ReadWorkspace(text, workspace, why);
    }

    const SatRecord& Satellite(std::size_t index = 0) const { return workspace.Satellites.at(index); }
    const WorkspaceHead& Head() const { return workspace.Head; }

    Workspace workspace;
    std::string why;
    WorkspaceReading end;
};

/// A file of one satellite and one view.
WorkspaceLines OneOfEach(FileAge age = FileAge::Surfaces) {
    WorkspaceLines lines;
    lines.age = age;
    lines.satellites = {lines.Satellite("IRIDIUM 7, in orbit", 1)};
    lines.views[2] = lines.View();
    return lines;
}

constexpr FileAge kAges[] = {FileAge::First, FileAge::Lines, FileAge::Pan, FileAge::Height, FileAge::Surfaces};

TEST(WorkspaceFile, AByteOrderMarkOfAnEditorIsPassedOver) {
    const Reading read("\xEF\xBB\xBF" + OneOfEach().Text());
    ASSERT_EQ(read.end, WorkspaceReading::Whole) << read.why;
    EXPECT_EQ(read.Satellite().Name, "IRIDIUM 7, in orbit");
}

TEST(WorkspaceFile, EachFormatHoldsWhatItIsToldTo) {
    for (const FileAge age : kAges) {
        SCOPED_TRACE(TagOf(age));
        const WorkspaceLines lines = OneOfEach(age);
        const Reading read(lines.Text());
        ASSERT_EQ(read.end, WorkspaceReading::Whole) << read.why;
        const WorkspaceHead& head = read.Head();
        EXPECT_EQ(head.TwilightAngle, -6);
        EXPECT_EQ(head.SoilColor, 28416U);
        EXPECT_EQ(head.SeaColor, 6961680U);
        EXPECT_EQ(head.ShadowColor, 5921370U);
        EXPECT_EQ(head.UpdateCheckDays, 7);
        EXPECT_EQ(head.Options, PlainOptions());
        EXPECT_EQ(head.Sim, (WorkspaceDate{2018, 1, 20, 17, 42, 9.5}));
        EXPECT_EQ(head.Base, (WorkspaceDate{2018, 1, 19, 16, 41, 8.25}));
        EXPECT_EQ(head.TimeOffset, (TimeOffset{.DayOffset = 1, .MinuteOffset = 1, .HourOffset = 1, .SecondOffset = 1}));
        EXPECT_EQ(head.ViewRoll, 0.125);
        EXPECT_EQ(head.ViewLat, 0.5);
        EXPECT_EQ(head.ViewLon, -1.25);
        EXPECT_EQ(head.ZoomFactor, 30);
        EXPECT_EQ(head.PanX, age >= FileAge::Pan ? 0.75 : 33) << "an older file has none";
        EXPECT_EQ(head.PanY, age >= FileAge::Pan ? -0.375 : 0);
        EXPECT_EQ(head.SiteLat, 0.8);
        EXPECT_EQ(head.SiteLon, 0.2);
        EXPECT_EQ(head.SiteAlt, age >= FileAge::Height ? 321.5 : 44);
        EXPECT_EQ(head.UTCOffsetHours, age >= FileAge::Height ? -5 : 5);
        EXPECT_EQ(head.RealTimeStep, age >= FileAge::Height ? 2.5 : 6);
        EXPECT_EQ(head.MaxStarMag, 7.25);
        EXPECT_EQ(head.LockedLat, 0.1);
        EXPECT_EQ(head.LockedAngle, 0.3);
        EXPECT_EQ(head.LockedRoll, 0.7);
        EXPECT_EQ(head.OrbitTurns, 12);
        EXPECT_EQ(head.StarSizeScale, 9);
        EXPECT_EQ(head.SkyScale, 40);
        EXPECT_EQ(head.SkyScaleSaved, 41);
        EXPECT_EQ(head.SatCount, 1);

        const SatRecord& satellite = read.Satellite();
        EXPECT_EQ(satellite.SatNumber, "24793");
        EXPECT_EQ(satellite.Designator, "97020B  ") << "with its blanks";
        EXPECT_EQ(satellite.EpochText, "18020.90610358");
        EXPECT_EQ(satellite.Inclination, 1.5);
        EXPECT_EQ(satellite.RaanAngle, 2.5);
        EXPECT_EQ(satellite.Eccentricity, 0.25);
        EXPECT_EQ(satellite.ArgPerigee, 1.25);
        EXPECT_EQ(satellite.MeanAnomaly, 4.5);
        EXPECT_EQ(satellite.MeanMotion, 14.34242484);
        EXPECT_EQ(satellite.ElementSetNumber, 999);
        EXPECT_EQ(satellite.MeanRadiusA, 1.125);
        EXPECT_EQ(satellite.OrbitNumber, 1);
        EXPECT_EQ(satellite.MeanMotionDot, 5.1e-7);
        EXPECT_EQ(satellite.MeanMotionDDot, 0);
        EXPECT_EQ(satellite.BStar, 1.1032e-5);
        EXPECT_EQ(satellite.Name, "IRIDIUM 7, in orbit");
        EXPECT_EQ(satellite.OptionFlags, "0100000000000000");
        EXPECT_EQ(satellite.TitleLine, age >= FileAge::Lines ? "IRIDIUM 7, in orbit as loaded" : "");
        EXPECT_EQ(satellite.Line1, age >= FileAge::Lines ? kIridiumLine1 : "");
        EXPECT_EQ(satellite.Line2, age >= FileAge::Lines ? kIridiumLine2 : "");

        const SurfaceModel& model = satellite.Surface;
        if (age < FileAge::Surfaces) {
            EXPECT_EQ(model.MirrorCount, 3) << "those of the family";
            EXPECT_EQ(model.Mirror(2).MirrorID, "IRIDIUM_L");
        } else {
            EXPECT_EQ(model.ModelFlags, "1" + std::string(28, '0'));
            EXPECT_EQ(model.MirrorCount, 2);
            EXPECT_EQ(model.OrientationType, 3);
            EXPECT_EQ(model.TargetSatID, 25544);
            EXPECT_EQ(model.RotAxisDEC, 0.25);
            EXPECT_EQ(model.RotAxisRA, 0.75);
            EXPECT_EQ(model.ModelSpareD, 1.5);
            EXPECT_EQ(model.ModelSpareB, 2.5);
            EXPECT_EQ(model.ModelSpareA, (std::array<double, 4>{1, 3.5, 4.5, 5.5})) << "the first is not in the file";
            EXPECT_EQ(model.ModelSpareC, 1);
            EXPECT_EQ(model.Mirror(20).MirrorName, "Panel 20") << "all twenty, whatever their number";
            EXPECT_EQ(model.Mirror(20).MirrorOrigin, "1");
            EXPECT_EQ(model.Mirror(20).MirrorSpare, std::string(30, '0'));
            EXPECT_EQ(model.Mirror(20).MirrorID, "24793_20");
            EXPECT_EQ(model.Mirror(20).Angle, 20.5);
            EXPECT_EQ(model.Mirror(20).Tilt, 40);
            EXPECT_EQ(model.Mirror(20).Spare1, 1);
            EXPECT_EQ(model.Mirror(20).Spare2, 0);
            EXPECT_EQ(model.Mirror(20).Spare3, 1);
            EXPECT_EQ(model.Mirror(20).MirrorJD, 2458139.25);
            EXPECT_EQ(model.Mirror(20).ScatterFactor, 2);
        }

        EXPECT_FALSE(read.workspace.Views[2].Used);
        const SavedView& view = read.workspace.Views[3];
        EXPECT_TRUE(view.Used);
        EXPECT_EQ(view.Options, PlainOptions());
        EXPECT_EQ(view.Spare, 0.5);
        EXPECT_EQ(view.LockedLat, 0.11);
        EXPECT_EQ(view.LockedAngle, 0.22);
        EXPECT_EQ(view.LockedRoll, 0.33);
        EXPECT_EQ(view.MaxStarMag, 6.5);
        EXPECT_EQ(view.OrbitTurns, 18);
        EXPECT_EQ(view.ViewLat, 0.4);
        EXPECT_EQ(view.ViewLon, -0.6);
        EXPECT_EQ(view.ViewRoll, 0.9);
        EXPECT_EQ(view.PanX, age >= FileAge::Pan ? 1.5 : 0);
        EXPECT_EQ(view.PanY, age >= FileAge::Pan ? 2.5 : 0);
        EXPECT_TRUE(view.SkyLocked);
        EXPECT_EQ(view.StarSizeScale, 7);
        EXPECT_EQ(view.SkyScale, 33);
        EXPECT_EQ(view.ZoomFactor, 77);
        EXPECT_EQ(view.TimeText[0], "1");
        EXPECT_EQ(view.TimeText[17], "18");
        EXPECT_FALSE(read.workspace.Views[10].Used);
    }
}

TEST(WorkspaceFile, IsWrittenAsTheNewestFormatLineByLine) {
    const std::string text = OneOfEach().Text();
    const Reading read(text);
    ASSERT_EQ(read.end, WorkspaceReading::Whole);
    EXPECT_TRUE(WorkspaceText(read.Head(), read.workspace.Satellites, read.workspace.Views) == text);
}

TEST(WorkspaceFile, LineEndsOfAllSystemsAreRead) {
    for (const char* end : {"\r\n", "\n", "\r"}) {
        WorkspaceLines lines = OneOfEach();
        lines.lineEnd = end;
        const Reading read(lines.Text());
        EXPECT_EQ(read.end, WorkspaceReading::Whole) << read.why;
        EXPECT_EQ(read.Satellite().Line2, kIridiumLine2);
        EXPECT_EQ(read.workspace.Views[3].TimeText[17], "18");
    }
    std::string text = OneOfEach().Text();
    text.resize(text.size() - 2);
    EXPECT_EQ(Reading(text).end, WorkspaceReading::Whole) << "the last line needs no end";
}

TEST(WorkspaceFile, OfNoSatelliteGoesStraightToTheViews) {
    const WorkspaceLines lines;
    const std::vector<std::string> all = lines.All();
    ASSERT_EQ(all.size(), 57U);
    EXPECT_EQ(all[46], "0") << "line 47";
    const Reading read(lines.Text());
    EXPECT_EQ(read.end, WorkspaceReading::Whole);
    EXPECT_TRUE(read.workspace.Satellites.empty());
    const std::string written = WorkspaceText(read.Head(), {}, read.workspace.Views);
    EXPECT_TRUE(written.ends_with("\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n")) << "ten empty views";
    EXPECT_EQ(written, lines.Text());
}

TEST(WorkspaceFile, TheSecondLineTellsHowManySettingsFollow) {
    WorkspaceLines lines = OneOfEach();
    lines.settings = {"-6", "1", "2", "3", "4", "what, later", "versions keep"};
    Reading seven(lines.Text());
    // A comma ends a value, so one of them counts for two.
    EXPECT_EQ(seven.end, WorkspaceReading::HeadBroken);
    lines.settings = {"-6", "1", "2", "3", "4", "what later", "versions keep"};
    seven = Reading(lines.Text());
    ASSERT_EQ(seven.end, WorkspaceReading::Whole) << seven.why;
    EXPECT_EQ(seven.Head().ShadowColor, 3U);
    EXPECT_EQ(seven.Head().UpdateCheckDays, 4);
    EXPECT_EQ(seven.Head().Options, PlainOptions());

    lines.settings = {"-6"};
    const Reading one(lines.Text());
    ASSERT_EQ(one.end, WorkspaceReading::Whole) << one.why;
    EXPECT_EQ(one.Head().TwilightAngle, -6);
    EXPECT_EQ(one.Head().SoilColor, 22U) << "as it was";

    lines.settings = {};
    const Reading none(lines.Text());
    ASSERT_EQ(none.end, WorkspaceReading::Whole) << none.why;
    EXPECT_EQ(none.Head().TwilightAngle, 11);
    EXPECT_EQ(none.Head().UpdateCheckDays, 1);

    lines.withSettings = false;
    const Reading without(lines.Text());
    ASSERT_EQ(without.end, WorkspaceReading::Whole) << without.why;
    EXPECT_EQ(without.Head().TwilightAngle, 11);
    EXPECT_EQ(without.Head().SoilColor, 22U);
    EXPECT_EQ(without.Head().Options, PlainOptions());
}

TEST(WorkspaceFile, OtherTagsAreRefused) {
    for (const char* tag : {"GLNTA13", "GLNTA13E", "GLNTA13DD", "GLNTA10", "GLNTA", "GLNTA13D ", "GLNTA12D"}) {
        const Reading read(std::string(tag) + "\r\n/5\r\n");
        EXPECT_EQ(read.end, WorkspaceReading::OtherVersion) << tag;
    }
    for (const char* text : {"", "\r\n", "GLNT", "glnta13d\r\n", " GLNTA13D\r\n", "1 24793U"})
        EXPECT_EQ(Reading(text).end, WorkspaceReading::OtherFile) << text;
    EXPECT_EQ(Reading("GLNTA13D").end, WorkspaceReading::HeadBroken);
}

/// The text of the whole file with one line of it in another form, and how that is read.
Reading WithLine(std::size_t number, const std::string& line) {
    const WorkspaceLines lines = OneOfEach();
    std::vector<std::string> all = lines.All();
    all.at(number - 1) = line;
    return Reading(lines.Joined(all));
}

TEST(WorkspaceFile, NumbersThatAreNoneBreakIt) {
    for (const char* bad : {"", " ", "word", "12abc", "nan", "inf", "-inf", "1e999", "0x10", "1..2", "--1", "5 6"}) {
        const Reading head = WithLine(30, bad);  // the zoom
        EXPECT_EQ(head.end, WorkspaceReading::HeadBroken) << bad;
        EXPECT_EQ(head.why, "line 30: there is no number") << bad;
        const Reading satellite = WithLine(51, bad);  // an inclination
        EXPECT_EQ(satellite.end, WorkspaceReading::Broken) << bad;
        EXPECT_TRUE(satellite.workspace.Satellites.empty()) << "nothing half read";
    }
    // Beyond 16 bits and beyond 32.
    EXPECT_EQ(WithLine(10, "32768").why, "line 10: the number is too large");
    EXPECT_EQ(WithLine(9, "2147483648").why, "line 9: the number is too large");
    EXPECT_EQ(WithLine(9, "-2147483648").end, WorkspaceReading::Whole);
}

TEST(WorkspaceFile, NumbersAreReadAsPeopleWriteThem) {
    EXPECT_EQ(WithLine(30, " 3.5e1 ").Head().ZoomFactor, 35);
    EXPECT_EQ(WithLine(30, "+.5").Head().ZoomFactor, 0.5);
    EXPECT_EQ(WithLine(44, "8.5").Head().StarSizeScale, 8) << "ties to even";
    EXPECT_EQ(WithLine(44, "9.5").Head().StarSizeScale, 10);
    EXPECT_EQ(WithLine(44, "7.6").Head().StarSizeScale, 8);
    EXPECT_EQ(WithLine(42, " 1 ").Head().SkyLocked, true);
    EXPECT_EQ(WithLine(42, "-1").Head().SkyLocked, false) << "only 1 is true";
    EXPECT_EQ(WithLine(42, "2").Head().SkyLocked, false);
}

TEST(WorkspaceFile, WhatFollowsACommaIsTheNextField) {
    WorkspaceLines lines = OneOfEach();
    std::vector<std::string> all = lines.All();
    ASSERT_EQ(all[8], "2018");
    all[8] = "2018,1, 20,17,42,9.5";
    all.erase(all.begin() + 9, all.begin() + 14);
    const Reading read(lines.Joined(all));
    ASSERT_EQ(read.end, WorkspaceReading::Whole) << read.why;
    EXPECT_EQ(read.Head().Sim, (WorkspaceDate{2018, 1, 20, 17, 42, 9.5}));
    EXPECT_EQ(read.Head().Base.day, 19);
}

TEST(WorkspaceFile, TextsAreKeptAsTheyStand) {
    WorkspaceLines lines;
    SatRecord satellite;
    satellite.SatNumber = "    5";
    satellite.Designator = "58002B  ";
    satellite.EpochText = "00179.78495062";
    satellite.MeanMotion = 10.8;
    satellite.OrbitNumber = 1;
    satellite.Name = "VANGUARD 1, \"the grapefruit\", \t \x7F \xC3\xA9 ";
    satellite.TitleLine = ",,, ";
    satellite.Surface.Mirror(1).MirrorName = "panel, left\r\nupper";
    satellite.Surface.Mirror(1).MirrorID = std::string("a\0b,", 4);
    satellite.Surface.Mirror(1).ScatterFactor = 1;
    const std::vector<SatRecord> list = {satellite};
    const Reading empty(lines.Text());
    const Reading read(WorkspaceText(empty.Head(), list, empty.workspace.Views));
    ASSERT_EQ(read.end, WorkspaceReading::Whole) << read.why;
    EXPECT_EQ(read.Satellite().SatNumber, "    5");
    EXPECT_EQ(read.Satellite().Designator, "58002B  ");
    EXPECT_EQ(read.Satellite().Name, satellite.Name);
    EXPECT_EQ(read.Satellite().TitleLine, ",,, ");
    EXPECT_EQ(read.Satellite().Surface.Mirror(1).MirrorName, "panel, left  upper") << "a line end is two blanks";
    EXPECT_EQ(read.Satellite().Surface.Mirror(1).MirrorID, satellite.Surface.Mirror(1).MirrorID);
}

TEST(WorkspaceFile, GivesBackItsCompleteParts) {
    WorkspaceLines lines;
    for (int number = 1; number <= 3; ++number)
        lines.satellites.push_back(lines.Satellite("SAT " + std::to_string(number), number));
    for (auto& view : lines.views) view = lines.View();
    const std::vector<std::string> all = lines.All();
    const std::size_t head = 47;
    const std::size_t satellite = lines.satellites[0].size();
    ASSERT_EQ(satellite, 17U + 3 + 11 + 10 + 20 * 20);
    const std::size_t view = lines.views[0].size();
    for (std::size_t length = 0; length <= all.size(); length += length < head + 20 ? 1 : 7) {
        const std::vector<std::string> part(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(length));
        const Reading read(lines.Joined(part));
        if (length == 0) {
            EXPECT_EQ(read.end, WorkspaceReading::OtherFile);
            continue;
        }
        if (length < head) {
            EXPECT_EQ(read.end, WorkspaceReading::HeadBroken) << length;
            EXPECT_EQ(read.why, "it ends too early");
            continue;
        }
        const std::size_t satellites = std::min<std::size_t>((length - head) / satellite, 3);
        const std::size_t behind = length - head - satellites * satellite;
        const std::size_t views = satellites < 3 ? 0 : behind / view;
        EXPECT_EQ(read.end, views == 10 ? WorkspaceReading::Whole : WorkspaceReading::Broken) << length;
        EXPECT_EQ(read.workspace.Satellites.size(), satellites) << length;
        for (std::size_t slot = 1; slot <= kViewCount; ++slot)
            EXPECT_EQ(read.workspace.Views[slot].Used, slot <= views) << length;
    }
}

TEST(WorkspaceFile, CountsOutOfRangeBreakIt) {
    EXPECT_EQ(WithLine(47, "3001").why, "line 47: there cannot be so many satellites");
    EXPECT_EQ(WithLine(47, "-1").end, WorkspaceReading::HeadBroken);
    EXPECT_EQ(WithLine(47, "3000").end, WorkspaceReading::Broken);
    for (const char* count : {"/-1", "/99999999999", "/", "/x", "/1e300"})
        EXPECT_EQ(WithLine(2, count).end, WorkspaceReading::HeadBroken) << count;
    EXPECT_EQ(WithLine(2, "/32767").why, "it ends too early");
}

TEST(WorkspaceFile, NumbersAreHeldToTheirRanges) {
    EXPECT_EQ(WithLine(3, "120").Head().TwilightAngle, 90);
    EXPECT_EQ(WithLine(4, "-1").Head().SoilColor, 0U);
    EXPECT_EQ(WithLine(5, "2147483647").Head().SeaColor, 0xFFFFFFU);
    EXPECT_EQ(WithLine(7, "-3").Head().UpdateCheckDays, 0);
    EXPECT_EQ(WithLine(7, "30").Head().UpdateCheckDays, 7);
    EXPECT_EQ(WithLine(30, "0").Head().ZoomFactor, 0.1);
    EXPECT_EQ(WithLine(30, "1e300").Head().ZoomFactor, 5000);
    EXPECT_EQ(WithLine(36, "99").Head().UTCOffsetHours, 24);
    EXPECT_EQ(WithLine(38, "-7").Head().MaxStarMag, -5);
    EXPECT_EQ(WithLine(43, "1000").Head().OrbitTurns, 300);
    EXPECT_EQ(WithLine(44, "31").Head().StarSizeScale, 30);
    const std::size_t satellite = 47;
    EXPECT_EQ(WithLine(satellite + 6, "1").Satellite().Eccentricity, 0.9999999) << "the largest that lines can tell";
    EXPECT_EQ(WithLine(satellite + 6, "-0.5").Satellite().Eccentricity, 0);
    EXPECT_EQ(WithLine(satellite + 17, "01").Satellite().OptionFlags, "0100000000000000");
    EXPECT_EQ(WithLine(satellite + 22, "21").Satellite().Surface.MirrorCount, 20);
    EXPECT_EQ(WithLine(satellite + 22, "-1").Satellite().Surface.MirrorCount, 0);
    EXPECT_EQ(WithLine(satellite + 23, "5").Satellite().Surface.OrientationType, 4);
    const std::size_t lastOfMirror = satellite + 41 + 11;
    EXPECT_EQ(WithLine(lastOfMirror, "0").Satellite().Surface.Mirror(1).ScatterFactor, 5) << "that of a fresh record";
    EXPECT_EQ(WithLine(lastOfMirror, "99").Satellite().Surface.Mirror(1).ScatterFactor, 50);
}

TEST(WorkspaceFile, ListNumbersAreMadeSoundInTheOrderOfTheList) {
    const auto numbersOf = [](const std::vector<int>& numbers) {
        WorkspaceLines lines;
        for (const int number : numbers) lines.satellites.push_back(lines.Satellite("SAT", number));
        const Reading read(lines.Text());
        std::vector<int> found;
        for (const SatRecord& satellite : read.workspace.Satellites) found.push_back(satellite.OrbitNumber);
        return found;
    };
    using Numbers = std::vector<int>;
    EXPECT_EQ(numbersOf({2, 3, 1}), (Numbers{2, 3, 1})) << "the working satellite stands last";
    EXPECT_EQ(numbersOf({1, 1, 2}), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbersOf({1, 2, 4}), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbersOf({0, 2, 3}), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbersOf({-1, 2, 3}), (Numbers{1, 2, 3}));
}

/// A locale in which numbers have a comma and grouped thousands.
class CommaLocale : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(WorkspaceFile, NumbersAreTheSameUnderEveryLocale) {
    const std::string text = OneOfEach().Text();
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaLocale));
    const Reading read(text);
    const std::string written = WorkspaceText(read.Head(), read.workspace.Satellites, read.workspace.Views);
    std::locale::global(before);
    EXPECT_EQ(read.Satellite().MeanMotion, 14.34242484);
    EXPECT_TRUE(written == text);
}

TEST(WorkspaceFile, WhatIsNoNumberIsWrittenAsZero) {
    const Reading read(WorkspaceLines().Text());
    WorkspaceHead head = read.Head();
    head.ViewLat = std::nan("");
    head.PanX = std::numeric_limits<double>::infinity();
    head.PanY = -0.0;
    head.ViewLon = std::numeric_limits<double>::denorm_min();
    const Reading again(WorkspaceText(head, {}, read.workspace.Views));
    ASSERT_EQ(again.end, WorkspaceReading::Whole) << again.why;
    EXPECT_EQ(again.Head().ViewLat, 0);
    EXPECT_EQ(again.Head().PanX, 0);
    EXPECT_TRUE(std::signbit(again.Head().PanY));
    EXPECT_EQ(again.Head().ViewLon, std::numeric_limits<double>::denorm_min());
}

}  // namespace
}  // namespace glintara::testing
