#include "cli/arguments.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <cmath>
#include <utility>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "orbit/location.h"
#include "orbit/satellite_table.h"

namespace glintara::cli {

namespace {

constexpr double kLowestHeight = -500;
constexpr double kHighestHeight = 10000;
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2199;

constexpr double kUnixEpochJd = 2440587.5;

constexpr std::array<std::pair<std::string_view, Format>, 3> kFormats = {
    {{"text", Format::Text}, {"csv", Format::Csv}, {"json", Format::Json}}};

std::vector<std::string_view> Split(std::string_view text, char mark) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t at = text.find(mark);
        parts.push_back(text.substr(0, at));
        if (at == std::string_view::npos) return parts;
        text.remove_prefix(at + 1);
    }
}

[[noreturn]] void FailSite(std::string_view text, const std::string& why) {
    throw Failure(kBadUsage, "--site \"" + ShownName(text) + "\": " + why);
}

double NumberIn(std::string_view site, std::string_view part, const std::string& what, double low, double high) {
    const std::optional<double> value = StrictNumber(part);
    if (!value || *value < low || *value > high)
        FailSite(site, "the " + what + " is a number from " + PlainNumberText(low) + " to " + PlainNumberText(high));
    return *value;
}

[[noreturn]] void FailInstant(std::string_view text) {
    throw Failure(kBadUsage, "\"" + ShownName(text) +
                                 "\" is no instant; write for example 2018-01-20, 2018-01-20T05:30 or "
                                 "2018-01-20T05:30:12.5Z (UTC, years 1900 to 2199)");
}

/// Reads `text` digit by digit.
class Reader {
  public:
    explicit Reader(std::string_view text) : whole_(text), rest_(text) {}

    bool Done() const { return rest_.empty(); }

    bool Take(char c) {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    void Expect(char c) {
        if (!Take(c)) FailInstant(whole_);
    }

    int Digits(int count) {
        int value = 0;
        for (int i = 0; i < count; ++i) {
            if (rest_.empty() || !IsDigit(rest_.front())) FailInstant(whole_);
            value = 10 * value + (rest_.front() - '0');
            rest_.remove_prefix(1);
        }
        return value;
    }

    /// The digits behind a mark, as a fraction.
    double Fraction() {
        double value = 0;
        double weight = 0.1;
        while (!rest_.empty() && IsDigit(rest_.front())) {
            value += weight * (rest_.front() - '0');
            weight /= 10;
            rest_.remove_prefix(1);
        }
        return value;
    }

  private:
    std::string_view whole_;
    std::string_view rest_;
};

}  // namespace

Geodetic ParseSite(std::string_view text) {
    const std::vector<std::string_view> parts = Split(text, ',');
    if (parts.size() != 2 && parts.size() != 3)
        FailSite(text, "write LATITUDE,LONGITUDE or LATITUDE,LONGITUDE,HEIGHT, for example 45.07,7.69,240");
    Geodetic site;
    site.lat = NumberIn(text, parts[0], "latitude in degrees", -90, 90) * kDegToRad;
    site.lon = NumberIn(text, parts[1], "longitude in degrees", -180, 360) * kDegToRad;
    site.height = kDefaultSiteHeight;
    if (parts.size() == 3) site.height = NumberIn(text, parts[2], "height in metres", kLowestHeight, kHighestHeight);
    return site;
}

double ParseInstant(std::string_view text) {
    Reader reader(text);
    CalendarFields fields;
    fields.year = reader.Digits(4);
    reader.Expect('-');
    fields.month = reader.Digits(2);
    reader.Expect('-');
    fields.day = reader.Digits(2);
    if (reader.Take('T') || reader.Take(' ')) {
        fields.hour = reader.Digits(2);
        reader.Expect(':');
        fields.minute = reader.Digits(2);
        if (reader.Take(':')) {
            fields.second = reader.Digits(2);
            if (reader.Take('.')) fields.second += reader.Fraction();
        }
        reader.Take('Z');
    }
    const double jd = DateToJD(fields);
    const bool inRange = fields.year >= kFirstYear && fields.year <= kLastYear && fields.month >= 1 &&
                         fields.month <= 12 && fields.day >= 1 && fields.hour < 24 && fields.minute < 60 &&
                         fields.second < 60;
    // A day that the month does not have comes back as one of the next month.
    constexpr double kHalfSecond = 0.5 / kSecondsPerDay;
    if (!reader.Done() || !inRange || JDToDate(std::floor(jd - 0.5) + 0.5 + kHalfSecond).day != fields.day)
        FailInstant(text);
    return jd;
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

Format ParseFormat(std::string_view text) {
    for (const auto& [name, format] : kFormats)
        if (LowerCase(text) == name) return format;
    throw Failure(kBadUsage, "--format \"" + ShownName(text) + "\": choose text, csv or json");
}

double ParseNumber(const std::string& name, std::string_view text) {
    if (const std::optional<double> value = StrictNumber(text)) return *value;
    throw Failure(kBadUsage, name + " \"" + ShownName(text) + "\": not a number");
}

double InstantOf(const std::optional<std::string>& text) { return text ? ParseInstant(*text) : Now(); }

double Now() {
    const std::chrono::duration<double> seconds = std::chrono::system_clock::now().time_since_epoch();
    return kUnixEpochJd + seconds.count() / kSecondsPerDay;
}

}  // namespace glintara::cli
