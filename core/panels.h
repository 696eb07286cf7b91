#pragma once

// Which panels and menus the main window shows.

#include "state/application.h"

namespace glintara {

/// A window whose inside is smaller than this in either direction is not laid out, twips.
inline constexpr double kLeastLayoutTwips = 6001;

/// Shows the panels of the present group.
void MenuShow(Application& app);

/// Hides all panels: the picture takes their room.
void MenuHide(Application& app);

/// Shows the other group of panels.
void MenuToggle(Application& app);

/// Shows the menus of the menu bar, or hides them.
void SetMenusVisible(Application& app, bool visible);

/// The window has another size (`ClientWidth`, `ClientHeight`), or other panels: a picture is asked for when that has
/// come to rest. Nothing in full screen, and in a window under `kLeastLayoutTwips`.
void ReSizeWindow(Application& app);

/// The inside of the window has taken this size, twips: keeps it and lays the window out. In full screen, where the
/// layout stays, a picture of the new size is asked for all the same.
void WindowResized(Application& app, double clientWidth, double clientHeight);

/// Gives the whole screen to the picture, without menus and panels, or leaves that.
void SetFullScreen(Application& app, bool fullScreen);

/// In full screen the mouse brings the menus back at the upper edge of the picture, and hides them farther down. It
/// stands at `part` of the picture's height, 0 at the top.
void ShowMenusByEdge(Application& app, double part);

/// Wires the presses on `FrameInfo` and `MnuFullScreen`, and shows the first group.
void ConnectPanels(Application& app);

}  // namespace glintara
