#pragma once

// The window that selects satellites by what is known of them.

#include "orbit/satellite_selection.h"
#include "state/application.h"

namespace glintara::advanced_selection {

/// What the fields ask for; nothing when one of them cannot be read.
std::optional<SelectionQuest> QuestOf(const AdvSelControls& form);

/// What is to become of the selection.
SelectionMode ModeOf(const AdvSelControls& form);

/// Says beside each field what is wrong with it, counts what matches at this moment, and lets `CApply` be pressed when
/// there is nothing wrong. Nothing happens while the window is closed.
void Refresh(Application& app, ModelTest hasModel);

/// Selects as the fields say, by the displayed moment as it is now, and tells the windows. Nothing happens as long as a
/// field cannot be read.
void CApply_click(Application& app, ModelTest hasModel);

/// Takes all limits away; what is to become of the selection stays.
void CClear_click(Application& app, ModelTest hasModel);

/// Hangs the procedures on the controls of the window.
void Connect(Application& app, ModelTest hasModel);

}  // namespace glintara::advanced_selection
