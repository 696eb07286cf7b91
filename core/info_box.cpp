#include "core/info_box.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "core/views.h"
#include "scene/mouse_place.h"
#include "scene/object_finder.h"

namespace glintara {

namespace {

/// Texts of a view that a running clock changes: the displayed instant and the base. The offsets stand behind them.
constexpr std::ptrdiff_t kClockTexts = 12;

}  // namespace

void InfoBoxWatch::ObjectSought() {
    const FinderState& finder = app_.Run.Finder;
    satCount_ = app_.Data.SatCount;
    if (finder.Found == FoundKind::Satellite) satNumber_ = app_.Data.Satellite(finder.FoundIndex).SatNumber;
    // With a picture on its way the marks are those of a view that may be gone already: that picture decides.
    view_ = app_.Main.Timer2.Enabled ? SavedView() : PresentView();
}

void InfoBoxWatch::PictureMade() {
    if (!app_.Main.LFInfo.Visible) return;
    SavedView now = PresentView();
    if (now == view_ && app_.Data.SatCount == satCount_) return;
    view_ = std::move(now);
    satCount_ = app_.Data.SatCount;
    if (!LiesUnderMouse()) app_.Main.LFInfo.Visible = false;
}

SavedView InfoBoxWatch::PresentView() const {
    SavedView view;
    CaptureView(app_, view);
    if (app_.Main.CRealTime.Value) std::fill_n(view.TimeText.begin(), kClockTexts, std::string());
    return view;
}

bool InfoBoxWatch::LiesUnderMouse() const {
    const std::optional<ScenePoint> mouse = MouseOnPicture(app_);
    if (!mouse) return false;
    const FinderState& finder = app_.Run.Finder;
    const FoundObject now = ObjectAt(app_, *mouse);
    if (now.kind != finder.Found) return false;
    if (now.kind == FoundKind::Satellite) return app_.Data.Satellite(now.index).SatNumber == satNumber_;
    return now.index == finder.FoundIndex;
}

}  // namespace glintara
