#pragma once

// The observer's place under the centre of the view.

#include <string_view>

#include "state/application.h"

namespace glintara {

/// Clears `MnuFloatingSite` and says so in `LCommandOutput`: the user has given a place, which would be lost as soon as
/// the view moves. `which` tells the place, such as "that you typed". Nothing happens when the site does not float.
void EndFloatingSite(Application& app, std::string_view which);

}  // namespace glintara
