#pragma once

// A satellite's surface model as text to be read by people.

#include <string>
#include <string_view>

#include "state/satellite_record.h"

namespace glintara {

/// An angle of the rotation axis in degrees, from radians, cut to three decimals: as its boxes and the text have it.
std::string AxisText(double radians);

/// `line` with `value` behind it, parted by ";". Blanks before the value are left out; one that holds a ";" reads
/// "InvalidString".
std::string AddLinePar(std::string line, std::string_view value);

/// The text of the model, in lines ended by CR LF but for the last; `orientation` is the name of its attitude type. The
/// program reads nothing of it back.
std::string SurfaceModelText(const SatRecord& satellite, std::string_view orientation);

}  // namespace glintara
