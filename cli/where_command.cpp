#include "cli/where_command.h"

#include <array>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "cli/session.h"
#include "cli/texts.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/geometry/reflection.h"
#include "flare/attitude.h"
#include "orbit/propagation.h"
#include "orbit/satellite_table.h"
#include "orbit/sun_and_moon.h"

namespace glintara::cli {

namespace {

/// Result of a propagation below the ground.
constexpr int kDecayed = 6;

/// Where a satellite is at the instant.
struct Place {
    Vector3 inertial;  // kilometres
    Vector3 velocity;  // kilometres per second, inertial
    Geodetic below;    // radians, metres
    HorizonAngles sky;
    double range = 0;  // kilometres
};

struct Whereabouts {
    const SatRecord* satellite = nullptr;
    std::optional<Place> place;  // nothing when the propagation fails: the numbers that it leaves mean nothing
    std::string light;
};

std::string LightOf(const CommonData& data, const WorldMotion& motion, double jd) {
    if (motion.result == kDecayed) return "decayed";
    if (motion.result != 0) return "no orbit";
    return InShadow(motion.position, Normalized(SunPlace(data, jd))) ? "shadow" : "lit";
}

Whereabouts WhereIs(const CommonData& data, const SatRecord& satellite, double jd) {
    EngineBlock block = satellite.EngineBlock;
    const WorldMotion motion = PropagateSatellite(data, EarthRotation::GivenJd, block, jd);
    Whereabouts where{&satellite, std::nullopt, LightOf(data, motion, jd)};
    if (motion.result != 0) return where;
    const double radius = data.Site.SiteRadius;
    Place& place = where.place.emplace();
    place.inertial = {block.InertialPosition[0], block.InertialPosition[1], block.InertialPosition[2]};
    place.velocity = {block.InertialVelocity[0], block.InertialVelocity[1], block.InertialVelocity[2]};
    place.below = EcefToGeodetic(radius * motion.position);
    place.below.lon = FoldLongitude(place.below.lon);
    place.sky = WorldToHorizon(data.Site, motion.position);
    place.range = Length(motion.position - ObserverOnUnitSphere(data.Site)) * radius / 1000;
    return where;
}

double Degrees(double radians) { return radians / kDegToRad; }

/// A number of a place, by the name that tables for other programs give it.
struct Quantity {
    const char* name;
    double (*of)(const Place& place);
};

constexpr std::array<Quantity, 6> kAngles = {{
    {"azimuth_deg", [](const Place& place) { return Degrees(place.sky.azimuth); }},
    {"elevation_deg", [](const Place& place) { return Degrees(place.sky.altitude); }},
    {"range_km", [](const Place& place) { return place.range; }},
    {"latitude_deg", [](const Place& place) { return Degrees(place.below.lat); }},
    {"longitude_deg", [](const Place& place) { return Degrees(place.below.lon); }},
    {"height_km", [](const Place& place) { return place.below.height / 1000; }},
}};

constexpr std::array<Quantity, 6> kVectors = {{
    {"x_km", [](const Place& place) { return place.inertial.x; }},
    {"y_km", [](const Place& place) { return place.inertial.y; }},
    {"z_km", [](const Place& place) { return place.inertial.z; }},
    {"vx_km_s", [](const Place& place) { return place.velocity.x; }},
    {"vy_km_s", [](const Place& place) { return place.velocity.y; }},
    {"vz_km_s", [](const Place& place) { return place.velocity.z; }},
}};

std::string NumberOf(const Whereabouts& where) { return std::string(TrimmedText(where.satellite->SatNumber)); }

std::string NameOf(const Whereabouts& where) { return ShownName(where.satellite->Name); }

void PrintText(const std::vector<Whereabouts>& all, double jd, std::ostream& out) {
    using enum Table::Align;
    constexpr std::array<int, kAngles.size()> kDecimals = {2, 2, 1, 3, 3, 1};
    constexpr std::size_t kPositionValues = 3;
    out << ShortInstant(jd) << " UTC\n\n";
    Table table;
    table.AddColumn({"Number", ""}, Left);
    table.AddColumn({"Satellite", ""}, Left);
    table.AddColumn({"Azimuth", "deg"}, Right);
    table.AddColumn({"Elevation", "deg"}, Right);
    table.AddColumn({"Range", "km"}, Right);
    table.AddColumn({"Below", "lat"}, Right);
    table.AddColumn({"", "lon"}, Right);
    table.AddColumn({"Height", "km"}, Right);
    table.AddColumn({"", ""}, Left);
    table.AddColumn({"Inertial x", "km"}, Right);
    table.AddColumn({"y", "km"}, Right);
    table.AddColumn({"z", "km"}, Right);
    for (const Whereabouts& where : all) {
        const auto cell = [&where](const Quantity& quantity, int decimals) {
            return where.place ? FixedText(quantity.of(*where.place), decimals) : "-";
        };
        std::vector<std::string> row{NumberOf(where), NameOf(where)};
        for (std::size_t i = 0; i < kAngles.size(); ++i) row.push_back(cell(kAngles[i], kDecimals[i]));
        row.push_back(where.light);
        for (std::size_t i = 0; i < kPositionValues; ++i) row.push_back(cell(kVectors[i], 1));
        table.AddRow(std::move(row));
    }
    table.Print(out);
}

void PrintCsv(const std::vector<Whereabouts>& all, double jd, std::ostream& out) {
    std::vector<std::string> heading{"utc", "number", "name"};
    for (const Quantity& quantity : kAngles) heading.emplace_back(quantity.name);
    heading.emplace_back("light");
    for (const Quantity& quantity : kVectors) heading.emplace_back(quantity.name);
    out << CsvLine(heading) << '\n';
    for (const Whereabouts& where : all) {
        const auto cell = [&where](const Quantity& quantity) {
            return where.place ? FullText(quantity.of(*where.place)) : "";
        };
        std::vector<std::string> row{IsoInstant(jd), NumberOf(where), NameOf(where)};
        for (const Quantity& quantity : kAngles) row.push_back(cell(quantity));
        row.push_back(where.light);
        for (const Quantity& quantity : kVectors) row.push_back(cell(quantity));
        out << CsvLine(row) << '\n';
    }
}

nlohmann::ordered_json WhereJson(const Whereabouts& where) {
    nlohmann::ordered_json json{{"number", NumberOf(where)}, {"name", NameOf(where)}};
    for (const Quantity& quantity : kAngles)
        json[quantity.name] = where.place ? nlohmann::ordered_json(quantity.of(*where.place)) : nullptr;
    json["light"] = where.light;
    json["inertial_position_km"] = nullptr;
    json["inertial_velocity_km_s"] = nullptr;
    if (where.place) {
        const auto [inertial, velocity] = std::pair(where.place->inertial, where.place->velocity);
        json["inertial_position_km"] = {inertial.x, inertial.y, inertial.z};
        json["inertial_velocity_km_s"] = {velocity.x, velocity.y, velocity.z};
    }
    return json;
}

void PrintJson(const std::vector<Whereabouts>& all, double jd, std::ostream& out) {
    nlohmann::ordered_json json;
    json["utc"] = IsoInstant(jd);
    json["satellites"] = nlohmann::ordered_json::array();
    for (const Whereabouts& where : all) json["satellites"].push_back(WhereJson(where));
    out << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

}  // namespace

void RunWhere(const CommonOptions& options, std::ostream& out) {
    const double jd = InstantOf(options.from);
    Session session;
    session.Prepare(options, jd);
    const CommonData& data = session.App().Data;
    std::vector<Whereabouts> all;
    for (int i = 1; i <= data.SatCount; ++i)
        if (!data.Satellite(i).IsDisabled()) all.push_back(WhereIs(data, data.Satellite(i), jd));
    switch (options.format) {
        case Format::Text:
            PrintText(all, jd, out);
            return;
        case Format::Csv:
            PrintCsv(all, jd, out);
            return;
        case Format::Json:
            PrintJson(all, jd, out);
            return;
    }
}

}  // namespace glintara::cli
