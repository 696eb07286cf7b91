#pragma once

// The main window: menus, picture, panels. It lays out and wires; what happens is decided elsewhere.

#include <QMainWindow>
#include <QMenuBar>
#include <functional>

#include "desktop/main/mnemonics.h"
#include "desktop/main/picture_box.h"
#include "state/application.h"

namespace glintara::desktop {

/// What the window tells to the program.
struct WindowListener {
    std::function<void(int key, bool shift)> keyPressed;  ///< a key of Qt's, Latin, that no control has taken
    std::function<void()> pasted;                         ///< the keys for it, where no text takes them
    std::function<bool()> mayClose;                       ///< asked when the window is to close
    std::function<void(const QStringList&)> dropped;      ///< files of this computer that were dropped on the window
};

class MainScope : public QMainWindow {
  public:
    /// With `mapTools` the menu bar ends with the developers' menu "Map Tools".
    explicit MainScope(Application& app, bool mapTools = false);

    PictureBox& Picture() { return *picture_; }
    void SetListener(WindowListener listener) { listener_ = std::move(listener); }

    /// Shows the name of the workspace at hand in the title, or none.
    void ShowWorkspace(const std::string& file);

    /// Takes the whole screen, or goes back to where it stood.
    void FillScreen(bool fill);

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void BuildMenus();
    void BuildFileKeys();

    /// Whether an event over a text box is about files that are dragged, and so is the window's.
    bool TakesFiles(QEvent& event);

    void BuildMapTools();
    QWidget* BuildPanels();

    /// Lays the menu bar over the picture, which keeps its size whether menus are shown or not; or puts it back above.
    void PutMenusOverPicture(bool over);
    void LayMenusOverPicture();

    Application& app_;
    PictureBox* picture_;
    QMenuBar* menus_ = nullptr;
    bool menusOverPicture_ = false;
    QRect beforeFilling_;  // where the window stood; null when its manager takes care of that
    Mnemonics letters_;
    WindowListener listener_;
};

}  // namespace glintara::desktop
