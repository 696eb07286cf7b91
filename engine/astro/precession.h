#pragma once

// Precession of the mean equator and equinox, IAU 1976 (Lieske et al., Astron. Astrophys. 58, 1, 1977): the three
// equatorial angles for any pair of epochs.

#include "engine/astro/horizon.h"
#include "engine/astro/vector.h"

namespace glintara {

/// Rows of a rotation that carries a vector of the equator and equinox of one epoch to those of another.
struct RotationMatrix {
    Vector3 row[3];

    Vector3 operator*(const Vector3& v) const { return {Dot(row[0], v), Dot(row[1], v), Dot(row[2], v)}; }
};

/// Rotation from the mean equator and equinox of `fromEpoch` to those of `toEpoch`, both Julian years (2000.0 is
/// J2000).
RotationMatrix PrecessionMatrix(double toEpoch, double fromEpoch);

/// A catalogue place carried by `matrix`; `ra` of the result is 0 to 2 pi.
Equatorial Precess(const RotationMatrix& matrix, const Equatorial& place);

}  // namespace glintara
