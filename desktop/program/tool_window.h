#pragma once

// One tool window that its control opens and closes.

#include <QSettings>
#include <QWidget>
#include <functional>
#include <memory>
#include <string_view>

#include "desktop/main/main_scope.h"
#include "state/observed.h"

namespace glintara::desktop {

/// What tool windows stand on. What it refers to must outlive them.
struct ToolGround {
    MainScope& window;
    QSettings& places;
    std::function<bool(int key, bool shift)> keyPressed;  ///< gets the keys that no control of a window takes
};

/// Which window it is. What is empty is left out.
struct ToolPlan {
    std::string_view name = {};                           ///< by which it is unloaded
    std::function<std::unique_ptr<QWidget>()> make = {};  ///< called when it is first wanted
    /// Edge of the picture, where it stands the first time.
    std::function<Qt::Edge()> edge = [] { return Qt::RightEdge; };
    bool fitsScreen = false;            ///< made smaller where the screen has less room
    std::function<void()> opens = {};   ///< called each time before it is shown
    std::function<void()> closes = {};  ///< called each time before it goes
};

/// Follows `visible`: the window opens and comes to the front when that is set, and closes when it is cleared.
class ToolWindow {
  public:
    ToolWindow(ToolGround ground, Observed<bool>& visible, ToolPlan plan);
    ToolWindow(const ToolWindow&) = delete;
    ToolWindow& operator=(const ToolWindow&) = delete;
    ~ToolWindow();

    /// Opens the window, or brings it to the front.
    void Show();

    /// Closes the window, if that is its name.
    void Unload(std::string_view name);

  private:
    void Follow();
    void BringToFront();

    ToolGround ground_;
    Observed<bool>& visible_;
    ToolPlan plan_;
    std::unique_ptr<QWidget> form_;
};

}  // namespace glintara::desktop
