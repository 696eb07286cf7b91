#include "orbit/satellite_motion.h"

#include "engine/astro/kepler.h"

namespace glintara {

namespace {

/// The ellipse of the displayed instant and the mean anomaly on it.
struct EllipseNow {
    KeplerElements elements;
    double meanAnomaly = 0;
};

EllipseNow EllipseOf(const CommonData& data, OrbitModel model, const SatRecord& satellite) {
    const double days = SatelliteTimeSinceEpoch(data, satellite);
    EllipseNow now;
    now.elements = KeplerElementsOf(satellite);
    if (model == OrbitModel::SGP1) {
        double t = days;
        SGP1(now.elements, now.elements, t);
    }
    now.meanAnomaly = MeanAnomalyAfter(now.elements, days);
    return now;
}

WorldMotion OnEllipse(const CommonData& data, const KeplerElements& elements, double trueAnomaly) {
    const Vector3 position = KeplerToWorld(data, elements, trueAnomaly);
    const double distance = Length(position);
    if (!(distance > 0 && distance <= kFarthestPlace)) return {{}, {}, kNoPlace};
    return {position, KeplerDirectionToWorld(data, elements, trueAnomaly), 0};
}

WorldMotion MotionBySGP1(const CommonData& data, const SatRecord& satellite) {
    const EllipseNow now = EllipseOf(data, OrbitModel::SGP1, satellite);
    const KeplerElements& ellipse = now.elements;
    const OrbitPolar polar = OrbitPolarAt(ellipse.MeanRadiusA, ellipse.Eccentricity, now.meanAnomaly, kKeplerTolerance);
    return OnEllipse(data, ellipse, polar.trueAnomaly);
}

WorldMotion MotionBySGP4(const CommonData& data, EngineBlock& block) {
    return PropagateSatellite(data, EarthRotation::Displayed, block, data.SimTime);
}

}  // namespace

OrbitModel OrbitModelOf(const MainControls& main) { return main.CSGP4.Value ? OrbitModel::SGP4 : OrbitModel::SGP1; }

WorldMotion MotionNow(const Application& app, const SatRecord& satellite) {
    if (OrbitModelOf(app.Main) == OrbitModel::SGP1) return MotionBySGP1(app.Data, satellite);
    EngineBlock block = satellite.EngineBlock;
    return MotionBySGP4(app.Data, block);
}

WorldMotion MoveToNow(const Application& app, SatRecord& satellite) {
    if (OrbitModelOf(app.Main) == OrbitModel::SGP1) return MotionBySGP1(app.Data, satellite);
    return MotionBySGP4(app.Data, satellite.EngineBlock);
}

SatellitePath::SatellitePath(const Application& app, const SatRecord& satellite)
    : data_(app.Data), model_(OrbitModelOf(app.Main)), block_(satellite.EngineBlock) {
    const EllipseNow now = EllipseOf(data_, model_, satellite);
    ellipse_ = now.elements;
    meanAnomaly_ = now.meanAnomaly;
}

WorldMotion SatellitePath::At(double days, double trueAnomaly) {
    if (model_ == OrbitModel::SGP1) return OnEllipse(data_, ellipse_, trueAnomaly);
    return PropagateSatellite(data_, EarthRotation::Displayed, block_, data_.SimTime + days);
}

}  // namespace glintara
