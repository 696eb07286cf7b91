#include "orbit/satellite_table.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

#include "engine/astro/number_text.h"

namespace glintara {

namespace {

// The letters of Alpha-5 in order, without I and O, which look like digits. The first stands for 10.
constexpr std::string_view kAlpha5Letters = "ABCDEFGHJKLMNPQRSTUVWXYZ";
constexpr double kAlpha5FirstValue = 10;
constexpr double kAlpha5Unit = 10000;
constexpr std::size_t kSatNumberWidth = 5;

constexpr std::size_t kOrbitNumberWidth = 4;
constexpr std::size_t kShownFlags = 3;

std::optional<double> Alpha5Value(std::string_view text) {
    if (text.size() != kSatNumberWidth) return std::nullopt;
    const std::size_t letter = kAlpha5Letters.find(text.front());
    if (letter == std::string_view::npos) return std::nullopt;
    const std::string_view digits = text.substr(1);
    if (!std::all_of(digits.begin(), digits.end(), IsDigit)) return std::nullopt;
    return (kAlpha5FirstValue + static_cast<double>(letter)) * kAlpha5Unit + LeadingNumber(digits);
}

template <class Predicate>
int LastIndexOf(const CommonData& data, Predicate matches) {
    for (int index = data.SatCount; index >= 1; --index)
        if (matches(data.Satellite(index))) return index;
    return 0;
}

}  // namespace

std::string ShownName(std::string_view name) {
    constexpr char kUnknown = '?';
    // In UTF-8 the control characters of the upper half are this byte and one from 0x80 to 0x9F.
    constexpr char kUpperControl = '\xC2';
    std::string shown;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto code = static_cast<unsigned char>(name[i]);
        const bool upper = name[i] == kUpperControl && i + 1 < name.size() &&
                           static_cast<unsigned char>(name[i + 1]) >= 0x80 &&
                           static_cast<unsigned char>(name[i + 1]) <= 0x9F;
        shown += code < ' ' || code == 0x7F || upper ? kUnknown : name[i];
        if (upper) ++i;
    }
    return shown;
}

double SatelliteNumberValue(std::string_view satNumber) {
    const std::string_view text = TrimmedText(satNumber);
    return Alpha5Value(text).value_or(LeadingNumber(text));
}

std::string SatelliteNumberText(double number) {
    std::string start(kSatNumberWidth, '0');
    if (number >= kAlpha5FirstValue * kAlpha5Unit && number <= kLargestSatelliteNumber) {
        const double tenThousands = std::floor(number / kAlpha5Unit);
        start = kAlpha5Letters[static_cast<std::size_t>(tenThousands - kAlpha5FirstValue)];
        number -= tenThousands * kAlpha5Unit;
        start.append(kSatNumberWidth - 1, '0');
        const std::string digits = PlainNumberText(number);
        return start.substr(0, kSatNumberWidth - digits.size()) + digits;
    }
    const std::string text = start + PlainNumberText(number);
    return text.substr(text.size() - kSatNumberWidth);
}

int SearchOrbitNumber(const CommonData& data, int number) {
    return LastIndexOf(
        data, [number](const SatRecord& satellite) { return satellite.OrbitNumber == number; });
}

int SearchSatID(const CommonData& data, double id) {
    return LastIndexOf(
        data, [id](const SatRecord& satellite) { return SatelliteNumberValue(satellite.SatNumber) == id; });
}

std::string SatelliteListLine(const SatRecord& satellite) {
    std::string line = "[";
    for (std::size_t place = 0; place < kShownFlags; ++place) {
        const bool on = place < satellite.OptionFlags.size() && satellite.OptionFlags[place] == '1';
        line += on ? 'X' : 'O';
    }
    line += "] ";

    const std::string number = std::to_string(satellite.OrbitNumber);
    if (number.size() < kOrbitNumberWidth) line.append(kOrbitNumberWidth - number.size(), '0');
    line += number + " (" + satellite.SatNumber + ")";

    if (line.size() < kListNameColumn) line.append(kListNameColumn - line.size(), ' ');
    return line + satellite.Name;
}

void MoveToEnd(CommonData& data, int index) {
    SatRecord chosen = std::move(data.Satellite(index));
    for (int i = index; i < data.SatCount; ++i) data.Satellite(i) = std::move(data.Satellite(i + 1));
    data.Satellite(data.SatCount) = std::move(chosen);
}

void ChangeWorkingSatellite(Application& app, int orbitNumber) {
    CommonData& data = app.Data;
    const int index = SearchOrbitNumber(data, orbitNumber);
    if (index == 0) return;

    app.Windows.ChangeSatelliteSignal();
    MoveToEnd(data, index);
    app.Windows.ShowWorkingSatellite();
    app.Windows.UpdateGraphicsLevel2();
    app.Windows.RefreshData();
    app.Windows.RefreshSatPosition();
}

}  // namespace glintara
