#include "core/date_entry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/program_fixture.h"

namespace glintara {
namespace {

using date_entry::ReadDate;
using date_entry::Reading;
using date_entry::ReadTime;

void ExpectDate(std::string_view text, double year, double month, double day) {
    const Reading reading = ReadDate(text);
    EXPECT_EQ(reading.problem, "") << text;
    EXPECT_EQ(reading.fields.year, year) << text;
    EXPECT_EQ(reading.fields.month, month) << text;
    EXPECT_EQ(reading.fields.day, day) << text;
}

TEST(ReadDate, TakesTheFormsInUse) {
    for (const char* text : {"20/01/2018", "20.1.2018", "20 1 2018", " 20 / 01 / 2018 ", "2018-01-20", "20-01-2018",
                             "20. 1. 2018", "20/01/+2018"})
        ExpectDate(text, 2018, 1, 20);
    ExpectDate("29/02/2000", 2000, 2, 29);
    ExpectDate("29/02/2016", 2016, 2, 29);
    ExpectDate("31/12/1999", 1999, 12, 31);
    ExpectDate("01/01/0000", 0, 1, 1);
    ExpectDate("29/02/0000", 0, 2, 29);
    ExpectDate("01/03/-0100", -100, 3, 1);
    ExpectDate("-4712-01-01", -4712, 1, 1);
    ExpectDate("01/01/0018", 18, 1, 1);
    ExpectDate("31/12/2147483647", 2147483647, 12, 31);
}

TEST(ReadDate, TellsWhatIsNoDate) {
    const std::string form = "A date is day, month and year, such as 20/01/2018.";
    for (const char* text :
         {"", "junk", "20/01", "20/01/2018/5", "a/b/cccc", "20//2018", "-", "--", "1-2", "2e1/1/2018", "-5/01/2018"})
        EXPECT_EQ(ReadDate(text).problem, form) << text;
    EXPECT_EQ(ReadDate("20/13/2018").problem, "There is no month 13.");
    EXPECT_EQ(ReadDate("20/00/2018").problem, "There is no month 0.");
    EXPECT_EQ(ReadDate("31/04/2018").problem, "April 2018 has 30 days.");
    EXPECT_EQ(ReadDate("00/04/2018").problem, "April 2018 has 30 days.");
    EXPECT_EQ(ReadDate("29/02/2018").problem, "February 2018 has 28 days.");
    EXPECT_EQ(ReadDate("29/02/1900").problem, "February 1900 has 28 days.");
    EXPECT_EQ(ReadDate("20/01/18").problem, "Write the year in full, such as 2018, or 0018.");
    EXPECT_EQ(ReadDate("20/01/2147483648").problem, "The clock does not reach that year.");
    EXPECT_EQ(ReadDate("20/01/" + std::string(400, '9')).problem, "The clock does not reach that year.");
}

TEST(ReadTime, TakesHoursMinutesAndSeconds) {
    const auto expect = [](std::string_view text, double hour, double minute, double second) {
        const Reading reading = ReadTime(text);
        EXPECT_EQ(reading.problem, "") << text;
        EXPECT_EQ(reading.fields.hour, hour) << text;
        EXPECT_EQ(reading.fields.minute, minute) << text;
        EXPECT_EQ(reading.fields.second, second) << text;
    };
    expect("17:42:30", 17, 42, 30);
    expect(" 17 : 42 : 30 ", 17, 42, 30);
    expect("17 42 30", 17, 42, 30);
    expect("7:4", 7, 4, 0);
    expect("23", 23, 0, 0);
    expect("17:42:30.25", 17, 42, 30.25);
    expect("17:42:30,25", 17, 42, 30.25);
}

TEST(ReadTime, TellsWhatIsNoTime) {
    for (const char* text : {"", "noon", "17:42:30:1", "17.5", "-1:00:00", "17::30", "17:42:-5"})
        EXPECT_EQ(ReadTime(text).problem, "A time is hours, minutes and seconds, such as 17:42:30.") << text;
    EXPECT_EQ(ReadTime("24:00:00").problem, "There is no hour 24.");
    EXPECT_EQ(ReadTime("17:60").problem, "There is no minute 60.");
    EXPECT_EQ(ReadTime("17:42:60").problem, "There is no second 60.");
}

TEST(WriteDate, IsReadBack) {
    for (const double year : {2018.0, 18.0, 0.0, -5.0, -4712.0, 123456.0}) {
        const std::string text = date_entry::WriteDate({year, 3, 9, 0, 0, 0});
        ExpectDate(text, year, 3, 9);
    }
    EXPECT_EQ(date_entry::WriteDate({-5, 3, 9, 0, 0, 0}), "09/03/-0005");
}

struct DateEntryTest : testing::ProgramTest {
    DateEntryTest() { RunAtOnce(); }

    void OpenForm() { date_entry::Open(app, program.Time); }

    void Go(const std::string& date, const std::string& time) {
        OpenForm();
        form.TDate.Text = date;
        form.TTime.Text = time;
        form.COk.Click();
    }

    std::string Shown() const { return app.Main.LDateTime.Caption; }

    /// The cell that is set, and that no other is.
    int ChosenCell() const {
        int cell = -1;
        for (std::size_t i = 0; i < kCalendarCells; ++i) {
            if (!form.Days[i].Value) continue;
            EXPECT_EQ(cell, -1);
            cell = static_cast<int>(i);
        }
        return cell;
    }

    DateEntryControls& form = app.DateEntry;
    CommonData& data = app.Data;
};

TEST_F(DateEntryTest, OpensWithTheDisplayedInstant) {
    OpenForm();
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(form.TDate.Text.Get(), "20/01/2018");
    EXPECT_EQ(form.TTime.Text.Get(), "17:42:09");
    EXPECT_EQ(form.LZone.Caption.Get(), "UTC");
    EXPECT_EQ(form.LRun.Caption.Get(), "Then the clock runs on from there.");
    EXPECT_EQ(form.LMonth.Caption.Get(), "January 2018");
}

TEST_F(DateEntryTest, ARunningClockRunsOnFromThere) {
    Go("29/02/2020", "23:59:58");
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(Shown(), "DATE 29/02/2020 23:59:58 UTC (+)");
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "29/02/2020 23:59:58 UTC: the clock runs on from there.");
    EXPECT_TRUE(app.Main.CRealTime.Value);
    clock.Advance(3000);
    EXPECT_EQ(Shown().substr(0, 24), "DATE 01/03/2020 00:00:01");
}

TEST_F(DateEntryTest, AClockThatStandsIsExactAndStaysThere) {
    app.Main.CRealTime.Value = false;
    Go("01/01/2000", "00:00:00");
    EXPECT_EQ(Shown(), "DATE 01/01/2000 00:00:00 UTC (+)");
    EXPECT_EQ(data.SimSecond, 0);
    EXPECT_EQ(data.SimTime, 2451544.5);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "01/01/2000 00:00:00 UTC: the clock stands still there.");
    clock.Advance(5000);
    EXPECT_EQ(data.SimTime, 2451544.5);
    Go("31/12/1999", "23:59:59");
    EXPECT_EQ(Shown(), "DATE 31/12/1999 23:59:59 UTC (+)");
    EXPECT_EQ(data.SimSecond, 59);
}

TEST_F(DateEntryTest, EarlierOffsetsDoNotCount) {
    data.TimeOffset = {7, -3, 100, 50, 12345, 678, -9};
    Go("05/06/2018", "01:02:03");
    EXPECT_EQ(Shown(), "DATE 05/06/2018 01:02:03 UTC (+)");
    EXPECT_EQ(data.TimeOffset.MonthOffset, 0);
    EXPECT_EQ(data.TimeOffset.YearOffset, 0);
}

TEST_F(DateEntryTest, EveryDateIsReachedExactly) {
    for (const bool running : {true, false}) {
        app.Main.CRealTime.Value = running;
        for (const char* date :
             {"28/02/1900", "01/03/1900", "31/12/1899", "29/02/2000", "01/01/0001", "31/12/0000", "29/02/0000",
              "01/01/-4712", "15/10/1582", "04/10/1582", "28/02/2100", "01/03/2100", "31/12/9999", "17/11/123456",
              "17/11/-123456", "01/01/2000000", "29/02/5000000", "31/12/2147483647", "01/01/-2147480000"}) {
            Go(date, "12:34:56");
            const Reading typed = ReadDate(date);
            EXPECT_FALSE(form.Visible) << date << " " << form.LProblem.Caption.Get();
            EXPECT_EQ(data.SimYear, typed.fields.year) << date;
            EXPECT_EQ(data.SimMonth, typed.fields.month) << date;
            EXPECT_EQ(data.SimDay, typed.fields.day) << date;
            EXPECT_EQ(data.SimHour, 12) << date;
            EXPECT_EQ(data.SimMinute, 34) << date;
            EXPECT_EQ(std::floor(data.SimSecond), 56) << date;
            EXPECT_LT(data.SimSecond, 56.002) << date;
        }
    }
}

TEST_F(DateEntryTest, BadInputIsAnsweredAndChangesNothing) {
    const std::string before = Shown();
    Go("31/04/2018", "12:00:00");
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(form.LProblem.Caption.Get(), "April 2018 has 30 days.");
    form.TDate.Text = std::string("30/04/2018");
    EXPECT_EQ(form.LProblem.Caption.Get(), "") << "gone with the next letter";
    form.TTime.Text = std::string("25:00");
    form.COk.Click();
    EXPECT_EQ(form.LProblem.Caption.Get(), "There is no hour 25.");
    form.CCancel.Click();
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(data.TimeOffset, TimeOffset{});
    EXPECT_EQ(Shown(), before);
    OpenForm();
    EXPECT_EQ(form.TDate.Text.Get(), "20/01/2018");
}

TEST_F(DateEntryTest, AYearBeyondTheOffsetsIsToldAndNothingIsLost) {
    app.Main.CRealTime.Value = false;
    const double second = data.BaseSecond;
    Go("01/01/-2147483648", "00:00:00");
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(form.LProblem.Caption.Get(), "The clock does not reach that instant.");
    EXPECT_EQ(data.BaseSecond, second);
    EXPECT_EQ(data.TimeOffset, TimeOffset{});
}

TEST_F(DateEntryTest, LocalTimeIsReadInItsZone) {
    clock.zoneAt = [](double jd) {
        const double month = JDToDate(jd).month;
        return month >= 4 && month <= 10 ? 120 : 60;
    };
    app.Main.CLocalTime.Value = true;
    OpenForm();
    EXPECT_EQ(form.TTime.Text.Get(), "18:42:09");
    EXPECT_EQ(form.LZone.Caption.Get(), "Local time, UTC+1");
    form.TDate.Text = std::string("01/07/2018");
    EXPECT_EQ(form.LZone.Caption.Get(), "Local time, UTC+2") << "that of the date that is typed";
    form.TTime.Text = std::string("00:30:00");
    form.COk.Click();
    EXPECT_EQ(data.SimDay, 30);
    EXPECT_EQ(data.SimMonth, 6);
    EXPECT_EQ(data.SimHour, 22);
    EXPECT_EQ(Shown(), "DATE 01/07/2018 00:30:00 UTC+2 (+)");
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "01/07/2018 00:30:00 UTC+2: the clock runs on from there.");

    Go("01/01/2000", "00:00:00");
    EXPECT_EQ(data.SimYear, 1999);
    EXPECT_EQ(data.SimHour, 23);
    EXPECT_EQ(Shown(), "DATE 01/01/2000 00:00:00 UTC+1 (+)");
}

TEST_F(DateEntryTest, TheCalendarShowsTheMonthAsItLies) {
    OpenForm();
    // 1 January 2018 was a Monday.
    EXPECT_EQ(form.Days[0].Caption.Get(), "1");
    EXPECT_EQ(form.Days[30].Caption.Get(), "31");
    EXPECT_FALSE(form.Days[31].Enabled);
    EXPECT_EQ(form.Days[31].Caption.Get(), "");
    EXPECT_EQ(ChosenCell(), 19);
    // 1 February 2000 was a Tuesday, in a leap year.
    form.TDate.Text = std::string("29/02/2000");
    EXPECT_EQ(form.LMonth.Caption.Get(), "February 2000");
    EXPECT_FALSE(form.Days[0].Enabled);
    EXPECT_EQ(form.Days[1].Caption.Get(), "1");
    EXPECT_EQ(form.Days[29].Caption.Get(), "29");
    EXPECT_FALSE(form.Days[30].Enabled);
    EXPECT_EQ(ChosenCell(), 29);
    // 15 October 1582, the first day of the calendar's use, was a Friday.
    form.TDate.Text = std::string("15/10/1582");
    EXPECT_EQ(ChosenCell() % 7, 4);
    form.TDate.Text = std::string("01/01/0000");
    EXPECT_EQ(ChosenCell() % 7, 5) << "a Saturday, 400 years of 20871 weeks before that of 2000";
    form.TDate.Text = std::string("junk");
    EXPECT_EQ(ChosenCell(), -1);
    EXPECT_EQ(form.LMonth.Caption.Get(), "January 0") << "the month before";
}

TEST_F(DateEntryTest, DaysAndButtonsWriteTheDate) {
    OpenForm();
    form.Days[4].Value = true;
    EXPECT_EQ(form.TDate.Text.Get(), "05/01/2018");
    EXPECT_EQ(ChosenCell(), 4);
    form.Days[4].Value = false;
    EXPECT_EQ(ChosenCell(), 4) << "the chosen one stays chosen";
    form.TDate.Text = std::string("31/01/2018");
    form.CNextMonth.Click();
    EXPECT_EQ(form.TDate.Text.Get(), "28/02/2018");
    form.CPrevMonth.Click();
    form.CPrevMonth.Click();
    EXPECT_EQ(form.TDate.Text.Get(), "28/12/2017");
    form.CNextYear.Click();
    EXPECT_EQ(form.TDate.Text.Get(), "28/12/2018");
    form.CPrevYear.Click();
    EXPECT_EQ(form.TDate.Text.Get(), "28/12/2017");
    form.TDate.Text = std::string("29/02/2016");
    form.CNextYear.Click();
    EXPECT_EQ(form.TDate.Text.Get(), "28/02/2017");
    EXPECT_TRUE(form.Visible);
}

TEST_F(DateEntryTest, StepsCrossMonthsAndYears) {
    OpenForm();
    const auto step = [&](const char* from, int days, const char* to) {
        form.TDate.Text = std::string(from);
        date_entry::StepDays(app, days);
        EXPECT_EQ(form.TDate.Text.Get(), to);
    };
    step("31/12/1999", 1, "01/01/2000");
    step("01/01/2000", -1, "31/12/1999");
    step("28/02/2000", 1, "29/02/2000");
    step("28/02/1900", 1, "01/03/1900");
    step("01/03/2018", -1, "28/02/2018");
    step("01/01/0000", -1, "31/12/-0001");
    step("31/12/2147483647", 1, "31/12/2147483647");
    form.TDate.Text = std::string("01/01/2000");
    form.TDate.Text = std::string("junk");
    form.CNextMonth.Click();
    EXPECT_EQ(form.TDate.Text.Get(), "01/02/2000");
}

}  // namespace
}  // namespace glintara
