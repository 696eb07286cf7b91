#include "scene/overlays.h"

#include <algorithm>
#include <string>

#include "state/version.h"

namespace glintara {
namespace {

constexpr std::string_view kTitle = "Glintara";
constexpr std::string_view kJoint = "- ";
constexpr std::string_view kAuthor = "By Ostelvane ";
constexpr std::string_view kPlottingNotice = "Finely Plotting - Please Wait ";

constexpr Color kTitleColor = 0xF0F0F0;
constexpr Color kQuietColor = 0x9E948B;
constexpr Color kOverlayColor = 0xD9D1C9;
constexpr Color kPlottingColor = 0x5050C0;

constexpr double kTitleSize = 18;
constexpr double kAuthorSize = 11;
constexpr double kSplashSize = 44;
constexpr double kSplashLineSize = 14;
constexpr double kOverlaySize = 11;
constexpr double kQuietOverlaySize = 9;
constexpr double kPlottingSize = 12;
constexpr double kLoadingSize = 16;

/// A box is wide when the title in one line takes no more than this part of it.
constexpr double kTitleShare = 0.5;

/// Heights of a line from the lower edge to the upper edge of the words there.
constexpr double kOverlayRise = 1.5;
constexpr double kPlottingRise = 2.5;

/// More lines of the overlay's size than its texts ever take.
constexpr double kOverlayLines = 9;

void UseTitleFont(DrawSurface& surface, double size, bool bold) {
    surface.FontName = kTitleFont;
    surface.FontSize = size;
    surface.FontBold = bold;
    surface.FontItalic = true;
    surface.FontOutlined = true;
}

/// Where the title's parts stand, twips.
struct TitleLayout {
    double margin = 0;
    bool oneLine = true;
    double authorX = 0;
    double authorY = 0;
    double right = 0;
    double bottom = 0;
};

TitleLayout LayOutTitle(DrawSurface& surface) {
    TitleLayout layout;
    UseTitleFont(surface, kTitleSize, true);
    layout.margin = surface.TextWidth("x") * 2;
    const double top = layout.margin / 2;
    const double titleRight = layout.margin + surface.TextWidth(kTitle) + surface.TextWidth(" ");
    const double titleHeight = surface.TextHeight(kTitle);
    UseTitleFont(surface, kAuthorSize, false);
    const double authorWidth = surface.TextWidth(kJoint) + surface.TextWidth(kAuthor);
    const double authorHeight = surface.TextHeight(kAuthor);
    layout.oneLine = titleRight + authorWidth <= kTitleShare * surface.ScaleWidth;
    layout.bottom = top + titleHeight;
    if (layout.oneLine) {
        // Both stand on one baseline, which lies about four fifths down a line.
        constexpr double kBaseline = 0.8;
        layout.authorX = titleRight;
        layout.authorY = top + kBaseline * (titleHeight - authorHeight);
        layout.right = titleRight + authorWidth;
    } else {
        layout.authorX = layout.margin;
        layout.authorY = layout.bottom;
        layout.right = std::max(titleRight, layout.margin + surface.TextWidth(kAuthor));
        layout.bottom += authorHeight;
    }
    return layout;
}

void PrintAt(DrawSurface& surface, double x, double y, std::string_view text) {
    surface.CurrentX = x;
    surface.CurrentY = y;
    surface.Print(text);
}

/// Prints centred, and moves `y` below the line.
void PrintCentered(DrawSurface& surface, double& y, std::string_view text) {
    PrintAt(surface, (surface.ScaleWidth - surface.TextWidth(text)) / 2, y, text);
    y += surface.TextHeight(text);
}

void BeginWords(DrawSurface& surface, Color color) {
    surface.DrawMode = MixMode::Copy;
    surface.ForeColor = color;
}

}  // namespace

void UseTextFont(DrawSurface& surface, double size) {
    surface.FontName = kTextFont;
    surface.FontSize = size;
    surface.FontBold = false;
    surface.FontItalic = false;
    surface.FontOutlined = false;
}

void DrawTitleBlock(const SceneContext& scene) {
    DrawSurface& surface = scene.Surface;
    const TitleLayout layout = LayOutTitle(surface);
    BeginWords(surface, kTitleColor);
    UseTitleFont(surface, kTitleSize, true);
    PrintAt(surface, layout.margin, layout.margin / 2, kTitle);
    UseTitleFont(surface, kAuthorSize, false);
    surface.ForeColor = kQuietColor;
    surface.CurrentX = layout.authorX;
    surface.CurrentY = layout.authorY;
    if (layout.oneLine) surface.Print(kJoint);
    surface.Print(kAuthor);
    UseTextFont(surface, kAuthorSize);
}

BoxArea TitleArea(DrawSurface& surface) {
    const TitleLayout layout = LayOutTitle(surface);
    return {0, 0, layout.right, layout.bottom};
}

void DrawSplash(const SceneContext& scene) {
    const Splash splash = scene.App.Run.SplashShown;
    if (splash == Splash::None) return;
    DrawSurface& surface = scene.Surface;
    BeginWords(surface, kTitleColor);
    UseTitleFont(surface, kSplashSize, true);
    double y = surface.ScaleHeight / 2 - surface.TextHeight(kTitle);
    PrintCentered(surface, y, kTitle);
    UseTextFont(surface, kSplashLineSize);
    PrintCentered(surface, y, VersionLabel());
    if (splash == Splash::Final) PrintCentered(surface, y, kReleaseDate);
}

bool ShowsLabels(const RunState& run) { return run.FullScreen || run.PanelsHidden; }

double LabelOverlayHeight(const SceneContext& scene) {
    UseTextFont(scene.Surface, kOverlaySize);
    return kOverlayLines * scene.Surface.TextHeight("X");
}

double LabelTextsHeight(const SceneContext& scene) {
    if (!ShowsLabels(scene.App.Run)) return 0;
    DrawSurface& surface = scene.Surface;
    const MainControls& main = scene.App.Main;
    UseTextFont(surface, kOverlaySize);
    // Room for what the last command did, should it not fit beside the date.
    const double large = (kOverlayRise + 1) * surface.TextHeight("X");
    UseTextFont(surface, kQuietOverlaySize);
    std::ptrdiff_t lines = 0;
    for (const Label* label : {&main.LSatDetail, &main.LStatus, &main.LJD})
        lines += 1 + std::ranges::count(label->Caption.Get(), '\n');
    return large + static_cast<double>(lines) * surface.TextHeight("X");
}

double DateTextTop(const SceneContext& scene) {
    DrawSurface& surface = scene.Surface;
    UseTextFont(surface, kOverlaySize);
    return surface.ScaleHeight - (ShowsLabels(scene.App.Run) ? kOverlayRise * surface.TextHeight("X") : 0);
}

std::optional<std::array<BoxArea, 2>> LabelTextAreas(const SceneContext& scene) {
    if (!ShowsLabels(scene.App.Run)) return std::nullopt;
    DrawSurface& surface = scene.Surface;
    const MainControls& main = scene.App.Main;
    const double top = surface.ScaleHeight - LabelTextsHeight(scene);
    double width = 0;
    for (const Label* label : {&main.LSatDetail, &main.LStatus, &main.LJD})
        for (std::string_view left = label->Caption.Get(); !left.empty();) {
            const std::size_t end = std::min(left.find('\n'), left.size());
            width = std::max(width, surface.TextWidth(left.substr(0, end)));
            left.remove_prefix(std::min(end + 1, left.size()));
        }
    const double dateTop = DateTextTop(scene);
    const double margin = surface.TextWidth("x");
    width = std::max(width, surface.TextWidth(main.LCommandOutput.Caption.Get()));
    const double dateLeft = surface.ScaleWidth - surface.TextWidth(main.LDateTime.Caption.Get()) - margin;
    return std::array<BoxArea, 2>{BoxArea{0, top, margin + width, surface.ScaleHeight},
                                  BoxArea{dateLeft, dateTop, surface.ScaleWidth, surface.ScaleHeight}};
}

void DrawLabelOverlay(const SceneContext& scene) {
    if (!ShowsLabels(scene.App.Run)) return;
    DrawSurface& surface = scene.Surface;
    const MainControls& main = scene.App.Main;
    BeginWords(surface, kOverlayColor);
    UseTextFont(surface, kOverlaySize);
    surface.FontOutlined = true;
    const std::string& date = main.LDateTime.Caption.Get();
    const std::string& said = main.LCommandOutput.Caption.Get();
    const double margin = surface.TextWidth("x");
    const double lineHeight = surface.TextHeight(date);
    const double dateX = surface.ScaleWidth - surface.TextWidth(date) - margin;
    const double bottom = surface.ScaleHeight - kOverlayRise * lineHeight;
    PrintAt(surface, dateX, bottom, date);
    double y = margin + surface.TextWidth(said) + margin <= dateX ? bottom : bottom - lineHeight;
    PrintAt(surface, margin, y, said);

    // What else the panels tell stands above, in a quieter size.
    UseTextFont(surface, kQuietOverlaySize);
    surface.FontOutlined = true;
    surface.ForeColor = kQuietColor;
    const double quietHeight = surface.TextHeight(date);
    for (const Label* label : {&main.LSatDetail, &main.LStatus, &main.LJD}) {
        // From the last line of each text upwards.
        for (std::string_view left = label->Caption.Get(); !left.empty();) {
            const std::size_t line = left.rfind('\n') + 1;
            y -= quietHeight;
            PrintAt(surface, margin, y, left.substr(line));
            left = left.substr(0, line > 0 ? line - 1 : 0);
        }
    }
    surface.FontOutlined = false;
}

void ShowLoadingNotice(const SceneContext& scene) {
    DrawSurface& surface = scene.Surface;
    surface.Cls();
    BeginWords(surface, kWhite);
    UseTextFont(surface, kLoadingSize);
    double y = surface.ScaleHeight / 2 - surface.TextHeight("X");
    for (const std::string_view line : {"Loading Data", "Please Wait..."}) PrintCentered(surface, y, line);
}

void ShowPlottingNotice(const SceneContext& scene) {
    DrawSurface& surface = scene.Surface;
    BeginWords(surface, kPlottingColor);
    UseTextFont(surface, kPlottingSize);
    PrintAt(surface, surface.ScaleWidth - surface.TextWidth(kPlottingNotice),
            surface.ScaleHeight - kPlottingRise * surface.TextHeight("X"), kPlottingNotice);
}

}  // namespace glintara
