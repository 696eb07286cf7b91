#include "flare/surface_text.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "flare/surface_models.h"

namespace glintara {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

constexpr int kAxisDecimals = 3;

/// Rounding that the way to radians and back leaves in degrees: 45.1 must not read as 45.099.
constexpr double kDegreeRounding = 1e-9;

std::string_view WithoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace

std::string AxisText(double radians) { return CutNumberText(radians / kDegToRad + kDegreeRounding, kAxisDecimals); }

std::string AddLinePar(std::string line, std::string_view value) {
    constexpr char kMark = ';';
    if (value.find(kMark) != std::string_view::npos) value = "InvalidString";
    if (!line.empty()) line += kMark;
    return line.append(WithoutLeadingBlanks(value));
}

std::string SurfaceModelText(const SatRecord& satellite, std::string_view orientation) {
    const SurfaceModel& model = satellite.Surface;
    std::vector<std::string> lines{
        "SATELLITE SURFACE MODEL",
        "---------------------------------------------------",
        "SAT ID #" + satellite.SatNumber + " (" + std::string(TrimmedText(satellite.Designator)) + ") " +
            satellite.Name,
        "",
        "ORIENTATION TYPE #" + std::to_string(model.OrientationType) + ": " + std::string(orientation),
        "ROTAX-DEC: " + AxisText(model.RotAxisDEC),
        "ROTAX-RA: " + AxisText(model.RotAxisRA),
        "NUMBER OF SURFACES: " + std::to_string(model.MirrorCount),
        "",
    };
    for (int i = 1; i <= std::min(model.MirrorCount, kMirrorCapacity); ++i) {
        const MirrorRecord& mirror = model.Mirror(i);
        std::string numbers;
        for (const double number : {mirror.Angle, mirror.Tilt, mirror.ScatterFactor})
            numbers = AddLinePar(std::move(numbers), PlainNumberText(number));
        lines.push_back(MakeMirrorIDS(model, i) + " >>> " + numbers);
    }
    std::string text;
    for (const std::string& line : lines) {
        if (!text.empty()) text += kLineEnd;
        text += line;
    }
    return text;
}

}  // namespace glintara
