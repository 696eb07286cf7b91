#include "state/common_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "state/application.h"
#include "state/recording_services.h"

namespace glintara {
namespace {

TEST(CommonData, StartsWithAnEmptyListAndNoWorkingSatellite) {
    const CommonData data;
    EXPECT_EQ(data.SatCount, 0);
    EXPECT_EQ(data.WorkingSat(), 0);
    EXPECT_EQ(data.SatTable.size(), 3001U);
}

TEST(CommonData, TheWorkingSatelliteIsTheLastOne) {
    CommonData data;
    data.SatCount = 17;
    data.Satellite(17).Name = "LACROSSE 5";
    EXPECT_EQ(data.Satellite(data.WorkingSat()).Name, "LACROSSE 5");
    EXPECT_TRUE(data.SatTable[0].Name.empty());
}

TEST(CommonData, StartsAtTheOriginOfLatitudesAtAHeightOf150Metres) {
    const CommonData data;
    EXPECT_EQ(data.Site.SiteLat, 0);
    EXPECT_EQ(data.Site.SiteLon, 0);
    EXPECT_EQ(data.Site.SiteAlt, 150);
    EXPECT_EQ(data.Site.SiteRadius, 6378135);
    EXPECT_EQ(data.StationCode, "0000");
    EXPECT_EQ(data.StationNumber, 0);
    EXPECT_EQ(data.RealTimeStep, 5);
    EXPECT_EQ(data.TwilightAngle, 0);
    EXPECT_EQ(data.UTCOffsetHours, 0);
    EXPECT_EQ(data.UpdateCheckDays, 3);
}

TEST(CommonData, TheSunStartsInEarlyDecember) {
    // 16 h 23 m 27 s is 245.8625 degrees, -21 degrees 35' 11" is -21.5864 degrees: the Sun of about the 29th of
    // November.
    const CommonData data;
    const double degrees = 180 / std::acos(-1.0);
    EXPECT_NEAR(data.SunRA * degrees, 245.8625, 1e-9);
    EXPECT_NEAR(data.SunDec * degrees, -21.586389, 1e-6);
}

TEST(CommonData, AllOffsetsAreClearedAtOnce) {
    CommonData data;
    data.TimeOffset.YearOffset = -3;
    data.TimeOffset.MonthOffset = 14;
    data.TimeOffset.MilliOffset = 100;
    EXPECT_NE(data.TimeOffset, TimeOffset{});
    data.TimeOffset = {};
    EXPECT_EQ(data.TimeOffset.YearOffset, 0);
    EXPECT_EQ(data.TimeOffset.MonthOffset, 0);
    EXPECT_EQ(data.TimeOffset.MilliOffset, 0);
    EXPECT_EQ(data.TimeOffset, TimeOffset{});
}

TEST(CommonData, TheDisplayedInstantReadsAsCalendarFields) {
    CommonData data;
    data.SimYear = 2018;
    data.SimMonth = 1;
    data.SimDay = 20;
    data.SimHour = 17;
    data.SimMinute = 45;
    data.SimSecond = 12.5;
    const CalendarFields fields = data.SimFields();
    EXPECT_EQ(fields.year, 2018);
    EXPECT_EQ(fields.month, 1);
    EXPECT_EQ(fields.day, 20);
    EXPECT_EQ(fields.hour, 17);
    EXPECT_EQ(fields.minute, 45);
    EXPECT_EQ(fields.second, 12.5);
}

TEST(SatRecord, ANewOneHasItsOrbitHiddenAndIsEnabled) {
    const SatRecord satellite;
    EXPECT_EQ(satellite.OptionFlags, "1000000000000000");
    EXPECT_EQ(satellite.OptionFlags.size(), 16U);
    EXPECT_FALSE(satellite.IsDisabled());
    EXPECT_FALSE(satellite.Selected);
    EXPECT_EQ(satellite.Surface.MirrorCount, 0);
}

TEST(SatRecord, ItIsDisabledByTheSecondSwitchAlone) {
    SatRecord satellite;
    satellite.OptionFlags = "0100000000000000";
    EXPECT_TRUE(satellite.IsDisabled());
    satellite.OptionFlags = "1";
    EXPECT_FALSE(satellite.IsDisabled());
    satellite.OptionFlags.clear();
    EXPECT_FALSE(satellite.IsDisabled());
}

TEST(SatRecord, ACopySharesNothingWithItsSource) {
    SatRecord source;
    source.Name = "IRIDIUM 96 [-]";
    source.Surface.MirrorCount = 1;
    source.Surface.Mirror(1).MirrorID = "27376_UM1";
    source.EngineBlock.Private[787] = 0x5A;
    source.EngineBlock.WorldPosition[2] = 1.125;

    SatRecord copy;
    copy = source;
    source.Name[0] = '*';
    source.Surface.Mirror(1).MirrorID[0] = '*';
    source.EngineBlock.Private[787] = 0;
    source.EngineBlock.WorldPosition[2] = 0;

    EXPECT_EQ(copy.Name, "IRIDIUM 96 [-]");
    EXPECT_EQ(copy.Surface.Mirror(1).MirrorID, "27376_UM1");
    EXPECT_EQ(copy.EngineBlock.Private[787], 0x5A);
    double height = 0;
    std::memcpy(&height, &copy.EngineBlock.WorldPosition[2], sizeof height);
    EXPECT_EQ(height, 1.125);
}

TEST(SatRecord, TheEngineBlockIsAPlainBlockOf860Bytes) {
    EXPECT_EQ(sizeof(SatRecord::EngineBlock), 860U);
    EXPECT_EQ(sizeof(SatRecord::EngineBlock.Private), 788U);
}

TEST(Application, ServicesThatNobodyReplacesDoNothing) {
    testing::RecordingBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app(boxes, events, windows);
    app.Data.SatCount = 2;
    app.EventQueue.ServeEvents();
    app.Windows.UpDateAll();
    app.Windows.UpdateGraphicsLevel2();
    app.Windows.SaveStat();
    EXPECT_EQ(app.Data.SatCount, 2);
    EXPECT_TRUE(boxes.messages.empty());
}

}  // namespace
}  // namespace glintara
