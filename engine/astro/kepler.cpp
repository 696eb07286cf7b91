#include "engine/astro/kepler.h"

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

namespace {

constexpr int kMostRounds = 1000;
/// Anomalies beyond this many radians are reduced at once instead of turn by turn.
constexpr double kManyTurns = 1e4;

double WithinOneTurn(double m) {
    if (std::abs(m) > kManyTurns) m = std::fmod(m, kTwoPi);
    while (m >= kTwoPi) m -= kTwoPi;
    while (m <= -kTwoPi) m += kTwoPi;
    return m;
}

}  // namespace

double SolveKepler(double& m, double e, double tolerance) {
    m = WithinOneTurn(m);
    double last = m;
    double anomaly = m + e * std::sin(last);
    for (int round = 0; round < kMostRounds && std::abs(anomaly - last) > tolerance; ++round) {
        last = anomaly;
        anomaly = m + e * std::sin(last);
    }
    return anomaly;
}

double MeanFromEccentric(double eccentricAnomaly, double e) {
    return eccentricAnomaly - e * std::sin(eccentricAnomaly);
}

double TrueFromMean(double m, double e, double tolerance) {
    const double anomaly = SolveKepler(m, e, tolerance);
    const double cosine = std::cos(anomaly);
    const double v = ArcCos((e - cosine) / (e * cosine - 1));
    return std::sin(anomaly) < 0 ? kTwoPi - v : v;
}

double MeanFromTrue(double trueAnomaly, double e) {
    const double cosine = std::cos(trueAnomaly);
    double anomaly = ArcCos((cosine + e) / (e * cosine + 1));
    if (std::sin(trueAnomaly) < 0) anomaly = kTwoPi - anomaly;
    return MeanFromEccentric(anomaly, e);
}

double OrbitRadiusAt(double a, double e, double trueAnomaly) {
    return (1 - e * e) * a / (e * std::cos(trueAnomaly) + 1);
}

OrbitPolar OrbitPolarAt(double a, double e, double m, double tolerance) {
    const double trueAnomaly = TrueFromMean(m, e, tolerance);
    return {OrbitRadiusAt(a, e, trueAnomaly), trueAnomaly};
}

}  // namespace glintara
