#pragma once

// From a place in space to a place on the picture, and back.
//
// World axes: Earth-fixed, x towards longitude 0, y towards 90 degrees east, z towards the north pole. View axes: x
// towards the viewer (depth), y to the right of the screen, z up. Scene units: the Earth is the unit sphere; on the
// flat map they are radians. Box positions are in the surface's twips, y downwards. Angles in radians.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engine/astro/geodesy.h"
#include "engine/astro/vector.h"
#include "scene/surface/draw_surface.h"
#include "state/application.h"

namespace glintara {

/// `ZoomFactor` at which the unit sphere just touches the short sides of the picture.
inline constexpr double kFullZoom = 64;

inline constexpr double kLeastZoom = 0.1;
inline constexpr double kMostZoom = 5000;

/// Farthest that the picture can be shifted, scene units: out of sight even at the smallest zoom.
inline constexpr double kMostPan = 1e6;

/// Vertices that a `PolygonBuffer` holds unless told otherwise: some ten times what the night side needs.
inline constexpr std::size_t kPolygonCapacity = 8192;

/// A place on the Earth, or a direction, by latitude and longitude.
struct LatLon {
    double lat = 0;
    double lon = 0;
};

/// A place on the plane of the screen, scene units: x to the right, y up, before pan and scale.
struct ScenePoint {
    double x = 0;
    double y = 0;
};

/// Vertices of one polygon in pixels. Its memory is taken once; a vertex beyond the capacity is left out.
class PolygonBuffer {
  public:
    explicit PolygonBuffer(std::size_t capacity = kPolygonCapacity);

    void Clear();
    void Add(double pixelX, double pixelY);

    std::size_t Count() const { return whole_.size(); }

    /// The vertices cut to whole pixels, as `DrawSurface::Polygon` takes them.
    std::span<const PixelVertex> Vertices() const { return whole_; }

    /// The same vertices with their fractions, x and y in turn, as `DrawSurface::PolyPolygon` takes them.
    std::span<const double> Exact() const { return exact_; }

  private:
    std::size_t capacity_;
    std::vector<PixelVertex> whole_;
    std::vector<double> exact_;
};

/// A rectangle of the box, twips.
struct BoxArea {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

struct SceneContext;

/// What becomes of a place on the star sphere before it is drawn: mirrored, unrolled to a chart. Takes and gives view
/// axes, scene units; reads the boxes of the sky by itself.
using SkyMapping = void (*)(const SceneContext& scene, Vector3& view);

/// What every room of the scene gets to draw with. Light: references and switches of the frame.
struct SceneContext {
    Application& App;
    DrawSurface& Surface;
    PolygonBuffer& Polygon;

    SkyMapping FlattenSky = nullptr;  ///< null leaves the sky as it is
    bool BlackInSunlight = false;     ///< segments given by angles are black where an end of them lies in sunlight

    ViewState& View() const { return App.Data.View; }

    /// Whether the Earth is drawn as a map and not as a globe.
    bool IsFlatMap() const { return App.Main.CPlaniSphere.Value; }
};

// The camera.

/// Takes the sine and cosine of the camera's angles, which every transform reads. To be called when a frame begins and
/// after every change of the camera that is followed by a transform.
void RefreshViewCache(ViewState& view);

/// Brings the camera back to what can be drawn: zoom from `kLeastZoom` to `kMostZoom`, pans within `kMostPan`, angles
/// finite, sky above 0. A number that is none becomes 0, a zoom or a sky that of a fresh camera.
void HoldView(ViewState& view);

/// Keeps the pan as the one that the Earth is drawn with in this frame.
void TakeFramePan(ViewState& view);

/// Keeps the pan, and moves it for a stage of the sky: in the horizon views, where the Earth is shifted so that the
/// observer stands at the top of its disc, the centre of the sky belongs to that point. Without a shift, and while the
/// stars are on the globe, the pan stays. To be followed by `PopSkyPan`; the pairs may nest.
void PushSkyPan(const SceneContext& scene);

/// Puts the pan back that the last `PushSkyPan` kept; nothing when there is none.
void PopSkyPan(const SceneContext& scene);

// Rotation.

/// A world point on view axes: turned by longitude, latitude, then `ViewRoll` about the screen's vertical axis. The
/// point at (`ViewLat`, `ViewLon`) comes to lie at depth 1, as long as `ViewRoll` is 0.
Vector3 RotateWorldToView(const ViewState& view, const Vector3& world);

/// The inverse.
Vector3 RotateViewToWorld(const ViewState& view, const Vector3& point);

/// A place given by angles and radius on view axes.
Vector3 LatLonRadiusToView(const ViewState& view, const LatLonRadius& place);

/// Latitude and longitude of a world point as seen on view axes: (0, 0) is towards the viewer, 90 degrees of longitude
/// to the right. The longitude runs from -pi/2 to 3 pi/2.
LatLonRadius ViewXYZToLatLon(const ViewState& view, const Vector3& world);

/// Whether the Earth's disc covers a point given on view axes: behind the plane of the disc and inside it. The limb
/// itself is seen.
bool IsHidden(const ViewState& view, const Vector3& point);

// The flat map (plate carree).

/// Where a place lies on the flat map, radians from the middle of the picture: both angles less those of the camera.
/// The longitude goes round, -pi to pi; the latitude stays in the map's frame, which whole turns do not move.
ScenePoint FlatMapPosition(const ViewState& view, const LatLon& place);

/// A place given in frame units of the flat map: 1 is the edge, pi in X and pi/2 in Y, and `ViewLat` shifts it down.
/// Whole turns of the camera do not move the map.
ScenePoint FlatMapFramePoint(const ViewState& view, double x, double y);

/// The place of the seam where a segment leaves the map, and the one where it comes back.
struct SeamCrossing {
    ScenePoint leaves;   ///< on the side of the first end
    ScenePoint returns;  ///< on the side of the second end
};

/// How much farther than the seam both parts of a split segment are drawn, so that no gap shows at the frame.
inline constexpr double kSeamOvershoot = 1.005;

/// Whether a segment between two places of the flat map is shorter through the seam than over the map.
bool CrossesSeam(const ScenePoint& a, const ScenePoint& b);

/// Where such a segment meets the seam. Only for places of which `CrossesSeam` holds.
SeamCrossing SplitAtSeam(const ScenePoint& a, const ScenePoint& b);

// The picture box.

/// Scale of the box.
struct WindowScale {
    double scaleX = 0;  ///< twips in one scene unit
    double scaleY = 0;
    double halfW = 0;  ///< the centre, twips
    double halfH = 0;
    double shortSide = 0;   ///< the short side in whole twips, at least 1
    double sceneWidth = 0;  ///< the short side in scene units
};

WindowScale GetWindowScale(const ViewState& view, const DrawSurface& surface);

/// The same for a box of this size, twips.
WindowScale GetWindowScale(const ViewState& view, double boxWidth, double boxHeight);

/// Box position of a scene position, the pan included.
double BoxFromSceneX(const WindowScale& window, const ViewState& view, double x);
double BoxFromSceneY(const WindowScale& window, const ViewState& view, double y);

/// The inverses.
double SceneFromBoxX(const WindowScale& window, const ViewState& view, double x);
double SceneFromBoxY(const WindowScale& window, const ViewState& view, double y);

/// The place of the Earth that is drawn at a scene position, longitude from -pi to pi: on the flat map, or on the near
/// side of the globe. Nothing off the Earth; its limb counts as off.
std::optional<LatLon> EarthPlaceAt(const ViewState& view, bool flatMap, const ScenePoint& point);

/// A line with the pen of the surface. Positions in scene units; a line that is not finite is left out.
void SceneLine(const SceneContext& scene, const ScenePoint& a, const ScenePoint& b);

/// A circle outlined in `color` and filled by the fill of the surface, whose foreground colour stays. Scene units; not
/// drawn when it is not finite.
void SceneCircle(const SceneContext& scene, const ScenePoint& center, double radius, Color color);

/// Adds a vertex, given in scene units, to the polygon of the scene.
void PolygonVertex(const SceneContext& scene, const ScenePoint& vertex);

}  // namespace glintara
