#pragma once

#include <ostream>

#include "cli/arguments.h"

namespace glintara::cli {

/// `glint where`: where the satellites are at one instant. Throws `Failure`.
void RunWhere(const CommonOptions& options, std::ostream& out);

}  // namespace glintara::cli
