#pragma once

// The sky unrolled to a flat chart: azimuthal equidistant, the way star charts are drawn. A quarter of the sky from the
// centre of the chart lies at the radius of the star sphere, the place opposite of the centre at twice that.
//
// View axes: x towards the viewer, y to the right of the screen, z up; the star sphere stands round their origin.

#include "engine/astro/vector.h"

namespace glintara {

/// How the star sphere is drawn.
struct SkyProjection {
    double radius = 1;      ///< of the star sphere, more than 0
    bool mirrored = false;  ///< left and right change places: the sky from outside of its sphere, or from inside
    bool flat = false;      ///< unrolled to a chart
    bool front = true;      ///< the chart's centre is the point of the sphere nearest to the viewer, else the farthest
};

/// Where a place on the star sphere is drawn: y and z. On the chart x stays as it was, the depth on the sphere. The
/// centre of the chart, and the place opposite, come to lie in the middle.
Vector3 FlattenSky(const SkyProjection& sky, const Vector3& view);

/// The place on the star sphere that is drawn at `view`, whose x is read on the sphere alone. On the chart the result
/// lies on the sphere; farther than twice the radius from the centre there is no sky.
Vector3 DeFlattenSky(const SkyProjection& sky, const Vector3& view);

}  // namespace glintara
