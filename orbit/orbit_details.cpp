#include "orbit/orbit_details.h"

#include <cmath>

#include "engine/astro/angle_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "orbit/satellite_table.h"
#include "orbit/sgp1.h"
#include "orbit/sun_and_moon.h"

namespace glintara {

namespace {

/// The space station, which is told by its number when its element set has no name.
constexpr double kStationNumber = 25544;
constexpr const char* kStationName = "INTERNATIONAL SPACE STATION (ISS)";

constexpr const char* kNotAvailable = "n.a.";

constexpr double kMetresPerKilometre = 1000;
constexpr int kDecimals = 1;
constexpr int kElevationDecimals = 3;

/// Element sets give angles to four decimals. Between degrees and radians the last bits change, and a number that ends
/// in a zero would be cut to the one below it.
constexpr double kPartsOfDegree = 1e8;

std::string Cut(double value) { return std::isfinite(value) ? CutNumberText(value, kDecimals) : kNotAvailable; }

std::string CutDegrees(double radians) {
    return Cut(std::round(radians / kDegToRad * kPartsOfDegree) / kPartsOfDegree) + " deg";
}

std::string Hours(double radians) { return (std::isfinite(radians) ? HoursToText(radians) : kNotAvailable) + " hms"; }

/// Height of an apse over the sphere through the observer. `side` is -1 for the perigee and 1 for the apogee.
std::string ApsisHeight(const SatRecord& satellite, double side, double siteRadius) {
    const double metres = ((1 + side * satellite.Eccentricity) * satellite.MeanRadiusA - 1) * siteRadius;
    return Cut(metres / kMetresPerKilometre) + " km";
}

std::string NameOf(const SatRecord& satellite) {
    const std::string_view name = TrimmedText(satellite.Name);
    if (!name.empty()) return ShownName(name);
    return LeadingNumber(satellite.SatNumber) == kStationNumber ? kStationName : "";
}

}  // namespace

std::vector<std::string> OrbitDetails(const CommonData& data) {
    if (data.SatCount < 1) return {};
    const SatRecord& satellite = data.Satellite(data.WorkingSat());
    const double siteRadius = data.Site.SiteRadius;
    std::vector<std::string> lines{"ORBIT DETAILS", ""};
    lines.push_back("SATELLITE #" + std::to_string(satellite.OrbitNumber) + ": " + ShownName(satellite.SatNumber) +
                    " (" + ShownName(TrimmedText(satellite.Designator)) + ")");
    if (const std::string name = NameOf(satellite); !name.empty()) lines.push_back(name);
    lines.push_back("EPOCH: " + ShownName(satellite.EpochText) + " (" + std::to_string(satellite.ElementSetNumber) +
                    ")");
    lines.push_back("DATA AGE: " + Cut(SatelliteTimeSinceEpoch(data, satellite)) + " days");
    lines.push_back("Eccentricity: " + PlainNumberText(satellite.Eccentricity));
    lines.push_back("Perigee heigth: " + ApsisHeight(satellite, -1, siteRadius));
    lines.push_back("Apogee heigth: " + ApsisHeight(satellite, 1, siteRadius));
    lines.push_back("Period: " + Hours((1 / satellite.MeanMotion + 1 / satellite.MeanMotion) * kPi));
    lines.push_back("RA Node: " + Hours(satellite.RaanAngle));
    lines.push_back("Inclination: " + CutDegrees(satellite.Inclination));
    lines.push_back("W: " + CutDegrees(satellite.ArgPerigee));
    lines.push_back("M0: " + CutDegrees(satellite.MeanAnomaly));
    return lines;
}

AstroLines AstroDetails(const CommonData& data) {
    const double elevation = SunElevation(data) / kDegToRad;
    AstroLines lines;
    lines.Sun = {"SUN POSITION ", "DEC: " + DegreesToText(data.SunDec) + " ", "RA : " + HoursToText(data.SunRA) + " ",
                 "EL : " + CutNumberText(elevation, kElevationDecimals) + "\u00B0 "};
    lines.Moon = {"MOON POSITION", "DEC : " + DegreesToText(data.MoonTopoDec) + " ",
                  "RA  : " + HoursToText(data.MoonTopoRA) + " "};
    return lines;
}

double MoonPhase(const CommonData& data) {
    const double phase = (data.MoonRA - data.SunRA) / 2 / kPi;
    return phase < 0 ? phase + 1 : phase;
}

}  // namespace glintara
