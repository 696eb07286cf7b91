#include "orbit/iod_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/astro/trigonometry.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

// A number that was read from a line comes back a little above or below its digits; the guards keep the cut from taking
// the last of them. Without them a line loses a digit each time it is read and written.
constexpr double kCutGuard = 1e-9;  // in the unit of the last digit
constexpr double kLogGuard = 1e-12;

constexpr double kThousandthsPerSecond = 1000;
constexpr double kThousandthsPerMinute = 1000;
constexpr double kThousandthsPerHour = 60 * kThousandthsPerMinute;
constexpr double kPiInThousandths = 12 * kThousandthsPerHour;
constexpr double kPartsPerDegree = 10000;
constexpr double kPiInParts = 180 * kPartsPerDegree;

/// From here on an accuracy, in seconds or degrees, says that it is not known.
constexpr double kUnknownAccuracy = 90;
constexpr std::string_view kUnknownDigits = "99";
constexpr int kExponentOfOne = 8;
constexpr int kLargestExponent = 9;

constexpr char kAngleForm = '3';
constexpr char kEquinox = '5';

constexpr double kLatestLeapSecond = 61;

double FloorLog10(double value) { return std::floor(std::log10(value) + kLogGuard); }

/// 10 to the power of a whole `exponent`, exactly divided where that is negative.
double TimesPowerOfTen(double value, double exponent) {
    return exponent < 0 ? value / std::pow(10, -exponent) : value * std::pow(10, exponent);
}

/// The last `width` characters of the number, zeros put ahead of it.
std::string Digits(double number, std::size_t width) {
    const std::string text = std::string(width, '0') + PlainNumberText(number);
    return text.substr(text.size() - width);
}

/// M and X of an accuracy in seconds or degrees.
std::string AccuracyText(double value) {
    if (!(value >= 0 && value < kUnknownAccuracy)) return std::string(kUnknownDigits);
    if (value == 0) return "00";
    const double power = FloorLog10(value);
    const double mantissa = std::clamp(std::floor(TimesPowerOfTen(value, -power) + kCutGuard), 1.0, 9.0);
    const double exponent = std::clamp(power + kExponentOfOne, 0.0, static_cast<double>(kLargestExponent));
    return Digits(mantissa, 1) + Digits(exponent, 1);
}

std::string DateAndTimeText(const IODPoint& point) {
    double thousandths = std::floor(point.Second * kThousandthsPerSecond + kCutGuard);
    // The guard makes no minute of 60 seconds: those belong to leap seconds alone.
    if (point.Second < 60) thousandths = std::min(thousandths, 60 * kThousandthsPerSecond - 1);
    return Digits(point.Year, 4) + Digits(point.Month, 2) + Digits(point.Day, 2) + Digits(point.Hour, 2) +
           Digits(point.Minute, 2) + Digits(thousandths, 5);
}

std::string RightAscensionText(double ra) {
    if (ra < 0) ra += kTwoPi;
    if (ra < 0 || ra > kTwoPi) ra = WrapTwoPi(ra);
    const double all = ra / kPi * kPiInThousandths;
    const double hours = std::floor((all + kCutGuard) / kThousandthsPerHour);
    const double inHour = all - hours * kThousandthsPerHour;
    const double minutes = std::floor((inHour + kCutGuard) / kThousandthsPerMinute);
    const double thousandths = std::floor(inHour - minutes * kThousandthsPerMinute + 0.5);
    return Digits(hours == 24 ? 0 : hours, 2) + Digits(minutes, 2) + Digits(thousandths, 3);
}

std::string DeclinationText(double dec) {
    const double all = std::fabs(dec) / kPi * kPiInParts;
    const double degrees = std::floor((all + kCutGuard) / kPartsPerDegree);
    const double parts = std::floor(all - degrees * kPartsPerDegree + 0.5);
    return (std::signbit(dec) ? "-" : "+") + Digits(degrees, 2) + Digits(parts, 4);
}

// Reading.

/// Columns `first` to `last` of a line, counted from 1.
struct Columns {
    std::size_t first;
    std::size_t last;
};

constexpr Columns kObjectNumber{1, 5};
constexpr Columns kLaunchYear{7, 8};
constexpr Columns kLaunchNumber{10, 12};
constexpr Columns kSuffix{13, 15};
constexpr Columns kStation{17, 20};
constexpr Columns kCondition{22, 22};
constexpr Columns kYear{24, 27};
constexpr Columns kMonth{28, 29};
constexpr Columns kDay{30, 31};
constexpr Columns kHour{32, 33};
constexpr Columns kMinute{34, 35};
constexpr Columns kSecond{36, 40};
constexpr Columns kTimeAccuracy{42, 43};
constexpr Columns kForm{45, 45};
constexpr Columns kEpoch{46, 46};
constexpr Columns kRightAscension{48, 54};
constexpr Columns kSign{55, 55};
constexpr Columns kDeclination{56, 61};
constexpr Columns kPlaceAccuracy{63, 64};

constexpr std::array<std::size_t, 10> kBlankColumns{6, 9, 16, 21, 23, 41, 44, 47, 62, 65};

std::string ColumnsText(Columns columns) {
    if (columns.first == columns.last) return "column " + std::to_string(columns.first);
    return "columns " + std::to_string(columns.first) + " to " + std::to_string(columns.last);
}

/// Takes a line apart. With the first fault all that follows reads 0.
class LineReader {
  public:
    explicit LineReader(std::string_view line) : line_(line) {}

    IODPoint Read() {
        IODPoint point;
        CheckLayout();
        if (Failed()) return point;
        ReadObject(point);
        ReadInstant(point);
        ReadPlace(point);
        return point;
    }

    bool Failed() const { return !fault_.empty(); }
    const std::string& Fault() const { return fault_; }

  private:
    std::string_view In(Columns columns) const {
        return line_.substr(columns.first - 1, columns.last - columns.first + 1);
    }
    char At(Columns column) const { return line_[column.first - 1]; }

    void Fail(std::string fault) {
        if (fault_.empty()) fault_ = std::move(fault);
    }

    void FailAt(std::string_view what, Columns columns, std::string_view must) {
        Fail("the " + std::string(what) + " in " + ColumnsText(columns) + " must be " + std::string(must));
    }

    void CheckLayout() {
        if (line_.size() < kIODLineLength)
            return Fail("it has " + std::to_string(line_.size()) + " columns, not " + std::to_string(kIODLineLength));
        for (const char c : line_)
            if (c < ' ' || c > '~') return Fail("it holds signs other than plain letters, digits and blanks");
        for (const std::size_t column : kBlankColumns)
            if (column <= line_.size() && line_[column - 1] != ' ')
                return Fail("column " + std::to_string(column) + " must be blank");
        if (At(kForm) != kAngleForm)
            return FailAt("angle format", kForm, "3: right ascension and declination as HHMMmmm+DDdddd");
        if (At(kEpoch) != kEquinox) return FailAt("equinox", kEpoch, "5: J2000");
    }

    /// A number with blanks around it; blank is 0.
    double Number(std::string_view what, Columns columns) {
        const std::string_view text = TrimmedText(In(columns));
        if (!std::all_of(text.begin(), text.end(), IsDigit)) FailAt(what, columns, "a number");
        return LeadingNumber(text);
    }

    /// A number whose digits all stand, from `least` to `most`.
    double Filled(std::string_view what, Columns columns, double least, double most) {
        const std::string_view text = In(columns);
        const double value = LeadingNumber(text);
        if (!std::all_of(text.begin(), text.end(), IsDigit) || value < least || value > most)
            FailAt(what, columns, PlainNumberText(least) + " to " + PlainNumberText(most));
        return value;
    }

    /// The digits of the columns at their places. The first `needed` must stand, the others may be missing from the
    /// right.
    std::string Places(std::string_view what, Columns columns, std::size_t needed) {
        std::string text(In(columns));
        const auto blanks = std::find_if_not(text.begin(), text.end(), IsDigit);
        if (blanks - text.begin() < static_cast<std::ptrdiff_t>(needed) ||
            !std::all_of(blanks, text.end(), [](char c) { return c == ' '; }))
            FailAt(what, columns, "digits");
        std::fill(blanks, text.end(), '0');
        return text;
    }

    /// Seconds or degrees of M and X.
    double Accuracy(std::string_view what, Columns columns) {
        const std::string_view text = In(columns);
        if (text == "  ") return kUnknownAccuracy;
        if (!IsDigit(text[0]) || !IsDigit(text[1])) {
            FailAt(what, columns, "two digits");
            return 0;
        }
        return TimesPowerOfTen(text[0] - '0', text[1] - '0' - kExponentOfOne);
    }

    void ReadObject(IODPoint& point) {
        const std::string_view number = TrimmedText(In(kObjectNumber));
        const double value = SatelliteNumberValue(number);
        const bool isPlain = std::all_of(number.begin(), number.end(), IsDigit);
        if (!isPlain && SatelliteNumberText(value) != number) FailAt("object number", kObjectNumber, "a number");
        point.ObjectNumber = static_cast<std::int32_t>(value);
        point.LaunchYear = static_cast<std::int16_t>(Number("launch year", kLaunchYear));
        point.LaunchNumber = static_cast<std::int16_t>(Number("launch number", kLaunchNumber));
        std::copy_n(In(kSuffix).begin(), point.LaunchSuffix.size(), point.LaunchSuffix.begin());
        point.StationCode = static_cast<std::int32_t>(Number("station", kStation));
        point.Condition = At(kCondition);
    }

    void ReadInstant(IODPoint& point) {
        point.Year = static_cast<std::int32_t>(Filled("year", kYear, 0, 9999));
        point.Month = static_cast<std::int32_t>(Filled("month", kMonth, 1, 12));
        point.Day = static_cast<std::int32_t>(Filled("day", kDay, 1, DaysInMonth(point.Year, point.Month)));
        point.Hour = static_cast<std::int32_t>(Filled("hour", kHour, 0, 23));
        point.Minute = static_cast<std::int32_t>(Filled("minute", kMinute, 0, 59));
        point.Second = LeadingNumber(Places("second", kSecond, 0)) / kThousandthsPerSecond;
        if (point.Second >= kLatestLeapSecond) FailAt("second", kSecond, "less than 61");
        point.TimeAccuracy = Accuracy("accuracy of the time", kTimeAccuracy);
    }

    void ReadPlace(IODPoint& point) {
        const std::string ra = Places("right ascension", kRightAscension, 2);
        const double hours = LeadingNumber(ra.substr(0, 2));
        const double minutes = LeadingNumber(ra.substr(2, 2));
        if (hours > 23 || minutes > 59) FailAt("right ascension", kRightAscension, "less than 24 hours");
        const double thousandths = hours * kThousandthsPerHour + LeadingNumber(ra.substr(2));
        point.RightAscension = thousandths * kPi / kPiInThousandths;

        if (At(kSign) != '+' && At(kSign) != '-') FailAt("sign of the declination", kSign, "+ or -");
        const double parts = LeadingNumber(Places("declination", kDeclination, 2));
        if (parts > kPiInParts / 2) FailAt("declination", kDeclination, "90 degrees or less");
        point.Declination = std::copysign(parts * kPi / kPiInParts, At(kSign) == '-' ? -1.0 : 1.0);
        point.PositionAccuracy = Accuracy("accuracy of the place", kPlaceAccuracy) * kDegToRad;
    }

    const std::string_view line_;
    std::string fault_;
};

}  // namespace

double RoundSignificant(double value, double scale) {
    if (value == 0 || scale == 0 || !std::isfinite(value) || !std::isfinite(scale)) return value;
    const double places = std::floor(-std::log10(std::fabs(value)) - std::log10(std::fabs(scale)) + 1 + kLogGuard);
    return TimesPowerOfTen(std::floor(TimesPowerOfTen(value, places) + 0.5), -places);
}

std::string IODPointToText(const IODPoint& point) {
    constexpr double kMillis = 1000;
    const double timeAccuracy = RoundSignificant(point.TimeAccuracy * kMillis, 1) / kMillis;
    const bool timeKnown = point.TimeAccuracy < kUnknownAccuracy;
    return SatelliteNumberText(point.ObjectNumber) + " " + Digits(point.LaunchYear, 2) + " " +
           Digits(point.LaunchNumber, 3) + std::string(point.LaunchSuffix.begin(), point.LaunchSuffix.end()) + " " +
           Digits(point.StationCode, 4) + " " + point.Condition + " " + DateAndTimeText(point) + " " +
           (timeKnown ? AccuracyText(timeAccuracy) : std::string(kUnknownDigits)) + " " + kAngleForm + kEquinox + " " +
           RightAscensionText(point.RightAscension) + DeclinationText(point.Declination) + " " +
           AccuracyText(point.PositionAccuracy / kDegToRad);
}

std::string IODLineFault(std::string_view line) {
    LineReader reader(line);
    reader.Read();
    return reader.Fault();
}

bool IODTextToPoint(std::string_view line, IODPoint& point) {
    LineReader reader(line);
    const IODPoint read = reader.Read();
    if (reader.Failed()) return false;
    point = read;
    return true;
}

}  // namespace glintara
