#pragma once

// The window of the surface editor, which its control opens and closes.

#include <QSettings>
#include <functional>
#include <memory>
#include <string_view>

#include "desktop/flare/form_mirror.h"
#include "desktop/main/main_scope.h"
#include "state/application.h"

namespace glintara::desktop {

/// Makes the window when it is first wanted. What is handed in must outlive it.
class EditorWindow {
  public:
    /// `keyPressed` gets the keys that no control of the window takes.
    EditorWindow(Application& app, MainScope& window, QSettings& places,
                 std::function<bool(int key, bool shift)> keyPressed);
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;
    ~EditorWindow();

    /// Opens the editor on the working satellite, or brings it to the front. Nothing happens without satellites.
    void Show();

    /// Closes the window, if that is its name.
    void Unload(std::string_view name);

  private:
    void Follow();

    Application& app_;
    MainScope& window_;
    QSettings& places_;
    std::function<bool(int, bool)> keyPressed_;
    std::unique_ptr<FormMirror> form_;
};

}  // namespace glintara::desktop
