#pragma once

// Guarded inverse trigonometry: results stay finite where rounding carries an argument out of range.

namespace glintara {

/// Arc sine of `x`, radians, -pi/2 to pi/2. Within 1e-14 of +-1, and beyond +-1, it is sign(x) times 1.5707963267949,
/// so that a sine that rounding has carried past 1 gives the right angle and not a NaN.
double ArcSin(double x);

/// Arc cosine of `x`, radians, 0 to pi. Exactly -1 gives pi; any other |x| of 1 or more gives 0.
double ArcCos(double x);

/// Angle of the point (`x`, `y`), radians, -pi/2 to 3 pi/2, not wrapped. Both zero gives 0; `x` zero gives sign(y)
/// pi/2.
double Atan2Full(double y, double x);

/// Angle of the point (`x`, `y`), radians, 0 to 2 pi. With `x` zero it is the arc tangent of an infinity: a quarter
/// turn with the sign of `y`; both zero gives 0.
double Atan2Positive(double y, double x);

/// The whole part of `x`, towards zero.
double Truncate(double x);

/// `angle` reduced to 0 to 2 pi.
double WrapTwoPi(double angle);

}  // namespace glintara
