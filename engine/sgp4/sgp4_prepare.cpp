// What can be worked out once for an element set: Brouwer's mean motion, secular rates by the zonal harmonics, and the
// drag coefficients of the power-law atmosphere (Spacetrack Report No. 3, section 6, with the letters of that report).

#include <array>
#include <bit>
#include <cstddef>

#include "engine/sgp4/sgp4_deep_space.h"
#include "engine/sgp4/sgp4_model.h"

namespace glintara {

namespace {

using namespace sgp4;

// Periods of this many minutes or more are deep space.
constexpr double kDeepSpacePeriod = 225;

// Perigee below this height, km, has the short drag series.
constexpr double kLowPerigee = 220;

// Below this eccentricity the drag terms that divide by it are left out.
constexpr double kNearlyCircular = 1e-4;

// The density function (q0 - s)^4: q0 at 120 km, s at 78 km, unless the perigee lies low.
constexpr double kDensityTop = 120;
constexpr double kDensityBase = 78;
constexpr double kDensityLowestBase = 20;
constexpr double kDensityLowPerigee = 156;
constexpr double kDensityLowestPerigee = 98;

double Square(double x) { return x * x; }
double Cube(double x) { return x * x * x; }
double FourthPower(double x) { return Square(x * x); }

// Takes Kozai's oblateness part out of the mean motion of the set, and sets the semi-major axis that goes with what
// remains.
void SetBrouwerMeanMotion(double kozaiMeanMotion, Sgp4Record& record) {
    const double oneMinusE2 = 1 - Square(record.eccentricity);
    const double a1 = std::pow(kXke / kozaiMeanMotion, 2.0 / 3);
    const double d1 =
        0.75 * kJ2 * record.inclinationTerms.threeCosSquaredMinusOne / (std::sqrt(oneMinusE2) * oneMinusE2);
    const double delta1 = d1 / (a1 * a1);
    const double a0 = a1 * (1 - delta1 * delta1 - delta1 * (1.0 / 3 + 134 * delta1 * delta1 / 81));
    const double delta0 = d1 / (a0 * a0);
    record.meanMotion = kozaiMeanMotion / (1 + delta0);
    record.semiMajorAxis = std::pow(kXke / record.meanMotion, 2.0 / 3);
}

void SetSecularRates(Sgp4Record& record) {
    const double oneMinusE2 = 1 - Square(record.eccentricity);
    const double beta = std::sqrt(oneMinusE2);
    const double theta = record.inclinationTerms.cosine;
    const double theta2 = theta * theta;
    const double theta4 = theta2 * theta2;
    const double perP2 = 1 / Square(record.semiMajorAxis * oneMinusE2);
    const double n = record.meanMotion;

    const double byJ2 = 1.5 * kJ2 * perP2 * n;
    const double byJ2Squared = 0.5 * byJ2 * kJ2 * perP2;
    const double byJ4 = -0.46875 * kJ4 * perP2 * perP2 * n;
    record.meanAnomalyRate = n + 0.5 * byJ2 * beta * record.inclinationTerms.threeCosSquaredMinusOne +
                             0.0625 * byJ2Squared * beta * (13 - 78 * theta2 + 137 * theta4);
    record.argPerigeeRate = -0.5 * byJ2 * (1 - 5 * theta2) + 0.0625 * byJ2Squared * (7 - 114 * theta2 + 395 * theta4) +
                            byJ4 * (3 - 36 * theta2 + 49 * theta4);
    record.nodeRate = -byJ2 * theta + (0.5 * byJ2Squared * (4 - 19 * theta2) + 2 * byJ4 * (3 - 7 * theta2)) * theta;
    // The factor of C1; the drag coefficients come later.
    record.nodeDrag = -3.5 * oneMinusE2 * byJ2 * theta;
}

// Height at which the density function vanishes, km: moved down for a low perigee, which it must stay below.
double DensityBase(double perigeeHeight) {
    if (perigeeHeight >= kDensityLowPerigee) return kDensityBase;
    if (perigeeHeight < kDensityLowestPerigee) return kDensityLowestBase;
    return perigeeHeight - kDensityBase;
}

// The quantities that all drag coefficients are made of.
struct DragGeometry {
    double s;      // base of the density function, Earth radii from the centre
    double xi;     // 1/(a - s)
    double eta;    // a e xi
    double psi2;   // |1 - eta^2|
    double q4;     // (q0 - s)^4 xi^4
    double q4Psi;  // that over psi^7
    double c1;
};

DragGeometry MakeDragGeometry(const Sgp4Record& record, double bstar) {
    const double a = record.semiMajorAxis;
    const double e = record.eccentricity;
    const double perigeeHeight = (a * (1 - e) - 1) * kEarthRadius;
    const double base = DensityBase(perigeeHeight);

    DragGeometry g{};
    g.s = base / kEarthRadius + 1;
    g.xi = 1 / (a - g.s);
    g.eta = a * e * g.xi;
    g.psi2 = std::abs(1 - g.eta * g.eta);
    g.q4 = FourthPower((kDensityTop - base) / kEarthRadius) * FourthPower(g.xi);
    g.q4Psi = g.q4 / (Cube(g.psi2) * std::sqrt(g.psi2));

    const double eta2 = g.eta * g.eta;
    const double eEta = e * g.eta;
    const double c2 =
        g.q4Psi * record.meanMotion *
        (a * (1 + 1.5 * eta2 + eEta * (4 + eta2)) +
         0.375 * kJ2 * g.xi / g.psi2 * record.inclinationTerms.threeCosSquaredMinusOne * (8 + 3 * eta2 * (8 + eta2)));
    g.c1 = bstar * c2;
    return g;
}

double DragC4(const Sgp4Record& record, const DragGeometry& g) {
    const double a = record.semiMajorAxis;
    const double e = record.eccentricity;
    const double eta2 = g.eta * g.eta;
    const double eEta = e * g.eta;
    const double byShape =
        -3 * record.inclinationTerms.threeCosSquaredMinusOne * (1 - 2 * eEta + eta2 * (1.5 - 0.5 * eEta));
    const double byPerigee = 0.75 * record.inclinationTerms.oneMinusCosSquared * (2 * eta2 - eEta * (1 + eta2)) *
                             std::cos(2 * record.argPerigee);
    return 2 * record.meanMotion * g.q4Psi * a * (1 - e * e) *
           (g.eta * (2 + 0.5 * eta2) + e * (0.5 + 2 * eta2) - kJ2 * g.xi / (a * g.psi2) * (byShape + byPerigee));
}

void SetDrag(const DragGeometry& g, double bstar, Sgp4Record& record) {
    record.nodeDrag *= g.c1;
    record.axisDrag = g.c1;
    record.eccentricityDrag = bstar * DragC4(record, g);
    record.longitudeDrag = 1.5 * g.c1;
}

void SetDragSeries(const DragGeometry& g, double bstar, Sgp4Record& record) {
    const double a = record.semiMajorAxis;
    const double e = record.eccentricity;
    const double eta2 = g.eta * g.eta;
    const double eEta = e * g.eta;
    const SinCos meanAnomaly = SinCosOf(record.meanAnomaly);
    DragSeries& series = record.drag;

    if (e > kNearlyCircular) {
        const double c3 = -2 * g.q4 * g.xi * kJ3OverJ2 * record.meanMotion * record.inclinationTerms.sine / e;
        series.argPerigeeRate = bstar * c3 * std::cos(record.argPerigee);
        series.meanAnomalyFactor = -2.0 / 3 * g.q4 * bstar / eEta;
    }
    series.eta = g.eta;
    series.cubeAtEpoch = Cube(1 + g.eta * meanAnomaly.cosine);
    series.sineMeanAnomalyEpoch = meanAnomaly.sine;

    const double c5 = 2 * g.q4Psi * a * (1 - e * e) * (1 + 2.75 * (eta2 + eEta) + eEta * eta2);
    series.eccentricity = bstar * c5;

    const double c1 = g.c1;
    const double c1Squared = c1 * c1;
    const double d2 = 4 * a * g.xi * c1Squared;
    const double d3 = (17 * a + g.s) * d2 * g.xi * c1 / 3;
    const double d4 = 0.5 * d2 * g.xi * c1 / 3 * a * g.xi * (221 * a + 31 * g.s) * c1;
    series.axis2 = d2;
    series.axis3 = d3;
    series.axis4 = d4;
    series.longitude3 = d2 + 2 * c1Squared;
    series.longitude4 = 0.25 * (3 * d3 + c1 * (12 * d2 + 10 * c1Squared));
    series.longitude5 = 0.2 * (3 * d4 + 12 * c1 * d3 + 6 * d2 * d2 + 15 * c1Squared * (2 * d2 + c1Squared));
}

Sgp4Model ChooseModel(const Sgp4Record& record) {
    if (kTwoPi / record.meanMotion >= kDeepSpacePeriod) return Sgp4Model::DeepSpace;
    const double perigee = record.semiMajorAxis * (1 - record.eccentricity);
    return perigee < kLowPerigee / kEarthRadius + 1 ? Sgp4Model::NearEarthLowPerigee : Sgp4Model::NearEarth;
}

bool AllFinite(const Sgp4Record& record) {
    constexpr std::size_t kHead = offsetof(Sgp4Record, epochDay) / sizeof(double);
    const auto numbers = std::bit_cast<std::array<double, sizeof(Sgp4Record) / sizeof(double)>>(record);
    for (std::size_t i = kHead; i < numbers.size(); ++i)
        if (!std::isfinite(numbers[i])) return false;
    return true;
}

}  // namespace

bool Sgp4Prepare(const MeanElements& elements, Sgp4Record& record) {
    record = Sgp4Record{};
    record.epochDay = elements.epochDay;
    record.epochFraction = elements.epochFraction;
    record.inclination = elements.inclination;
    record.node = elements.node;
    record.eccentricity = elements.eccentricity;
    record.argPerigee = elements.argPerigee;
    record.meanAnomaly = elements.meanAnomaly;
    record.inclinationTerms = MakeInclinationTerms(SinCosOf(elements.inclination));

    SetBrouwerMeanMotion(elements.meanMotion, record);
    if (!(record.meanMotion > 0)) return false;
    record.model = ChooseModel(record);

    SetSecularRates(record);
    const DragGeometry geometry = MakeDragGeometry(record, elements.bstar);
    SetDrag(geometry, elements.bstar, record);
    if (record.model == Sgp4Model::NearEarth) SetDragSeries(geometry, elements.bstar, record);
    if (record.model == Sgp4Model::DeepSpace) PrepareDeepSpace(record);
    return AllFinite(record);
}

double MinutesSinceEpoch(const Sgp4Record& record, double jd) {
    constexpr double kMinutesPerDay = 1440;
    return ((jd - record.epochDay) - record.epochFraction) * kMinutesPerDay;
}

}  // namespace glintara
