#pragma once

// Numbers as they are kept in files and views: no digit is lost.

#include <string>

namespace glintara {

/// Shortest text that reads back to exactly `value`, "." as decimal mark, a zero before it ("0.5"), whole numbers
/// without one. What is not finite reads "nan", "inf", "-inf".
std::string ValueToText(double value);

}  // namespace glintara
