#pragma once

// Offsets from UTC as text.

#include <string>

namespace glintara {

/// An offset as it stands behind "UTC": "+2", "-3:30", nothing for 0.
std::string ZoneText(int minutes);

}  // namespace glintara
