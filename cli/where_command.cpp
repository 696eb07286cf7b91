#include "cli/where_command.h"

#include <nlohmann/json.hpp>

#include "cli/session.h"
#include "cli/texts.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/geometry/reflection.h"
#include "flare/attitude.h"
#include "orbit/propagation.h"

namespace glintara::cli {

namespace {

/// Result of a propagation below the ground.
constexpr int kDecayed = 6;

/// One satellite at the instant.
struct Whereabouts {
    const SatRecord* satellite = nullptr;
    Vector3 inertial;  // kilometres
    Vector3 velocity;  // kilometres per second, inertial
    Geodetic below;    // radians, metres
    HorizonAngles sky;
    double range = 0;  // kilometres
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
    const double radius = data.Site.SiteRadius;
    Whereabouts where;
    where.satellite = &satellite;
    where.inertial = {block.InertialPosition[0], block.InertialPosition[1], block.InertialPosition[2]};
    where.velocity = {block.InertialVelocity[0], block.InertialVelocity[1], block.InertialVelocity[2]};
    where.below = EcefToGeodetic(radius * motion.position);
    where.below.lon = FoldLongitude(where.below.lon);
    where.sky = WorldToHorizon(data.Site, motion.position);
    where.range = Length(motion.position - ObserverOnUnitSphere(data.Site)) * radius / 1000;
    where.light = LightOf(data, motion, jd);
    return where;
}

double Degrees(double radians) { return radians / kDegToRad; }

std::string NumberOf(const Whereabouts& where) { return std::string(TrimmedText(where.satellite->SatNumber)); }

void PrintText(const std::vector<Whereabouts>& all, double jd, std::ostream& out) {
    using enum Table::Align;
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
        table.AddRow({NumberOf(where), where.satellite->Name, FixedText(Degrees(where.sky.azimuth), 2),
                      FixedText(Degrees(where.sky.altitude), 2), FixedText(where.range, 1),
                      FixedText(Degrees(where.below.lat), 3), FixedText(Degrees(where.below.lon), 3),
                      FixedText(where.below.height / 1000, 1), where.light, FixedText(where.inertial.x, 1),
                      FixedText(where.inertial.y, 1), FixedText(where.inertial.z, 1)});
    }
    table.Print(out);
}

void PrintCsv(const std::vector<Whereabouts>& all, double jd, std::ostream& out) {
    out << "utc,number,name,azimuth_deg,elevation_deg,range_km,latitude_deg,longitude_deg,height_km,light,"
           "x_km,y_km,z_km,vx_km_s,vy_km_s,vz_km_s\n";
    for (const Whereabouts& where : all) {
        out << CsvLine({IsoInstant(jd), NumberOf(where), where.satellite->Name, FullText(Degrees(where.sky.azimuth)),
                        FullText(Degrees(where.sky.altitude)), FullText(where.range),
                        FullText(Degrees(where.below.lat)), FullText(Degrees(where.below.lon)),
                        FullText(where.below.height / 1000), where.light, FullText(where.inertial.x),
                        FullText(where.inertial.y), FullText(where.inertial.z), FullText(where.velocity.x),
                        FullText(where.velocity.y), FullText(where.velocity.z)})
            << '\n';
    }
}

nlohmann::ordered_json WhereJson(const Whereabouts& where) {
    return {
        {"number", NumberOf(where)},
        {"name", where.satellite->Name},
        {"azimuth_deg", Degrees(where.sky.azimuth)},
        {"elevation_deg", Degrees(where.sky.altitude)},
        {"range_km", where.range},
        {"latitude_deg", Degrees(where.below.lat)},
        {"longitude_deg", Degrees(where.below.lon)},
        {"height_km", where.below.height / 1000},
        {"light", where.light},
        {"inertial_position_km", {where.inertial.x, where.inertial.y, where.inertial.z}},
        {"inertial_velocity_km_s", {where.velocity.x, where.velocity.y, where.velocity.z}},
    };
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
    const double jd = options.from.empty() ? Now() : ParseInstant(options.from);
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
