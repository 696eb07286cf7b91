#include "desktop/program/editor_window.h"

#include "desktop/flare/form_mirror.h"
#include "flare/surface_editor.h"

namespace glintara::desktop {

namespace {

constexpr std::string_view kForm = "FormMirror";

}  // namespace

EditorWindow::EditorWindow(Application& app, const ToolGround& ground)
    : app_(app), window_(ground, app.Mirror.Visible, {.name = kForm, .make = [&app, &window = ground.window] {
                                                          return std::make_unique<FormMirror>(app, &window);
                                                      }}) {}

void EditorWindow::Show() {
    surface_editor::OpenWindow(app_);
    if (app_.Mirror.Visible) window_.Show();
}

void EditorWindow::Unload(std::string_view name) {
    if (name == kForm) surface_editor::CloseWindow(app_);
}

}  // namespace glintara::desktop
