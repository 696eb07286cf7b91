#include "desktop/program/tool_window.h"

#include <utility>

#include "desktop/main/beside.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"

namespace glintara::desktop {

ToolWindow::ToolWindow(ToolGround ground, Observed<bool>& visible, ToolPlan plan)
    : ground_(std::move(ground)), visible_(visible), plan_(std::move(plan)) {
    visible_.SetHandler([this] { Follow(); });
}

ToolWindow::~ToolWindow() { visible_.SetHandler({}); }

void ToolWindow::Show() {
    if (visible_)
        BringToFront();
    else
        visible_ = true;
}

void ToolWindow::Unload(std::string_view name) {
    if (name == plan_.name) visible_ = false;
}

void ToolWindow::Follow() {
    if (!visible_) {
        if (plan_.closes) plan_.closes();
        if (form_ && form_->isVisible()) form_->close();
        return;
    }
    if (!form_) {
        form_ = plan_.make();
        if (plan_.fitsScreen) form_->resize(form_->size().boundedTo(RoomOnScreen(ground_.window)));
        RememberPlace(*form_, ground_.places, [this](const QWidget& opening) {
            return PlaceAtEdge(opening, ground_.window, ground_.window.Picture(), plan_.edge());
        });
        HandKeysOn(*form_, ground_.keyPressed);
    }
    if (plan_.opens) plan_.opens();
    BringToFront();
}

void ToolWindow::BringToFront() {
    form_->show();
    form_->raise();
    form_->activateWindow();
}

}  // namespace glintara::desktop
