#include "orbit/mean_elements.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <unordered_map>

#include "engine/astro/element_fields.h"
#include "engine/astro/number_text.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

using enum MessageKey;

constexpr std::array<std::string_view, kMessageKeys> kKeyTexts = {
    "OBJECT_NAME",     "OBJECT_ID",           "CENTER_NAME",  "TIME_SYSTEM",    "MEAN_ELEMENT_THEORY", "EPOCH",
    "MEAN_MOTION",     "ECCENTRICITY",        "INCLINATION",  "RA_OF_ASC_NODE", "ARG_OF_PERICENTER",   "MEAN_ANOMALY",
    "EPHEMERIS_TYPE",  "CLASSIFICATION_TYPE", "NORAD_CAT_ID", "ELEMENT_SET_NO", "REV_AT_EPOCH",        "BSTAR",
    "MEAN_MOTION_DOT", "MEAN_MOTION_DDOT"};
static_assert(static_cast<std::size_t>(MeanMotionDDot) + 1 == kMessageKeys);

constexpr std::string_view kBlanks = " \t\r\n";

// The longest number in fixed notation is 1.8e308.
constexpr std::size_t kLongestNumber = 350;

std::string FixedDigits(double value, int decimals) {
    std::array<char, kLongestNumber> buffer;
    const auto done =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
    return {buffer.data(), done.ptr};
}

std::string RightAligned(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string ZeroPadded(std::int64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

bool HoldsOnlyZeros(std::string_view digits) { return digits.find_first_not_of("0.") == std::string_view::npos; }

// Sign column, a point and eight digits. The few values that reach 1 have fewer digits behind the point.
std::optional<std::string> DerivativeColumns(double value) {
    constexpr std::size_t kWidth = 9;
    for (int decimals = 8; decimals > 0; --decimals) {
        std::string digits = FixedDigits(std::abs(value), decimals);
        if (digits.starts_with("0.")) digits.erase(0, 1);
        if (digits.size() > kWidth) continue;
        return (value < 0 && !HoldsOnlyZeros(digits) ? '-' : ' ') + digits;
    }
    return std::nullopt;
}

// Sign column, five digits behind an implied point, sign and digit of the power of ten.
std::optional<std::string> ScaledColumns(double value) {
    constexpr int kDigits = 5;
    constexpr int kLargestPower = 9;
    const std::string kZero = " 00000-0";

    std::array<char, 32> buffer;
    const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                                    std::chars_format::scientific, kDigits - 1);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(done.ptr - buffer.data()));
    const std::size_t mark = text.find('e');
    std::string digits = text[0] + std::string(text.substr(2, mark - 2));
    // The point stands before the first digit here, not behind it.
    int power = static_cast<int>(LeadingNumber(text.substr(mark + 1))) + 1;
    if (power > kLargestPower) return std::nullopt;
    if (power < -kLargestPower) {
        power = -kLargestPower;
        const std::string fixed = FixedDigits(std::abs(value), kLargestPower + kDigits);
        digits = fixed.substr(fixed.size() - kDigits);
    }
    if (HoldsOnlyZeros(digits)) return kZero;
    return (value < 0 ? '-' : ' ') + digits + (power < 0 ? '-' : '+') + std::to_string(std::abs(power));
}

std::string AngleColumns(double degrees) {
    constexpr std::size_t kWidth = 8;
    std::string text = FixedDigits(degrees < 0 ? degrees + 360 : std::abs(degrees), 4);
    if (text == "360.0000") text = "0.0000";
    return RightAligned(text, kWidth);
}

std::string EccentricityColumns(double eccentricity) {
    const std::string text = FixedDigits(std::abs(eccentricity), 7);
    return text.starts_with("0.") ? text.substr(2) : "9999999";  // the nearest below 1
}

// Reads the digits of dates and times off the front of a text.
class EpochCursor {
  public:
    explicit EpochCursor(std::string_view text) : rest_(text) {}

    std::string_view Rest() const { return rest_; }

    bool Take(char c) {
        if (!rest_.starts_with(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::optional<int> TakeNumber(std::size_t digits, int least, int most) {
        if (rest_.size() < digits ||
            !std::all_of(rest_.begin(), rest_.begin() + static_cast<std::ptrdiff_t>(digits), IsDigit))
            return std::nullopt;
        int number = 0;
        for (const char c : rest_.substr(0, digits)) number = number * 10 + (c - '0');
        rest_.remove_prefix(digits);
        if (number < least || number > most) return std::nullopt;
        return number;
    }

    // The digits of a fraction as billionths; what is finer is cut.
    std::int64_t TakeBillionths() {
        std::int64_t billionths = 0;
        std::int64_t unit = 100'000'000;
        while (!rest_.empty() && IsDigit(rest_.front())) {
            billionths += unit * (rest_.front() - '0');
            unit /= 10;
            rest_.remove_prefix(1);
        }
        return billionths;
    }

  private:
    std::string_view rest_;
};

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysOfYear(int year) { return IsLeapYear(year) ? 366 : 365; }

// The day of the year of a date, "MM-DD" or already "DDD".
std::optional<int> TakeDayOfYear(EpochCursor& cursor, int year) {
    if (cursor.Rest().size() < 3 || IsDigit(cursor.Rest()[2])) return cursor.TakeNumber(3, 1, DaysOfYear(year));
    constexpr std::array<int, 12> kMonthDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const std::optional<int> month = cursor.TakeNumber(2, 1, 12);
    if (!month || !cursor.Take('-')) return std::nullopt;
    const auto before = static_cast<std::size_t>(*month - 1);
    const int leapDay = IsLeapYear(year) ? 1 : 0;
    std::optional<int> day = cursor.TakeNumber(2, 1, kMonthDays[before] + (*month == 2 ? leapDay : 0));
    if (!day) return std::nullopt;
    for (std::size_t i = 0; i < before; ++i) *day += kMonthDays[i];
    return *day + (*month > 2 ? leapDay : 0);
}

struct EpochParts {
    int year = 0;
    int day = 0;                         // of the year
    std::int64_t hundredMillionths = 0;  // of the day
};

// Whole numbers all the way: eight digits of a day are 864 microseconds, which no double should get near half of.
std::optional<EpochParts> ReadEpoch(std::string_view text) {
    EpochCursor cursor(TrimmedText(text, kBlanks));
    const std::optional<int> year = cursor.TakeNumber(4, 1, 9999);
    if (!year || !cursor.Take('-')) return std::nullopt;
    const std::optional<int> day = TakeDayOfYear(cursor, *year);
    if (!day || !(cursor.Take('T') || cursor.Take(' '))) return std::nullopt;
    const std::optional<int> hour = cursor.TakeNumber(2, 0, 23);
    if (!hour || !cursor.Take(':')) return std::nullopt;
    const std::optional<int> minute = cursor.TakeNumber(2, 0, 59);
    if (!minute || !cursor.Take(':')) return std::nullopt;
    const std::optional<int> second = cursor.TakeNumber(2, 0, 60);  // 60 in a leap second
    if (!second) return std::nullopt;
    const std::int64_t billionths = cursor.Take('.') ? cursor.TakeBillionths() : 0;
    cursor.Take('Z');
    if (!cursor.Rest().empty()) return std::nullopt;

    constexpr std::int64_t kBillionthsPerSecond = 1'000'000'000;
    constexpr std::int64_t kBillionthsPerUnit = 864'000;
    constexpr std::int64_t kUnitsPerDay = 100'000'000;
    const std::int64_t ofDay = ((*hour * 60 + *minute) * 60 + *second) * kBillionthsPerSecond + billionths;
    EpochParts parts{*year, *day, (ofDay + kBillionthsPerUnit / 2) / kBillionthsPerUnit};
    if (parts.hundredMillionths >= kUnitsPerDay) {
        parts.hundredMillionths -= kUnitsPerDay;
        ++parts.day;
    }
    if (parts.day > DaysOfYear(parts.year)) {
        parts.day = 1;
        ++parts.year;
    }
    return parts;
}

std::string EpochColumns(const EpochParts& epoch) {
    return ZeroPadded(epoch.year % 100, 2) + ZeroPadded(epoch.day, 3) + "." + ZeroPadded(epoch.hundredMillionths, 8);
}

bool IsCapital(char c) { return c >= 'A' && c <= 'Z'; }

// "1998-067A" becomes "98067A"; what is no such designator, nothing.
std::string DesignatorColumns(std::string_view text) {
    constexpr std::size_t kWidth = 8;
    constexpr std::size_t kNumberDigits = 5;
    constexpr std::size_t kMostLetters = 3;
    text = TrimmedText(text, kBlanks);
    const bool longYear = text.size() > 4 && text[4] == '-' && IsDigit(text[0]) && IsDigit(text[1]);
    std::string columns(text);
    if (longYear) columns = std::string(text.substr(2, 2)) + std::string(text.substr(5));
    const std::size_t letters = columns.size() - std::min(columns.size(), kNumberDigits);
    const auto firstLetter = columns.begin() + static_cast<std::ptrdiff_t>(columns.size() - letters);
    const bool fits = letters >= 1 && letters <= kMostLetters && std::all_of(columns.begin(), firstLetter, IsDigit) &&
                      std::all_of(firstLetter, columns.end(), IsCapital);
    if (!fits) columns.clear();
    columns.resize(kWidth, ' ');
    return columns;
}

// The last digits of a counter that runs on; 0 for what is none.
std::string CounterColumns(std::string_view text, std::size_t width, double period) {
    const double count = StrictNumber(TrimmedText(text, kBlanks)).value_or(0);
    const bool whole = count >= 0 && std::floor(count) == count;
    return RightAligned(PlainNumberText(whole ? std::fmod(count, period) : 0), width);
}

char ClassificationColumn(std::string_view text) {
    text = TrimmedText(text, kBlanks);
    return text.size() == 1 && IsCapital(text[0]) ? text[0] : 'U';
}

// A name of one line.
std::string NameLine(const MessageRecord& record, std::string_view number) {
    std::string name;
    for (const char c : TrimmedText(record.Value(ObjectName), kBlanks)) {
        const bool control = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
        name += control ? ' ' : c;
    }
    if (TrimmedText(name).empty()) name = TrimmedText(record.Value(ObjectId), kBlanks);
    if (ShownName(name) != name || name.empty()) name = "OBJECT " + std::string(number);
    // Without the number of its line the name would be taken for line 1, or lose its beginning.
    const bool ambiguous = name.starts_with("1 ") || name.starts_with("0 ");
    return ambiguous ? "0 " + name : name;
}

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), text) != words.end();
}

// Reads the values of one record; the first that cannot be used is told.
class RecordReader {
  public:
    explicit RecordReader(const MessageRecord& record) : record_(record) {}

    const std::string& Reason() const { return reason_; }
    bool NumberTooHigh() const { return numberTooHigh_; }

    std::optional<ElementLines> Read() {
        if (!record_.fault.empty()) Refuse(record_.fault);
        const std::string number = NumberColumns();
        RequireTheory();
        const std::string epoch = ReadEpochColumns();
        const double meanMotion = Required(MeanMotion);
        const double eccentricity = Required(Eccentricity);
        const double inclination = Required(Inclination);
        const double node = Required(RaOfAscNode);
        const double perigee = Required(ArgOfPericenter);
        const double anomaly = Required(MeanAnomaly);
        const double bstar = Required(BStar);
        const double dot = Optional(MeanMotionDot);
        const double ddot = Optional(MeanMotionDDot);

        const std::string meanMotionText = FixedDigits(meanMotion, 8);
        if (!(meanMotion > 0) || HoldsOnlyZeros(meanMotionText) || meanMotionText.size() > kMeanMotionWidth)
            RefuseValue(MeanMotion, "is not above 0 and below 100");
        if (!(eccentricity >= 0 && eccentricity < 1)) RefuseValue(Eccentricity, "is not from 0 to below 1");
        if (!(inclination >= 0 && inclination <= 180)) RefuseValue(Inclination, "is not from 0 to 180 degrees");
        for (const auto& [key, angle] :
             {std::pair(RaOfAscNode, node), {ArgOfPericenter, perigee}, {MeanAnomaly, anomaly}})
            if (!(std::abs(angle) <= 360)) RefuseValue(key, "is not from 0 to 360 degrees");
        const std::optional<std::string> dotText = DerivativeColumns(dot);
        const std::optional<std::string> ddotText = ScaledColumns(ddot);
        const std::optional<std::string> bstarText = ScaledColumns(bstar);
        if (!dotText) RefuseValue(MeanMotionDot, "is too large");
        if (!ddotText) RefuseValue(MeanMotionDDot, "is too large");
        if (!bstarText) RefuseValue(BStar, "is too large");
        if (!reason_.empty()) return std::nullopt;

        ElementLines lines;
        lines.name = NameLine(record_, number);
        lines.line1 = "1 " + number + ClassificationColumn(record_.Value(ClassificationType)) + " " +
                      DesignatorColumns(record_.Value(ObjectId)) + " " + epoch + " " + *dotText + " " + *ddotText +
                      " " + *bstarText + " " + ephemerisType_ + " " +
                      CounterColumns(record_.Value(ElementSetNo), 4, 1e4);
        lines.line2 = "2 " + number + " " + AngleColumns(inclination) + " " + AngleColumns(node) + " " +
                      EccentricityColumns(eccentricity) + " " + AngleColumns(perigee) + " " + AngleColumns(anomaly) +
                      " " + RightAligned(meanMotionText, kMeanMotionWidth) +
                      CounterColumns(record_.Value(RevAtEpoch), 5, 1e5);
        lines.line1 += ElementLineChecksum(lines.line1);
        lines.line2 += ElementLineChecksum(lines.line2);
        if (!KeepsEpoch(lines)) return std::nullopt;
        return lines;
    }

  private:
    static constexpr std::size_t kMeanMotionWidth = 11;

    void Refuse(std::string reason) {
        if (reason_.empty()) reason_ = std::move(reason);
    }

    void RefuseValue(MessageKey key, std::string_view what) {
        Refuse(std::string(MessageKeyText(key)) + " " + std::string(what));
    }

    double Optional(MessageKey key) {
        const std::string_view text = TrimmedText(record_.Value(key), kBlanks);
        if (text.empty()) return 0;
        const std::optional<double> number = StrictNumber(text);
        if (!number) RefuseValue(key, "is no number");
        return number.value_or(0);
    }

    double Required(MessageKey key) {
        if (TrimmedText(record_.Value(key), kBlanks).empty()) RefuseValue(key, "is missing");
        return Optional(key);
    }

    std::string NumberColumns() {
        const std::string_view text = TrimmedText(record_.Value(NoradCatId), kBlanks);
        // Some tables bear the five characters of the lines.
        if (const double value = SatelliteNumberValue(text); value > 99999 && SatelliteNumberText(value) == text)
            return std::string(text);
        const double number = Required(NoradCatId);
        if (!(number >= 0) || std::floor(number) != number) RefuseValue(NoradCatId, "is no whole number");
        if (number <= kLargestSatelliteNumber) return SatelliteNumberText(std::max(number, 0.0));
        numberTooHigh_ = reason_.empty();
        RefuseValue(NoradCatId, "is above 339999");
        return {};
    }

    // Elements of another theory would be propagated to a wrong place.
    void RequireTheory() {
        const std::string_view theory = TrimmedText(record_.Value(MeanElementTheory), kBlanks);
        if (!IsOneOf(theory, {"", "SGP4", "SGP/SGP4", "SGP4/SDP4", "SDP4"}))
            RefuseValue(MeanElementTheory, "is not SGP4");
        const std::string_view system = TrimmedText(record_.Value(TimeSystem), kBlanks);
        if (!IsOneOf(system, {"", "UTC"})) RefuseValue(TimeSystem, "is not UTC");
        const std::string_view center = TrimmedText(record_.Value(CenterName), kBlanks);
        if (!IsOneOf(center, {"", "EARTH", "Earth"})) RefuseValue(CenterName, "is not EARTH");
        const double type = Optional(EphemerisType);
        if (!IsOneOf(PlainNumberText(type), {"0", "1", "2", "3"})) RefuseValue(EphemerisType, "is not that of SGP4");
        ephemerisType_ = PlainNumberText(type);
    }

    std::string ReadEpochColumns() {
        if (TrimmedText(record_.Value(Epoch), kBlanks).empty()) {
            RefuseValue(Epoch, "is missing");
            return {};
        }
        const std::optional<EpochParts> epoch = ReadEpoch(record_.Value(Epoch));
        if (!epoch) {
            RefuseValue(Epoch, "is no date and time");
            return {};
        }
        epochYear_ = epoch->year;
        return EpochColumns(*epoch);
    }

    // The year has two digits there; whose century they are of is for the reader of lines to say.
    bool KeepsEpoch(const ElementLines& lines) {
        ElementLine1 read;
        const ElementFault fault = ReadElementLine1(lines.line1, read);
        if (fault != ElementFault::None || read.epochYear != epochYear_)
            RefuseValue(Epoch, "is not of the years 1951 to 2050");
        return reason_.empty();
    }

    const MessageRecord& record_;
    std::string reason_;
    bool numberTooHigh_ = false;
    std::string ephemerisType_;
    int epochYear_ = 0;
};

}  // namespace

std::string_view MessageKeyText(MessageKey key) { return kKeyTexts[static_cast<std::size_t>(key)]; }

std::optional<MessageKey> FindMessageKey(std::string_view text) {
    static const std::unordered_map<std::string_view, MessageKey> keys = [] {
        std::unordered_map<std::string_view, MessageKey> map;
        for (std::size_t i = 0; i < kMessageKeys; ++i) map.emplace(kKeyTexts[i], static_cast<MessageKey>(i));
        return map;
    }();
    const auto found = keys.find(text);
    return found == keys.end() ? std::nullopt : std::optional(found->second);
}

void MessageRecord::Set(MessageKey key, std::string_view value) {
    values[static_cast<std::size_t>(key)] = value;
    ++known;
}

void MessageRecord::Clear() {
    for (std::string& value : values) value.clear();
    known = 0;
    fault.clear();
}

std::optional<ElementLines> LinesOfRecord(const MessageRecord& record, RecordFault& fault) {
    RecordReader reader(record);
    std::optional<ElementLines> lines = reader.Read();
    if (!lines) fault = {reader.NumberTooHigh(), reader.Reason()};
    return lines;
}

char ElementLineChecksum(std::string_view line) {
    int sum = 0;
    for (const char c : line.substr(0, kElementLineLength - 1)) {
        if (IsDigit(c)) sum += c - '0';
        if (c == '-') ++sum;
    }
    return static_cast<char>('0' + sum % 10);
}

}  // namespace glintara
