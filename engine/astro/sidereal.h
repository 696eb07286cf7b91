#pragma once

// Greenwich sidereal angle in its variants, radians. Polynomial: IAU 1982 (Aoki et al., Astron. Astrophys. 105, 359),
// with UT1 taken as UTC.
//
// For an instant before noon of 1 January 2000 the angle carries the opposite sign of the true one. Map, stars,
// satellites and flares all take their angle from here, so they agree with each other on those dates; but places on the
// ground are not the true ones then.

#include "engine/astro/calendar.h"

namespace glintara {

/// Greenwich sidereal angle at `jd`, 0 to 2 pi from 2000 on, -2 pi to 0 before.
double SiderealFromJD(double jd);

/// Greenwich angle of the fields without the half turn between the noon of the Julian date and midnight.
double SiderealBaseFromDate(const CalendarFields& fields);

/// Greenwich sidereal angle of the fields, -pi to pi.
double SiderealFromDate(const CalendarFields& fields);

/// `SiderealFromDate` minus `angle`, not wrapped. With a right ascension: the Greenwich hour angle.
double SiderealMinusAngle(const CalendarFields& fields, double angle);

/// `SiderealFromDate` plus `angle`, not wrapped. With an east longitude: the local sidereal time.
double SiderealPlusAngle(const CalendarFields& fields, double angle);

}  // namespace glintara
