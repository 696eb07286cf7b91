#pragma once

// The summary of mouse and keys in the help menu.

#include "state/application.h"

namespace glintara {

/// `MnuTips`: shows the summary in a message box.
void ShowTips(Application& app);

}  // namespace glintara
