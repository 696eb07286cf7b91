#include "core/value_text.h"

#include "engine/astro/number_text.h"

namespace glintara {

std::string ValueToText(double value) { return ExactNumberText(value); }

}  // namespace glintara
