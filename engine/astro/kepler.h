#pragma once

// The Kepler ellipse. Angles in radians; a radius is in the unit of the semi-major axis given.

namespace glintara {

/// Radius and true anomaly of a place on the ellipse.
struct OrbitPolar {
    double radius = 0;
    double trueAnomaly = 0;
};

/// Eccentric anomaly of mean anomaly `m` by fixed-point iteration until the step is at most `tolerance`. `m` is reduced
/// to within one turn in place. Not converging (e of 1 or more) ends after 1000 rounds with the last value.
double SolveKepler(double& m, double e, double tolerance);

/// E - e sin E.
double MeanFromEccentric(double eccentricAnomaly, double e);

/// True anomaly, 0 to 2 pi, of mean anomaly `m`.
double TrueFromMean(double m, double e, double tolerance);

/// Mean anomaly of a true anomaly.
double MeanFromTrue(double trueAnomaly, double e);

/// Distance from the focus at a true anomaly, in the unit of `a`.
double OrbitRadiusAt(double a, double e, double trueAnomaly);

/// Radius and true anomaly at mean anomaly `m`.
OrbitPolar OrbitPolarAt(double a, double e, double m, double tolerance);

}  // namespace glintara
