#include "core/date_entry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <vector>

#include "core/zone_text.h"
#include "engine/astro/number_text.h"

namespace glintara::date_entry {

namespace {

constexpr int kMonths = 12;
constexpr int kDaysOfWeek = 7;
constexpr int kHours = 24;
constexpr int kSixty = 60;

/// Fewer digits are the end of a year, not a year.
constexpr std::size_t kLeastYearDigits = 3;

constexpr double kFirstYear = std::numeric_limits<std::int32_t>::min();
constexpr double kLastYear = std::numeric_limits<std::int32_t>::max();

constexpr std::string_view kBlanks = " \t\r\n";

constexpr auto kNoDate = "A date is day, month and year, such as 20/01/2018.";
constexpr auto kNoTime = "A time is hours, minutes and seconds, such as 17:42:30.";

constexpr std::array<const char*, kMonths> kMonthNames{"January",   "February", "March",    "April",
                                                       "May",       "June",     "July",     "August",
                                                       "September", "October",  "November", "December"};

Reading Problem(std::string words) { return {{}, std::move(words)}; }

bool IsDigits(std::string_view text) { return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit); }

/// The parts of `text` between characters of `marks`. Blanks beside another mark belong to it.
std::vector<std::string_view> Parts(std::string_view text, std::string_view marks) {
    std::vector<std::string_view> parts;
    text = TrimmedText(text, kBlanks);
    for (;;) {
        const std::size_t end = text.find_first_of(marks);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text = TrimmedText(text.substr(end), kBlanks);
        if (marks.find(text.front()) != std::string_view::npos) text = TrimmedText(text.substr(1), kBlanks);
    }
}

int LengthOfMonth(double year, int month) {
    constexpr int kFebruary = 2;
    const bool century = std::fmod(year, 100) == 0 && std::fmod(year, 400) != 0;
    return month == kFebruary && century ? 28 : DaysInMonth(year, month);
}

/// The year of a text of digits with or without a sign.
std::optional<double> YearIn(std::string_view text) {
    const bool sign = !text.empty() && (text.front() == '-' || text.front() == '+');
    const std::string_view digits = sign ? text.substr(1) : text;
    if (!IsDigits(digits)) return std::nullopt;
    const double size = StrictNumber(digits).value_or(std::numeric_limits<double>::infinity());
    return text.front() == '-' ? 0 - size : size;
}

/// A date of three texts.
Reading DateOf(std::string_view day, std::string_view month, std::string_view year) {
    const std::optional<double> number = YearIn(year);
    if (!IsDigits(day) || !IsDigits(month) || !number) return Problem(kNoDate);
    if (year.size() < kLeastYearDigits) return Problem("Write the year in full, such as 2018, or 0018.");
    if (!(*number >= kFirstYear && *number <= kLastYear)) return Problem("The clock does not reach that year.");
    Reading reading{{*number, LeadingNumber(month), LeadingNumber(day), 0, 0, 0}, ""};
    const CalendarFields& date = reading.fields;
    if (!(date.month >= 1 && date.month <= kMonths))
        return Problem("There is no month " + PlainNumberText(date.month) + ".");
    const int length = LengthOfMonth(date.year, static_cast<int>(date.month));
    if (!(date.day >= 1 && date.day <= length))
        return Problem(std::string(kMonthNames[static_cast<std::size_t>(date.month - 1)]) + " " +
                       PlainNumberText(date.year) + " has " + std::to_string(length) + " days.");
    return reading;
}

/// Day of the week, 0 for Monday: the day whose noon begins Julian date 0 is one.
int DayOfWeek(double year, int month, int day) {
    const double noon = DateToJD({year, static_cast<double>(month), static_cast<double>(day), 12, 0, 0});
    const int rest = static_cast<int>(std::fmod(noon, kDaysOfWeek));
    return rest < 0 ? rest + kDaysOfWeek : rest;
}

CalendarFields DateInBox(const DateEntryControls& form) {
    const Reading typed = ReadDate(form.TDate.Text.Get());
    if (typed.IsGood()) return typed.fields;
    return {static_cast<double>(form.CalendarYear), static_cast<double>(form.CalendarMonth), 1, 0, 0, 0};
}

/// Whether the box has the date of the calendar's day `day`.
bool IsTyped(const DateEntryControls& form, int day) {
    const Reading typed = ReadDate(form.TDate.Text.Get());
    return typed.IsGood() && typed.fields.year == form.CalendarYear && typed.fields.month == form.CalendarMonth &&
           typed.fields.day == day;
}

/// The day of the month in a cell of the calendar, 1 and more; below 1, or beyond the month, the cell is blank.
int DayOfCell(const DateEntryControls& form, std::size_t cell) {
    return static_cast<int>(cell) + 1 - DayOfWeek(form.CalendarYear, form.CalendarMonth, 1);
}

void ShowCalendar(DateEntryControls& form) {
    const Reading typed = ReadDate(form.TDate.Text.Get());
    if (typed.IsGood()) {
        form.CalendarYear = static_cast<std::int32_t>(typed.fields.year);
        form.CalendarMonth = static_cast<int>(typed.fields.month);
    }
    form.LMonth.Caption = std::string(kMonthNames[static_cast<std::size_t>(form.CalendarMonth - 1)]) + " " +
                          std::to_string(form.CalendarYear);
    const int length = LengthOfMonth(form.CalendarYear, form.CalendarMonth);
    for (std::size_t cell = 0; cell < form.Days.size(); ++cell) {
        CheckBox& box = form.Days[cell];
        const int day = DayOfCell(form, cell);
        const bool isThere = day >= 1 && day <= length;
        box.Enabled = isThere;
        box.Caption = isThere ? std::to_string(day) : std::string();
        box.ToolTip = isThere ? WriteDate({static_cast<double>(form.CalendarYear),
                                           static_cast<double>(form.CalendarMonth), static_cast<double>(day), 0, 0, 0})
                              : std::string();
        box.Value = isThere && IsTyped(form, day);
    }
}

void ShowZone(Application& app, const SimulatedTime& time) {
    DateEntryControls& form = app.DateEntry;
    CalendarFields fields = DateInBox(form);
    const Reading typed = ReadTime(form.TTime.Text.Get());
    if (typed.IsGood()) {
        fields.hour = typed.fields.hour;
        fields.minute = typed.fields.minute;
    }
    const int minutes = time.ShownOffsetMinutes(time.UtcOfShown(fields));
    form.LZone.Caption = (app.Main.CLocalTime.Value ? "Local time, UTC" : "UTC") + ZoneText(minutes);
}

/// Whether the clock goes on from an instant that is jumped to, as the end of a sentence.
std::string RunWords(const MainControls& main) {
    return main.CRealTime.Value ? "the clock runs on from there." : "the clock stands still there.";
}

void BoxChanged(Application& app, const SimulatedTime& time) {
    app.DateEntry.LProblem.Caption = std::string();
    ShowCalendar(app.DateEntry);
    ShowZone(app, time);
}

void ConnectDays(DateEntryControls& form) {
    for (std::size_t cell = 0; cell < form.Days.size(); ++cell) {
        CheckBox& box = form.Days[cell];
        box.Value.SetHandler([&form, &box, cell] {
            const int day = DayOfCell(form, cell);
            if (box.Value == IsTyped(form, day)) return;
            if (box.Value)
                form.TDate.Text =
                    WriteDate({static_cast<double>(form.CalendarYear), static_cast<double>(form.CalendarMonth),
                               static_cast<double>(day), 0, 0, 0});
            else
                box.Value = true;  // the day that is chosen stays so when it is pressed again
        });
    }
}

}  // namespace

Reading ReadDate(std::string_view text) {
    text = TrimmedText(text, kBlanks);
    // A "-" in front is the sign of the year.
    const std::string_view behind = text.substr(std::min<std::size_t>(1, text.size()));
    if (behind.find('-') != std::string_view::npos && text.find_first_of("/. ") == std::string_view::npos) {
        const std::vector<std::string_view> parts = Parts(behind, "-");
        if (parts.size() != 3) return Problem(kNoDate);
        const std::string_view first = text.substr(0, 1 + parts[0].size());
        const bool isYear = first.size() >= kLeastYearDigits || parts[2].size() < kLeastYearDigits;
        return isYear ? DateOf(parts[2], parts[1], first) : DateOf(first, parts[1], parts[2]);
    }
    const std::vector<std::string_view> parts = Parts(text, "/. ");
    return parts.size() == 3 ? DateOf(parts[0], parts[1], parts[2]) : Problem(kNoDate);
}

Reading ReadTime(std::string_view text) {
    const std::vector<std::string_view> parts = Parts(text, ": ");
    if (parts.size() > 3) return Problem(kNoTime);
    std::array<double, 3> numbers{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        std::string part(parts[i]);
        std::replace(part.begin(), part.end(), ',', '.');
        const bool isSecond = i == 2 && !part.empty() && IsDigit(part.front());
        const std::optional<double> number = IsDigits(part) || isSecond ? StrictNumber(part) : std::nullopt;
        if (!number) return Problem(kNoTime);
        numbers[i] = *number;
    }
    if (!(numbers[0] < kHours)) return Problem("There is no hour " + PlainNumberText(numbers[0]) + ".");
    if (!(numbers[1] < kSixty)) return Problem("There is no minute " + PlainNumberText(numbers[1]) + ".");
    if (!(numbers[2] < kSixty)) return Problem("There is no second " + PlainNumberText(numbers[2]) + ".");
    return {{0, 0, 0, numbers[0], numbers[1], numbers[2]}, ""};
}

std::string WriteDate(const CalendarFields& date) { return DateText(date.year, date.month, date.day); }

void Open(Application& app, const SimulatedTime& time) {
    DateEntryControls& form = app.DateEntry;
    if (form.Visible) return;
    const CalendarFields shown = time.ShownFields();
    form.TDate.Text = WriteDate(shown);
    form.TTime.Text = TimeText(shown.hour, shown.minute, std::floor(shown.second));
    BoxChanged(app, time);
    form.LRun.Caption = "Then " + RunWords(app.Main);
    form.Visible = true;
}

void StepDays(Application& app, int days) {
    CalendarFields date = DateInBox(app.DateEntry);
    date.day += days;
    const int length = LengthOfMonth(date.year, static_cast<int>(date.month));
    if (date.day < 1) {
        date.month -= 1;
        if (date.month < 1) {
            date.month = kMonths;
            date.year -= 1;
        }
        date.day += LengthOfMonth(date.year, static_cast<int>(date.month));
    } else if (date.day > length) {
        date.day -= length;
        date.month += 1;
        if (date.month > kMonths) {
            date.month = 1;
            date.year += 1;
        }
    }
    if (date.year >= kFirstYear && date.year <= kLastYear) app.DateEntry.TDate.Text = WriteDate(date);
}

void StepMonths(Application& app, int months) {
    CalendarFields date = DateInBox(app.DateEntry);
    const double count = date.year * kMonths + date.month - 1 + months;
    date.year = std::floor(count / kMonths);
    date.month = count - date.year * kMonths + 1;
    date.day = std::min(date.day, static_cast<double>(LengthOfMonth(date.year, static_cast<int>(date.month))));
    if (date.year >= kFirstYear && date.year <= kLastYear) app.DateEntry.TDate.Text = WriteDate(date);
}

void COk_Click(Application& app, SimulatedTime& time) {
    DateEntryControls& form = app.DateEntry;
    const Reading date = ReadDate(form.TDate.Text.Get());
    const Reading clock = ReadTime(form.TTime.Text.Get());
    if (!date.IsGood() || !clock.IsGood()) {
        form.LProblem.Caption = date.IsGood() ? clock.problem : date.problem;
        return;
    }
    const CalendarFields shown{date.fields.year,  date.fields.month,   date.fields.day,
                               clock.fields.hour, clock.fields.minute, clock.fields.second};
    if (!time.JumpTo(time.UtcOfShown(shown))) {
        form.LProblem.Caption = std::string("The clock does not reach that instant.");
        return;
    }
    form.Visible = false;
    app.Main.LCommandOutput.Caption = WriteDate(shown) + " " + TimeText(shown.hour, shown.minute, shown.second) +
                                      " UTC" + ZoneText(time.ShownOffsetMinutes(app.Data.SimFields())) + ": " +
                                      RunWords(app.Main);
}

void Connect(Application& app, SimulatedTime& time) {
    DateEntryControls& form = app.DateEntry;
    for (TextBox* box : {&form.TDate, &form.TTime}) box->Text.SetHandler([&app, &time] { BoxChanged(app, time); });
    form.CPrevMonth.SetClickHandler([&app] { StepMonths(app, -1); });
    form.CNextMonth.SetClickHandler([&app] { StepMonths(app, 1); });
    form.CPrevYear.SetClickHandler([&app] { StepMonths(app, -kMonths); });
    form.CNextYear.SetClickHandler([&app] { StepMonths(app, kMonths); });
    form.COk.SetClickHandler([&app, &time] { COk_Click(app, time); });
    form.CCancel.SetClickHandler([&form] { form.Visible = false; });
    ConnectDays(form);
    ShowCalendar(form);
}

}  // namespace glintara::date_entry
