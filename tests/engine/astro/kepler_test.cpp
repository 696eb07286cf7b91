#include "engine/astro/kepler.h"

#include <gtest/gtest.h>

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/support.h"

namespace glintara {
namespace {

using test::AroundCircle;
using test::kDegree;

/// Eccentric anomaly by halving an interval: slow, and nothing to go wrong.
double EccentricByBisection(double m, double e) {
    double low = m - e - 1e-9;
    double high = m + e + 1e-9;
    for (int i = 0; i < 80; ++i) {
        const double middle = (low + high) / 2;
        (middle - e * std::sin(middle) < m ? low : high) = middle;
    }
    return (low + high) / 2;
}

/// True anomaly by the half angles.
double TrueByHalfAngles(double eccentricAnomaly, double e) {
    return 2 * std::atan2(std::sqrt(1 + e) * std::sin(eccentricAnomaly / 2),
                          std::sqrt(1 - e) * std::cos(eccentricAnomaly / 2));
}

// Meeus, Astronomical Algorithms, 2nd ed., example 30.a.
TEST(SolveKepler, GivesThePublishedAnomaly) {
    double m = 5 * kDegree;
    EXPECT_NEAR(SolveKepler(m, 0.1, 1e-12), 5.554589 * kDegree, 1e-6 * kDegree);
    EXPECT_EQ(m, 5 * kDegree);
}

TEST(SolveKepler, SolvesTheEquation) {
    test::Sampler sample(41);
    for (int i = 0; i < 2000; ++i) {
        const double e = sample.Between(0, 0.9);
        double m = sample.Between(-6, 6);
        const double wanted = EccentricByBisection(m, e);
        EXPECT_NEAR(SolveKepler(m, e, 1e-13), wanted, 2e-12) << e;
    }
}

TEST(SolveKepler, BringsTheMeanAnomalyWithinOneTurn) {
    for (const double whole : {1.0, -1.0, 7.0, -200.0, 123456.0}) {
        double m = 1.25 + whole * 2 * std::numbers::pi;
        const double anomaly = SolveKepler(m, 0.3, 1e-10);
        EXPECT_LT(std::abs(m), kTwoPi);
        EXPECT_NEAR(AroundCircle(m - 1.25), 0, 1e-9);
        EXPECT_NEAR(AroundCircle(anomaly - EccentricByBisection(1.25, 0.3)), 0, 1e-9);
    }
    double turn = kTwoPi;
    SolveKepler(turn, 0.1, 1e-6);
    EXPECT_EQ(turn, 0);
    turn = -kTwoPi;
    SolveKepler(turn, 0.1, 1e-6);
    EXPECT_EQ(turn, 0);
    // Less than a turn is left as it is, negative too.
    turn = -6;
    SolveKepler(turn, 0.1, 1e-6);
    EXPECT_EQ(turn, -6);
}

TEST(SolveKepler, EndsWhereItCannotConverge) {
    for (const double e : {1.0, 1.5, 20.0, 1e300}) {
        double m = 2.5;
        EXPECT_FALSE(std::isnan(SolveKepler(m, e, 1e-12))) << e;
        m = 2.5;
        EXPECT_FALSE(std::isnan(SolveKepler(m, e, 0))) << e;
    }
}

TEST(SolveKepler, EndsOnAnyNumbers) {
    for (const double m : test::kHostile) {
        for (const double e : test::kHostile) {
            double anomaly = m;
            const double solved = SolveKepler(anomaly, e, 1e-6);
            if (std::isfinite(m) && std::abs(e) < 1) {
                EXPECT_NEAR(solved - e * std::sin(solved), anomaly, 1e-5) << m << " " << e;
                EXPECT_LT(std::abs(anomaly), kTwoPi);
            }
        }
    }
}

TEST(TrueFromMean, AgreesWithTheHalfAngles) {
    test::Sampler sample(42);
    for (int i = 0; i < 2000; ++i) {
        const double e = sample.Between(0, 0.85);
        const double m = sample.Between(0.01, 6.27);
        const double v = TrueFromMean(m, e, 1e-14);
        EXPECT_NEAR(AroundCircle(v - TrueByHalfAngles(EccentricByBisection(m, e), e)), 0, 1e-7);
        EXPECT_GE(v, 0);
        EXPECT_LE(v, kTwoPi);
    }
}

TEST(TrueFromMean, AtTheApsides) {
    for (const double e : {0.0, 0.001, 0.3, 0.74}) {
        EXPECT_NEAR(TrueFromMean(0, e, 1e-12), 0, 1e-12);
        EXPECT_NEAR(TrueFromMean(kPi, e, 1e-12), kPi, 1e-7);
    }
}

TEST(MeanFromTrue, IsTheWayBack) {
    test::Sampler sample(43);
    for (int i = 0; i < 2000; ++i) {
        const double e = sample.Between(0, 0.8);
        const double m = sample.Between(0.01, 6.27);
        EXPECT_NEAR(MeanFromTrue(TrueByHalfAngles(EccentricByBisection(m, e), e), e), m, 1e-6);
    }
}

TEST(MeanFromEccentric, IsKeplersEquation) {
    // The other way through Meeus's example 30.a.
    EXPECT_NEAR(MeanFromEccentric(5.554589253872320 * kDegree, 0.1), 5 * kDegree, 1e-13);
}

TEST(OrbitRadiusAt, IsTheApsisDistances) {
    EXPECT_NEAR(OrbitRadiusAt(26560, 0.74, 0), 26560 * 0.26, 1e-9);
    EXPECT_NEAR(OrbitRadiusAt(26560, 0.74, std::numbers::pi), 26560 * 1.74, 1e-9);
    EXPECT_EQ(OrbitRadiusAt(7000, 0, 2.2), 7000);
}

TEST(OrbitPolarAt, LiesOnTheEllipse) {
    // Any point of an ellipse has distances to the two foci that add up to the long axis.
    test::Sampler sample(44);
    const double a = 26560;
    for (int i = 0; i < 1000; ++i) {
        const double e = sample.Between(0, 0.8);
        const double m = sample.Between(0, 6.28);
        const OrbitPolar polar = OrbitPolarAt(a, e, m, 1e-12);
        const double x = polar.radius * std::cos(polar.trueAnomaly) + 2 * a * e;
        const double y = polar.radius * std::sin(polar.trueAnomaly);
        EXPECT_NEAR(polar.radius + std::hypot(x, y), 2 * a, 1e-6);
        EXPECT_NEAR(polar.radius, a * (1 - e * std::cos(EccentricByBisection(m, e))), 1e-4);
    }
}

TEST(OrbitPolarAt, ReturnsOnAnyNumbers) {
    for (const double m : test::kHostile) {
        for (const double e : test::kHostile) {
            const OrbitPolar polar = OrbitPolarAt(7000, e, m, 1e-6);
            if (std::isfinite(m) && std::abs(e) < 1) {
                EXPECT_TRUE(std::isfinite(polar.radius)) << m << " " << e;
                EXPECT_TRUE(std::isfinite(polar.trueAnomaly)) << m << " " << e;
            }
        }
    }
}

}  // namespace
}  // namespace glintara
