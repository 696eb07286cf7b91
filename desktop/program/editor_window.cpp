#include "desktop/program/editor_window.h"

#include <utility>

#include "desktop/main/beside.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"
#include "flare/surface_editor.h"

namespace glintara::desktop {

EditorWindow::EditorWindow(Application& app, MainScope& window, QSettings& places,
                           std::function<bool(int key, bool shift)> keyPressed)
    : app_(app), window_(window), places_(places), keyPressed_(std::move(keyPressed)) {
    app.Mirror.Visible.SetHandler([this] { Follow(); });
}

EditorWindow::~EditorWindow() { app_.Mirror.Visible.SetHandler({}); }

void EditorWindow::Show() {
    surface_editor::OpenWindow(app_);
    if (app_.Mirror.Visible) Follow();
}

void EditorWindow::Unload(std::string_view name) {
    if (name == "FormMirror") surface_editor::CloseWindow(app_);
}

void EditorWindow::Follow() {
    if (!app_.Mirror.Visible) {
        if (form_ && form_->isVisible()) form_->close();
        return;
    }
    if (!form_) {
        form_ = std::make_unique<FormMirror>(app_, &window_);
        RememberPlace(*form_, places_, [this](const QWidget& opening) {
            return PlaceAtEdge(opening, window_, window_.Picture(), Qt::RightEdge);
        });
        HandKeysOn(*form_, keyPressed_);
    }
    form_->show();
    form_->raise();
    form_->activateWindow();
}

}  // namespace glintara::desktop
