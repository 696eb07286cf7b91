#include "orbit/propagation.h"

#include <array>

#include "engine/astro/constants.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

WorldMotion PropagateSatellite(const CommonData& data, EarthRotation rotation, EngineBlock& block, double jd) {
    const double greenwich =
        rotation == EarthRotation::Displayed ? SiderealFromDate(data.SimFields()) : SiderealFromJD(jd);
    std::array<double, 3> p{};
    std::array<double, 3> v{};
    WorldMotion motion;
    motion.result = Satellite_SGP4(&block, jd, p.data(), v.data());
    for (std::size_t i = 0; i < 3; ++i) {
        block.InertialPosition[i] = p[i];
        block.InertialVelocity[i] = v[i];
    }
    // In two steps, as the other rotations of the program do it: they round alike then.
    const double quarter = kPi / 2 - greenwich;
    const double turn = quarter - kPi / 2;
    const double radius = data.Site.SiteRadius;
    motion.position = TurnedAboutPole({p[0] * 1000 / radius, p[1] * 1000 / radius, p[2] * 1000 / radius}, turn);
    motion.velocity = TurnedAboutPole({v[0], v[1], v[2]}, turn);
    block.WorldPosition[0] = motion.position.x;
    block.WorldPosition[1] = motion.position.y;
    block.WorldPosition[2] = motion.position.z;
    return motion;
}

WorldMotion OnAxesOfInstant(const CommonData& data, const WorldMotion& motion, double jd) {
    const double turn = -(SiderealFromJD(jd) - SiderealFromDate(data.SimFields()));
    return {TurnedAboutPole(motion.position, turn), TurnedAboutPole(motion.velocity, turn), motion.result};
}

LatLonRadius SubSatellitePoint(const Vector3& position) { return XYZToLatLon(position); }

double HeightOverSphere(const ObserverSite& site, const Vector3& position) {
    return (Length(position) - 1) * site.SiteRadius / 1000;
}

SkyPlace SkyPlaceOf(const CommonData& data, const Vector3& position) {
    SkyPlace place;
    place.direction = SatXYZToSkyLatLon(data.Site, position);
    place.horizon = WorldToHorizon(data.Site, position);
    place.rightAscension = WrapTwoPi(place.direction.lon + SiderealFromDate(data.SimFields()));
    return place;
}

}  // namespace glintara
