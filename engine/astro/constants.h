#pragma once

// The constants that every room shares.

namespace glintara {

/// The circle constant of all angle formulas. It is the decimal literal with 15 digits, not the closest
/// double to pi: all rooms must use the same value, or a place computed in one room would not fall
/// on the same place computed in another.
inline constexpr double kPi = 3.14159265358979;

/// One full turn, radians. A literal of its own for the same reason.
inline constexpr double kTwoPi = 6.28318530717958;

/// Radians in one degree.
inline constexpr double kDegToRad = kPi / 180;

/// Julian date of 1 January 2000, 12:00.
inline constexpr double kJ2000 = 2451545.0;

/// Days in a Julian century.
inline constexpr double kDaysPerCentury = 36525.0;

inline constexpr double kHoursPerDay = 24;
inline constexpr double kMinutesPerDay = 1440;
inline constexpr double kSecondsPerDay = 86400;

/// Equatorial radius of the WGS 84 ellipsoid, metres (NIMA TR8350.2, table 3.1).
inline constexpr double kWgs84Radius = 6378137.0;

/// Inverse flattening of the WGS 84 ellipsoid (NIMA TR8350.2, table 3.1).
inline constexpr double kWgs84InverseFlattening = 298.257223563;

/// The distance at which flares place the Sun, metres: one astronomical unit, fixed.
inline constexpr double kSunDistance = 149597892000.0;

}  // namespace glintara
