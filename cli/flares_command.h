#pragma once

#include <ostream>

#include "cli/arguments.h"

namespace glintara::cli {

/// `glint flares`: all passes of flares, or transits, over a place. Throws `Failure`.
void RunFlares(const FlareOptions& options, std::ostream& out);

}  // namespace glintara::cli
