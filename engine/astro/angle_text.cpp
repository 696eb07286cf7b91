#include "engine/astro/angle_text.h"

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

namespace {

std::string PaddedTo(std::size_t width, double whole) {
    std::string text = PlainNumberText(whole);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

}  // namespace

std::string HoursToText(double radians) {
    double x = radians / 2 / kPi * 24;
    const std::string hours = PaddedTo(2, std::floor(x));
    x = (x - std::floor(x)) * 60;
    const std::string minutes = PaddedTo(2, std::floor(x));
    x = (x - std::floor(x)) * 60;
    return hours + "h" + minutes + "'" + PaddedTo(2, std::floor(x)) + "\"";
}

std::string DegreesToText(double radians) {
    double x = radians / 2 / kPi * 360;
    std::string text = x < 0 ? "-" : "";
    text += PaddedTo(3, Truncate(std::abs(x)));
    x = std::abs((x - Truncate(x)) * 60);
    const std::string minutes = PaddedTo(2, Truncate(x));
    x = (x - Truncate(x)) * 60;
    text += "\u00B0" + minutes + "'" + PaddedTo(2, Truncate(x)) + "\"";
    return text;
}

}  // namespace glintara
