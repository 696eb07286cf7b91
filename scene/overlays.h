#pragma once

// Words over the picture. Each function writes with the font and colours that it needs; the font is the regular
// `kTextFont` afterwards.

#include <array>
#include <optional>
#include <string_view>

#include "scene/view_geometry.h"

namespace glintara {

/// The face of all words but the title. The surface stands another in for it that the system has.
inline constexpr std::string_view kTextFont = "Courier New";

inline constexpr std::string_view kTitleFont = "Palatino Linotype";

/// Puts the regular text font in force.
void UseTextFont(DrawSurface& surface, double size);

/// The program's title in the upper left corner: on one line when the box is wide enough, on two otherwise.
void DrawTitleBlock(const SceneContext& scene);

/// The corner that the title takes, up to the edges of the picture. The font is the title's afterwards.
BoxArea TitleArea(DrawSurface& surface);

/// The splash of the opening, in the middle of the picture: as much as `Run.SplashShown` tells, nothing after it.
void DrawSplash(const SceneContext& scene);

/// What the panels would tell, while they are hidden (`FullScreen`, `PanelsHidden`): date and time in the lower right
/// corner, at the left what the last command did, and above that, smaller, the working satellite's height, the status
/// and the line of the Julian date.
void DrawLabelOverlay(const SceneContext& scene);

/// Clears the picture on show, and says in its middle that a workspace is being loaded.
void ShowLoadingNotice(const SceneContext& scene);

/// Height of the strip at the lower edge of the picture that those texts are in, twips, with room for some more lines.
double LabelOverlayHeight(const SceneContext& scene);

/// Height of those texts themselves, as they stand or a little more: they change from one picture to the next. Twips
/// from the lower edge; 0 while they are not shown. The font is another one afterwards.
double LabelTextsHeight(const SceneContext& scene);

/// The corners that those texts take while they are shown: the left one, and that of the date. The font is another one
/// afterwards.
std::optional<std::array<BoxArea, 2>> LabelTextAreas(const SceneContext& scene);

/// Upper edge of the date in the lower right corner, twips; the lower edge of the picture while it is not shown. The font
/// is another one afterwards.
double DateTextTop(const SceneContext& scene);

/// Whether the picture tells what the panels do: in full screen, and while they are hidden.
bool ShowsLabels(const RunState& run);

/// The words that a fine picture is being made, in the lower right corner of the picture on show.
void ShowPlottingNotice(const SceneContext& scene);

}  // namespace glintara
