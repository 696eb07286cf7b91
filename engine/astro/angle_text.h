#pragma once

// Angles as text. Fields are cut, never rounded.

#include <string>

namespace glintara {

/// `radians` as hours of right ascension: 08h05'09". The fields of a negative angle follow from floors: a negative
/// hour, positive minutes and seconds.
std::string HoursToText(double radians);

/// `radians` as degrees: 045°30'09", with a leading "-" when negative. UTF-8.
std::string DegreesToText(double radians);

}  // namespace glintara
