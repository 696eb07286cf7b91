#include "core/zone_text.h"

#include <cstdlib>

namespace glintara {

namespace {

constexpr int kMinutesPerHour = 60;

}  // namespace

std::string ZoneText(int minutes) {
    if (minutes == 0) return "";
    const int size = std::abs(minutes);
    const int rest = size % kMinutesPerHour;
    std::string text = (minutes < 0 ? "-" : "+") + std::to_string(size / kMinutesPerHour);
    if (rest != 0) text += (rest < 10 ? ":0" : ":") + std::to_string(rest);
    return text;
}

}  // namespace glintara
