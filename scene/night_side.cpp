#include "scene/night_side.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>

#include "engine/astro/trigonometry.h"
#include "scene/picture_measures.h"

namespace glintara {
namespace {

/// A direction to the Sun is a unit vector; anything far shorter is none.
constexpr double kLeastSun = 0.5;

constexpr double kFullCoverage = 255;

/// Coverage of the glow at the limb.
constexpr double kGlowAtLimb = 0.9;

std::uint8_t CoverageOf(double share) {
    return static_cast<std::uint8_t>(kFullCoverage * std::clamp(share, 0.0, 1.0) + 0.5);
}

double SmoothStep(double from, double to, double x) {
    const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

/// Columns or rows of pixels, from the first to before the end.
struct PixelRange {
    int first = 0;
    int end = 0;

    bool IsEmpty() const { return first >= end; }

    PixelRange Meet(const PixelRange& other) const { return {std::max(first, other.first), std::min(end, other.end)}; }
};

/// The pixels of the picture in scene units.
class PixelGrid {
  public:
    explicit PixelGrid(const SceneContext& scene)
        : view_(scene.View()),
          window_(GetWindowScale(view_, scene.Surface)),
          twipsX_(scene.Surface.TwipsPerPixelX),
          twipsY_(scene.Surface.TwipsPerPixelY),
          columns_{0, static_cast<int>(std::ceil(scene.Surface.ScaleWidth / twipsX_ - kSliver))},
          rows_{0, static_cast<int>(std::ceil(scene.Surface.ScaleHeight / twipsY_ - kSliver))} {}

    double X(int column) const { return SceneFromBoxX(window_, view_, (column + 0.5) * twipsX_); }
    double Y(int row) const { return SceneFromBoxY(window_, view_, (row + 0.5) * twipsY_); }

    /// Pixels in a scene unit.
    double Scale() const { return window_.scaleX / twipsX_; }

    /// The pixels of the picture whose middles lie between two places.
    PixelRange Columns(double left, double right) const {
        return Between(BoxFromSceneX(window_, view_, left) / twipsX_, BoxFromSceneX(window_, view_, right) / twipsX_)
            .Meet(columns_);
    }
    PixelRange Rows(double bottom, double top) const {
        return Between(BoxFromSceneY(window_, view_, top) / twipsY_, BoxFromSceneY(window_, view_, bottom) / twipsY_)
            .Meet(rows_);
    }

  private:
    /// Less of a pixel than this is rounding.
    static constexpr double kSliver = 1e-6;

    static PixelRange Between(double from, double to) {
        constexpr double kFar = 1e8;
        return {static_cast<int>(std::ceil(std::clamp(from, -kFar, kFar) - 0.5)),
                static_cast<int>(std::floor(std::clamp(to, -kFar, kFar) - 0.5)) + 1};
    }

    const ViewState& view_;
    WindowScale window_;
    double twipsX_;
    double twipsY_;
    PixelRange columns_;
    PixelRange rows_;
};

/// Fills the coverages of pixels over which the Sun's height only rises or only falls; `sine` tells the sine of it at a
/// column. The height is looked at only where the night begins; elsewhere there is all of it or none.
template <class Sine>
void FillNight(const PixelRange& columns, const Sine& sine, std::span<std::uint8_t> coverage) {
    if (columns.IsEmpty()) return;
    static const double full = -std::sin(kTwilight);
    const bool rises = sine(columns.first) < sine(columns.end - 1);
    // The first column on the far side of a height, as one goes to the right.
    const auto passes = [&](double height) {
        int from = columns.first;
        int to = columns.end;
        while (from < to) {
            const int middle = from + (to - from) / 2;
            if ((sine(middle) < height) == rises)
                from = middle + 1;
            else
                to = middle;
        }
        return from;
    };
    const int softFirst = passes(rises ? full : 0);
    const int softEnd = std::max(softFirst, passes(rises ? 0 : full));
    const auto at = [&](int column) { return coverage.begin() + (column - columns.first); };
    std::fill(at(columns.first), at(softFirst), CoverageOf(rises ? 1 : 0));
    for (int column = softFirst; column < softEnd; ++column) *at(column) = CoverageOf(NightShare(sine(column)));
    std::fill(at(softEnd), at(columns.end), CoverageOf(rises ? 0 : 1));
}

/// The same over pixels on which the height turns round before the columns in `turns`, which are sorted.
template <class Sine>
void FillNightInParts(const PixelRange& columns, std::span<const int> turns, const Sine& sine,
                      std::span<std::uint8_t> coverage) {
    int first = columns.first;
    const auto part = [&](int end) {
        const PixelRange range = PixelRange{first, end}.Meet(columns);
        if (range.IsEmpty()) return;
        FillNight(range, sine, coverage.subspan(static_cast<std::size_t>(range.first - columns.first)));
        first = range.end;
    };
    for (const int turn : turns) part(turn);
    part(columns.end);
}

/// Room for the coverages of a row of pixels.
std::span<std::uint8_t> RoomFor(const PixelRange& columns, CoverageRow& row) {
    const auto count = static_cast<std::size_t>(columns.end - columns.first);
    if (row.size() < count) row.resize(count);
    return {row.data(), count};
}

bool IsClear(std::span<const std::uint8_t> coverage) {
    return std::ranges::all_of(
        coverage, [](std::uint8_t c) { return c == 0; });
}

/// Width of the glow, scene units.
double GlowWidth(const SceneContext& scene) { return std::min(kGlowWidth / ScreenPixelsPerUnit(scene), kMostGlow); }

/// Half the length of a chord of a circle, 0 beside it.
double HalfChord(double radius, double distance) {
    return std::sqrt(std::max(0.0, (radius - distance) * (radius + distance)));
}

/// The disc's edge cuts through its outermost pixels.
void SoftenEdge(const PixelGrid& grid, const PixelRange& columns, double y, double radius,
                std::span<std::uint8_t> coverage) {
    const double inside = HalfChord(std::max(0.0, radius - 1 / grid.Scale()), y);
    for (int column = columns.first; column < columns.end; ++column) {
        const double x = grid.X(column);
        // From here to the same place on the other side the pixels lie within whole.
        if (std::fabs(x) < inside) {
            const int next = grid.Columns(x, inside).end;
            if (next > column + 1) column = next - 1;
            continue;
        }
        const double covered = (radius - std::sqrt(x * x + y * y)) * grid.Scale() + 0.5;
        std::uint8_t& share = coverage[static_cast<std::size_t>(column - columns.first)];
        share = CoverageOf(std::clamp(covered, 0.0, 1.0) * share / kFullCoverage);
    }
}

void DrawGlobeNight(const SceneContext& scene, const Vector3& sun, CoverageRow& row) {
    const PixelGrid grid(scene);
    const double halfPixel = 0.5 / grid.Scale();
    const double radius = 1 + std::clamp(GlowWidth(scene) - halfPixel, 0.0, kNightRim / grid.Scale());
    const double reach = radius + halfPixel;
    const PixelRange rows = grid.Rows(-reach, reach);
    for (int line = rows.first; line < rows.end; ++line) {
        const double y = grid.Y(line);
        const double half = HalfChord(reach, y);
        const PixelRange columns = grid.Columns(-half, half);
        if (columns.IsEmpty()) continue;
        const std::span<std::uint8_t> coverage = RoomFor(columns, row);
        // Along a row the globe is a half circle, on which the height has one extreme before the viewer: below the Sun
        // when it stands in front, opposite to it when behind.
        const double chordSquared = (1 - y) * (1 + y);
        const auto sine = [&](int column) {
            const double x = grid.X(column);
            return sun.x * std::sqrt(std::max(0.0, chordSquared - x * x)) + sun.y * x + sun.z * y;
        };
        const double turned = std::hypot(sun.x, sun.y);
        const double extreme = turned > 0 ? HalfChord(1, y) * sun.y / turned : 0;
        const std::array<int, 1> turns{grid.Columns(sun.x < 0 ? -extreme : extreme, reach).first};
        FillNightInParts(columns, turns, sine, coverage);
        if (IsClear(coverage)) continue;
        SoftenEdge(grid, columns, y, radius, coverage);
        scene.Surface.CoverRow(columns.first, line, coverage);
    }
}

void DrawFlatMapNight(const SceneContext& scene, const LatLonRadius& sun, CoverageRow& row) {
    const PixelGrid grid(scene);
    const MapFrame frame = FlatMapFrame(scene.View());
    const PixelRange columns = grid.Columns(frame.left, frame.right);
    if (columns.IsEmpty()) return;
    // Along a parallel the Sun is highest on its own meridian and lowest on the one opposite.
    const double noon = FlatMapPosition(scene.View(), {0, sun.lon}).x;
    const double midnight = noon > 0 ? noon - kPi : noon + kPi;
    const std::array<int, 2> turns{grid.Columns(std::min(noon, midnight), frame.right).first,
                                   grid.Columns(std::max(noon, midnight), frame.right).first};
    const PixelRange rows = grid.Rows(frame.bottom, frame.top);
    for (int line = rows.first; line < rows.end; ++line) {
        const double lat = grid.Y(line) - frame.middle;
        const std::span<std::uint8_t> coverage = RoomFor(columns, row);
        const auto sine = [&](int column) {
            return std::sin(lat) * std::sin(sun.lat) +
                   std::cos(lat) * std::cos(sun.lat) * std::cos(grid.X(column) - noon);
        };
        FillNightInParts(columns, turns, sine, coverage);
        if (!IsClear(coverage)) scene.Surface.CoverRow(columns.first, line, coverage);
    }
}

/// The Sun's direction on world axes; nothing when there is none.
std::optional<Vector3> SunOf(const CommonData& data) {
    const double size = Length(data.SunDir);
    if (!(size > kLeastSun) || !std::isfinite(size)) return std::nullopt;
    return 1 / size * data.SunDir;
}

}  // namespace

double NightShare(double sineOfHeight) {
    static const double full = std::sin(kTwilight);
    return SmoothStep(0, full, -sineOfHeight);
}

double GlowShare(double sineOfHeight) {
    static const double dusk = std::sin(kGlowDusk);
    static const double day = std::sin(kGlowDay);
    return kGlowAtNight + (1 - kGlowAtNight) * SmoothStep(dusk, day, sineOfHeight);
}

void DrawNightSide(const SceneContext& scene, CoverageRow& row) {
    const CommonData& data = scene.App.Data;
    const std::optional<Vector3> sun = SunOf(data);
    if (!sun) return;
    DrawSurface& surface = scene.Surface;
    surface.ForeColor = data.ShadowColor;
    surface.FillColor = data.ShadowColor;
    surface.FillStyle = FillPattern::Solid;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Mask;
    if (scene.IsFlatMap())
        DrawFlatMapNight(scene, XYZToLatLon(*sun), row);
    else
        DrawGlobeNight(scene, RotateWorldToView(data.View, *sun), row);
    surface.DrawMode = MixMode::Copy;
}

void DrawGlow(const SceneContext& scene, CoverageRow& row) {
    const CommonData& data = scene.App.Data;
    const std::optional<Vector3> sun = scene.App.Main.CSunLight.Value ? SunOf(data) : std::nullopt;
    const Vector3 seenSun = sun ? RotateWorldToView(data.View, *sun) : Vector3{};
    const PixelGrid grid(scene);
    const double width = GlowWidth(scene);
    const double outer = 1 + width;
    const double inner = std::max(0.0, 1 - 1 / grid.Scale());
    const auto share = [&](double x, double y) {
        const double r = std::sqrt(x * x + y * y);
        if (r <= 0) return 0.0;
        const double off = std::clamp((outer - r) / width, 0.0, 1.0);
        const double light = sun ? GlowShare((seenSun.y * x + seenSun.z * y) / r) : 1;
        return kGlowAtLimb * off * off * off * light;
    };
    DrawSurface& surface = scene.Surface;
    surface.FillColor = kLimbColor;
    surface.FillStyle = FillPattern::Solid;
    surface.DrawMode = MixMode::Copy;
    const PixelRange rows = grid.Rows(-outer, outer);
    for (int line = rows.first; line < rows.end; ++line) {
        const double y = grid.Y(line);
        const double from = HalfChord(outer, y);
        const double to = HalfChord(inner, y);
        const auto cover = [&](const PixelRange& columns) {
            if (columns.IsEmpty()) return;
            const std::span<std::uint8_t> coverage = RoomFor(columns, row);
            for (int column = columns.first; column < columns.end; ++column)
                coverage[static_cast<std::size_t>(column - columns.first)] = CoverageOf(share(grid.X(column), y));
            surface.CoverRow(columns.first, line, coverage);
        };
        const PixelRange left = grid.Columns(-from, -to);
        cover(left);
        PixelRange right = grid.Columns(to, from);
        right.first = std::max(right.first, left.end);
        cover(right);
    }
}

}  // namespace glintara
