#pragma once

// What stands over the picture without being painted into it: the box of the object finder and the readouts of the sky
// pointer. The mouse goes through both.

#include "desktop/main/picture_box.h"
#include "state/application.h"

namespace glintara::desktop {

/// Puts both over `picture`, whose children they are: `LFInfo` and `FSkyMouse`, shown while their controls are.
void PutOverPicture(Application& app, PictureBox& picture);

}  // namespace glintara::desktop
