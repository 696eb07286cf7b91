#pragma once

// The finder's box while it stands over the picture.

#include <string>

#include "state/application.h"
#include "state/saved_view.h"

namespace glintara {

/// Takes the box `LFInfo` away when another view has taken its object from under the mouse. A resting mouse keeps the
/// box otherwise, also when the running clock carries the object on.
class InfoBoxWatch {
  public:
    explicit InfoBoxWatch(Application& app) : app_(app) {}

    /// The finder has looked: what it shows belongs to the present view.
    void ObjectSought();

    /// A picture has been made, and with it the list of marks.
    void PictureMade();

  private:
    SavedView PresentView() const;
    bool LiesUnderMouse() const;

    Application& app_;
    SavedView view_;  // under which the object was last known to lie there
    int satCount_ = 0;
    std::string satNumber_;  // of the satellite that the box tells of: its place in the list changes
};

}  // namespace glintara
