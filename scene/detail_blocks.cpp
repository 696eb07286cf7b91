#include "scene/detail_blocks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/astro/constants.h"
#include "orbit/orbit_details.h"
#include "scene/overlays.h"

namespace glintara {
namespace {

constexpr Color kAstroColor = 0xD9D1C9;
constexpr Color kMoonLit = 0xD8EEF6;
constexpr Color kMoonDark = 0x3A312A;
constexpr Color kMoonRim = 0x9E948B;

constexpr double kSizeStep = 0.5;

/// Radius of the Moon's disc, in heights of a line.
constexpr double kMoonRadius = 0.46;

/// Corners of each half of the edge of its lit part.
constexpr int kMoonCorners = 24;

/// A list with the place of its first line, twips.
struct Block {
    std::vector<std::string> lines;
    double size = kDetailsSize;
    double left = 0;
    double top = 0;
    double width = 0;
    double lineHeight = 0;

    double Bottom() const { return top + lineHeight * static_cast<double>(lines.size()); }
    BoxArea Area() const { return {left, top, left + width, Bottom()}; }
};

/// Takes the size of the letters, and with it the measures.
void SetSize(DrawSurface& surface, Block& block, double size) {
    UseTextFont(surface, size);
    block.size = size;
    block.lineHeight = surface.TextHeight("x");
    block.width = 0;
    for (const std::string& line : block.lines) block.width = std::max(block.width, surface.TextWidth(line));
}

Block LayOutOrbit(const SceneContext& scene) {
    DrawSurface& surface = scene.Surface;
    const BoxArea title = TitleArea(surface);
    const double date = DateTextTop(scene);
    Block block;
    block.lines = OrbitDetails(scene.App.Data);
    for (double size = kDetailsSize; size >= kLeastDetailsSize; size -= kSizeStep) {
        SetSize(surface, block, size);
        const double margin = surface.TextWidth("x");
        block.left = std::max(margin, surface.ScaleWidth - margin - block.width);
        block.top = block.left < title.right + margin ? title.bottom : margin;
        if (block.Bottom() <= date) break;
    }
    return block;
}

Block LayOutAstro(const SceneContext& scene) {
    DrawSurface& surface = scene.Surface;
    const double labels = LabelTextsHeight(scene);
    AstroLines details = AstroDetails(scene.App.Data);
    Block block;
    block.lines = std::move(details.Sun);
    std::ranges::move(details.Moon, std::back_inserter(block.lines));
    SetSize(surface, block, kDetailsSize);
    const double margin = surface.TextWidth("x");
    block.left = margin;
    block.top =
        surface.ScaleHeight - std::max(labels, margin / 2) - block.lineHeight * static_cast<double>(block.lines.size());
    return block;
}

void Print(const SceneContext& scene, const Block& block, Color color) {
    DrawSurface& surface = scene.Surface;
    surface.DrawMode = MixMode::Copy;
    surface.ForeColor = color;
    UseTextFont(surface, block.size);
    surface.FontOutlined = true;
    double y = block.top;
    for (const std::string& line : block.lines) {
        surface.CurrentX = block.left;
        surface.CurrentY = y;
        if (!line.empty()) surface.Print(line);
        y += block.lineHeight;
    }
    surface.FontOutlined = false;
}

}  // namespace

std::optional<BoxArea> OrbitDetailsArea(const SceneContext& scene) {
    if (!scene.App.Main.C2OrbitDetails.Value || scene.App.Data.SatCount < 1) return std::nullopt;
    return LayOutOrbit(scene).Area();
}

void PrintOrbitDetails(const SceneContext& scene) {
    if (scene.App.Data.SatCount > 0) Print(scene, LayOutOrbit(scene), kOrbitDetailsColor);
}

std::optional<BoxArea> AstroDetailsArea(const SceneContext& scene) {
    if (!scene.App.Main.CAstroDetails.Value) return std::nullopt;
    return LayOutAstro(scene).Area();
}

void PrintAstroDetails(const SceneContext& scene) {
    const Block block = LayOutAstro(scene);
    Print(scene, block, kAstroColor);
    const CommonData& data = scene.App.Data;
    const std::size_t heading = AstroDetails(data).Sun.size();
    UseTextFont(scene.Surface, block.size);
    const double x = block.left + scene.Surface.TextWidth(block.lines[heading] + "x") + block.lineHeight * kMoonRadius;
    const double y = block.top + (static_cast<double>(heading) + 0.5) * block.lineHeight;
    DrawMoonDisc(scene, x, y, block.lineHeight * kMoonRadius, MoonPhase(data), data.Site.SiteLat < 0);
}

void DrawMoonDisc(const SceneContext& scene, double x, double y, double radius, double phase, bool southern) {
    DrawSurface& surface = scene.Surface;
    surface.DrawMode = MixMode::Copy;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawWidth = 1;
    surface.FillStyle = FillPattern::Solid;
    surface.FillColor = kMoonDark;
    surface.ForeColor = kMoonRim;
    surface.Circle(x, y, radius);

    // The lit part lies between half of the limb and the terminator, half of an ellipse: at the poles they meet.
    const bool waxing = phase < 0.5;
    const double litSide = waxing != southern ? 1 : -1;
    const double terminator = std::cos(kTwoPi * phase) * litSide;
    scene.Polygon.Clear();
    const auto add = [&](double angle, double flattening) {
        scene.Polygon.Add((x + radius * std::cos(angle) * flattening) / surface.TwipsPerPixelX,
                          (y - radius * std::sin(angle)) / surface.TwipsPerPixelY);
    };
    for (int i = 0; i <= kMoonCorners; ++i) add(kPi / 2 - kPi * i / kMoonCorners, litSide);
    for (int i = 1; i < kMoonCorners; ++i) add(-kPi / 2 + kPi * i / kMoonCorners, terminator);
    surface.FillColor = kMoonLit;
    const std::array<std::int32_t, 1> ends{static_cast<std::int32_t>(scene.Polygon.Count())};
    surface.PolyPolygon(scene.Polygon.Exact(), ends);
}

}  // namespace glintara
