#pragma once

// SGP4/SDP4: the analytic propagator of the published two-line element sets.
//
// Sources: F. R. Hoots and R. L. Roehrich, Spacetrack Report No. 3 (1980); D. A. Vallado, P. Crawford, R. Hujsak and
// T. S. Kelso, "Revisiting Spacetrack Report #3", AIAA 2006-6753. Improved operation mode, gravity constants WGS 72.
//
// Units inside the theory: Earth radii (6378.135 km), minutes, radians.

#include <cstdint>

#include "engine/astro/vector.h"

namespace glintara {

/// Mean elements of a two-line element set, in the units of the theory.
struct MeanElements {
    double epochDay = 0;       ///< epoch, whole part: Julian date ending in .5 (UTC)
    double epochFraction = 0;  ///< epoch, fraction of the day, 0 to below 1
    double bstar = 0;          ///< drag term, per Earth radius
    double inclination = 0;    ///< radians
    double node = 0;           ///< right ascension of the ascending node, radians
    double eccentricity = 0;   ///< 0 to below 1
    double argPerigee = 0;     ///< radians
    double meanAnomaly = 0;    ///< radians
    double meanMotion = 0;     ///< Kozai mean motion, radians per minute
};

/// Which chapters of the theory a satellite needs.
enum class Sgp4Model : std::int32_t {
    NearEarth,            ///< period below 225 minutes
    NearEarthLowPerigee,  ///< the same with a perigee below 220 km: the drag series are cut short
    DeepSpace,            ///< period of 225 minutes or more: Sun and Moon, short drag series
};

/// Whether the Earth's longitude-dependent field moves a deep-space satellite in step with its orbit.
enum class Sgp4Resonance : std::int32_t {
    None,
    Day,      ///< about one turn a day
    HalfDay,  ///< about two turns a day on an eccentric orbit
};

/// Functions of the inclination in the long- and short-period terms.
struct InclinationTerms {
    double sine;
    double cosine;
    double threeCosSquaredMinusOne;
    double oneMinusCosSquared;
    double sevenCosSquaredMinusOne;
    double longPeriodLongitude;  ///< factor of the J3 term in the longitude
    double longPeriodAxis;       ///< J3 term in the component of the eccentricity vector that points north
};

/// Coefficients of the series in time by which drag changes a near-earth orbit of perigee above 220 km.
struct DragSeries {
    double eta;                                 ///< eccentricity, scaled to the height where the density is fitted
    double argPerigeeRate;                      ///< radians per minute, at B* of the set
    double meanAnomalyFactor;                   ///< radians
    double cubeAtEpoch;                         ///< (1 + eta cos M)^3 at epoch
    double sineMeanAnomalyEpoch;                ///< sin M at epoch
    double axis2, axis3, axis4;                 ///< of t^2 to t^4 in the root of the semi-major axis
    double eccentricity;                        ///< of sin M - sin M at epoch
    double longitude3, longitude4, longitude5;  ///< of t^3 to t^5 in the mean longitude
};

/// Amplitudes of the periodic terms that one body, Sun or Moon, causes; the digit tells the harmonic function (2 and 3
/// of twice the body's anomaly, 4 of the anomaly itself).
struct ThirdBodyTerms {
    double bodyMeanAnomaly;  ///< at the epoch, radians
    double eccentricity2, eccentricity3;
    double inclination2, inclination3;
    double meanAnomaly2, meanAnomaly3, meanAnomaly4;
    double perigee2, perigee3, perigee4;  ///< of the argument of perigee plus cos i times the node
    double node2, node3;                  ///< of the node times sin i
};

/// Rates per minute that Sun and Moon cause together.
struct ThirdBodyRates {
    double eccentricity;
    double inclination;
    double meanAnomaly;
    double argPerigee;
    double node;
};

/// An amplitude with its phase, as a complex number.
struct Phasor {
    double re;
    double im;
};

/// Terms of the half-day resonance in the longitude (`once`) and in twice the longitude, by the multiple of the
/// argument of perigee that is added: twice, none, plus one, minus one.
struct HalfDayTerms {
    Phasor onceTwoPerigee, once, oncePlusPerigee, onceMinusPerigee;
    Phasor twiceTwoPerigee, twice, twicePlusPerigee, twiceMinusPerigee;
};

/// Terms of the one-day resonance in one to three times the longitude.
struct DayTerms {
    Phasor once, twice, thrice;
};

/// What stays constant of the resonance.
struct ResonanceTerms {
    double greenwichAngle;    ///< of the epoch, radians
    double longitudeAtEpoch;  ///< resonant longitude, radians
    double longitudeRate;     ///< what is added to the mean motion to get its rate, radians per minute
    union {
        HalfDayTerms halfDay;
        DayTerms day;
    };
};

/// The numerical integration of the resonance stands at a node, a multiple of 720 minutes from the epoch. Derivatives
/// there are kept, so that times between the same two nodes cost no further work.
struct ResonanceIntegrator {
    double time;              ///< minutes from epoch
    double longitude;         ///< resonant longitude, radians
    double meanMotion;        ///< radians per minute
    double longitudeRate;     ///< per minute
    double meanMotionRate;    ///< per minute^2
    double meanMotionRate2;   ///< per minute^3
    double anchorTime;        ///< a node passed earlier from which a return need not begin at the epoch
    double anchorLongitude;   ///< there
    double anchorMeanMotion;  ///< there
};

/// A satellite prepared for propagation: plain numbers, no pointers; it fits into the private bytes of an EngineBlock.
/// Only `integrator` changes in use.
struct Sgp4Record {
    Sgp4Model model;
    Sgp4Resonance resonance;

    double epochDay;
    double epochFraction;

    double inclination;
    double node;
    double eccentricity;
    double argPerigee;
    double meanAnomaly;
    double meanMotion;     ///< Brouwer's, that is without Kozai's part of the oblateness; radians per minute
    double semiMajorAxis;  ///< Earth radii

    double meanAnomalyRate;  ///< secular, by J2 and J4, radians per minute
    double argPerigeeRate;
    double nodeRate;
    double nodeDrag;          ///< of t^2 in the node
    double axisDrag;          ///< of t in the root of the semi-major axis
    double eccentricityDrag;  ///< of t in the eccentricity
    double longitudeDrag;     ///< of t^2 in the mean longitude

    InclinationTerms inclinationTerms;
    DragSeries drag;

    ThirdBodyTerms sun;
    ThirdBodyTerms moon;
    ThirdBodyRates thirdBodyRates;

    ResonanceTerms resonanceTerms;
    ResonanceIntegrator integrator;
};

/// Error numbers of the theory, as the 2006 revision counts them.
enum class Sgp4Error {
    None = 0,
    MeanElements = 1,
    MeanMotion = 2,
    PerturbedElements = 3,
    SemiLatusRectum = 4,
    Decayed = 6,
};

struct Sgp4State {
    Vector3 position;  ///< kilometres, true equator and mean equinox of date (TEME)
    Vector3 velocity;  ///< kilometres per second
    Sgp4Error error = Sgp4Error::None;
};

/// The longest time from the epoch, minutes, over which the resonance is integrated: one hundred Julian years. Beyond,
/// the mean motion stays what it was there; the model means nothing so far out, but an answer must come at once.
inline constexpr double kIntegratorSpan = 100 * 365.25 * 1440;

/// Prepares `elements` for propagation. False when what follows from them is not finite (a mean motion or eccentricity
/// that the theory has no orbit for); `record` is then of no use. Eccentricity must be in 0 to below 1, mean motion
/// above 0.
[[nodiscard]] bool Sgp4Prepare(const MeanElements& elements, Sgp4Record& record);

/// Position and velocity `minutes` after the epoch. Moves the integrator in `record`; the result does not depend, in
/// any bit, on what was asked before. Position and velocity are finite for every argument. What they are under an
/// error:
///
///   | state                                               | numbers                                                  |
///   |-----------------------------------------------------|----------------------------------------------------------|
///   | decayed                                             | those of the theory, as they fall                        |
///   | elements that the theory refuses                    | what follows when they are brought back into range: too  |
///   |                                                     | great an eccentricity to that of a semi-latus rectum of  |
///   |                                                     | one Earth radius                                         |
///   | not finite, farther than 1e12 km or faster than     | zeros, with the first error found or `MeanElements`      |
///   | 1e12 km/s                                           |                                                          |
Sgp4State Sgp4AtMinutes(Sgp4Record& record, double minutes);

/// Minutes from the epoch of `record` to Julian date `jd` (UTC), negative before. Loses nothing to the size of the
/// Julian date.
double MinutesSinceEpoch(const Sgp4Record& record, double jd);

}  // namespace glintara
