#include "orbit/satellite_info.h"

#include <cmath>
#include <cstddef>

#include "engine/astro/angle_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "orbit/propagation.h"
#include "orbit/satellite_motion.h"
#include "orbit/satellite_table.h"

namespace glintara::satellite_info {

namespace {

constexpr double kThousand = 1000;
constexpr int kAngleDecimals = 3;

Lines NotAvailable() {
    return {"",         "X: n.a.",  "Y: n.a.",   "Z: n.a.",   "D: n.a.",  "vX: n.a.", "vY: n.a.",
            "vZ: n.a.", "vW: n.a.", "Dec: n.a.", "RA:  n.a.", "El: n.a.", "Az: n.a.", ""};
}

std::string TitleOf(const CommonData& data) {
    if (data.SatCount == 0) return "No satellite in the list";
    const SatRecord& satellite = data.Satellite(data.WorkingSat());
    return "Satellite #" + std::to_string(satellite.OrbitNumber) + " - " + ShownName(satellite.Name);
}

/// What the engine has left in the block of the working satellite.
struct LastPlace {
    Vector3 position;  // inertial, kilometres
    Vector3 velocity;  // inertial, kilometres per second
    Vector3 world;     // world position, `SiteRadius`

    bool Exists() const { return IsFinite(position) && position != Vector3{} && IsFinite(velocity) && IsFinite(world); }
};

LastPlace LastPlaceOf(const CommonData& data) {
    if (data.SatCount == 0) return {};
    const EngineBlock& block = data.Satellite(data.WorkingSat()).EngineBlock;
    return {{block.InertialPosition[0], block.InertialPosition[1], block.InertialPosition[2]},
            {block.InertialVelocity[0], block.InertialVelocity[1], block.InertialVelocity[2]},
            {block.WorldPosition[0], block.WorldPosition[1], block.WorldPosition[2]}};
}

std::string Rounded(double value) { return PlainNumberText(std::nearbyint(value * kThousand) / kThousand); }

std::string Kilometres(const char* name, double value) { return name + Rounded(value) + " km"; }

std::string Speed(const char* name, double value) { return name + Rounded(value) + " km/s"; }

std::string Degrees(const char* name, double radians) {
    return name + CutNumberText(radians / kPi * 180, kAngleDecimals) + "\u00B0";
}

bool IsOfNumber(char c) { return IsDigit(c) || c == '-' || c == '.'; }

}  // namespace

Lines LinesOf(const Application& app) {
    const CommonData& data = app.Data;
    Lines lines = NotAvailable();
    lines[0] = TitleOf(data);
    const LastPlace place = LastPlaceOf(data);
    if (OrbitModelOf(app.Main) != OrbitModel::SGP4 || !place.Exists()) return lines;
    const SkyPlace sky = SkyPlaceOf(data, place.world);
    lines[1] = Kilometres("X: ", place.position.x);
    lines[2] = Kilometres("Y: ", place.position.y);
    lines[3] = Kilometres("Z: ", place.position.z);
    lines[4] = Kilometres("D: ", Length(place.position));
    lines[5] = Speed("vX: ", place.velocity.x);
    lines[6] = Speed("vY: ", place.velocity.y);
    lines[7] = Speed("vZ: ", place.velocity.z);
    lines[8] = Speed("vW: ", Length(place.velocity));
    lines[9] = "Dec: " + DegreesToText(sky.direction.lat);
    lines[10] = "RA: " + HoursToText(sky.rightAscension);
    lines[11] = Degrees("El: ", sky.horizon.altitude);
    lines[12] = Degrees("Az: ", sky.horizon.azimuth);
    return lines;
}

std::string NoteOf(const Application& app) {
    if (app.Data.SatCount == 0) return "Add element sets: the last one is shown here.";
    if (OrbitModelOf(app.Main) != OrbitModel::SGP4) return "SGP1 gives no numbers: choose SGP4/SDP4.";
    if (!LastPlaceOf(app.Data).Exists()) return "The elements have no place for this instant.";
    return "X, Y, Z on the equator and equinox of date; the angles from your place.";
}

LineParts PartsOf(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return {{}, line, {}};
    LineParts parts{line.substr(0, colon + 1), TrimmedText(line.substr(colon + 1)), {}};
    std::size_t end = 0;
    while (end < parts.value.size() && IsOfNumber(parts.value[end])) ++end;
    if (end == 0 || end == parts.value.size() || parts.value[end] != ' ') return parts;
    parts.unit = parts.value.substr(end + 1);
    parts.value = parts.value.substr(0, end);
    return parts;
}

std::string TextOf(const SatPositionControls& form) {
    std::string text;
    for (const Label& line : form.LInfo)
        if (!line.Caption.Get().empty()) text += line.Caption.Get() + "\n";
    return text;
}

void RefreshInfo(Application& app) {
    const Lines lines = LinesOf(app);
    for (std::size_t i = 0; i < lines.size(); ++i) app.SatPosition.LInfo[i].Caption = lines[i];
    app.SatPosition.LNote.Caption = NoteOf(app);
}

void Connect(Application& app) {
    app.SatPosition.CClose.SetClickHandler([&app] { app.SatPosition.Visible = false; });
}

}  // namespace glintara::satellite_info
