#pragma once

// The views that the user keeps, entering them, and going through them by itself.

#include "core/simulated_time.h"
#include "state/application.h"

namespace glintara {

/// Fills `view` with options, camera, sky lock, stars and clock as they stand; it is used then.
void CaptureView(const Application& app, SavedView& view);

/// Puts everything but the clock back as `CaptureView` found it, to the last bit, and shows it in labels and menus.
/// Numbers that no camera can have are brought back to what can be drawn.
void ApplyView(Application& app, const SavedView& view);

/// Keeps the present view in slot `n` and takes it as the one entered last. Nothing when `n` is not 1 to 10.
void SaveUserView(Application& app, int n);

/// Puts the view of slot `n` back, with its clock: displayed instant, base and offsets. Of a clock that runs the base
/// is read anew at its next step, so it shows now plus the offsets kept. An empty slot changes nothing.
void RestoreUserView(Application& app, int n);

/// The user wants view `n`, 1 to 10: restores it if there is one, and takes it as the one entered last in any case.
void EnterView(Application& app, SimulatedTime& time, int n);

/// Empties all slots.
void ClearViews(Application& app);

/// Takes `n` as the view entered last, 0 for none, and checks its menu entry alone.
void SetPendingView(Application& app, int n);

/// Brings the buttons and menu entries of the views into line with the slots; whoever fills slots by hand calls it.
void ShowSavedViews(Application& app);

/// Wires the buttons and menu entries that enter views, and the buttons that keep them.
void ConnectSavedViews(Application& app, SimulatedTime& time);

/// One step of the slide show: enters the next used view of 1 to 8 after the one entered last. Nothing without any.
void ShowNextView(Application& app, SimulatedTime& time);

/// `MnuQResetView`: the view that the opening ended with, without time offsets and on no kept view. Before the opening
/// has ended, its camera alone.
void ResetView(Application& app, SimulatedTime& time);

}  // namespace glintara
