#pragma once

// The version of the program and of its engine: here and nowhere else. CMake reads it from the line below.

#include <string>
#include <string_view>

namespace glintara {

inline constexpr std::string_view kVersion = "1.5.2";

/// The version as title and splash show it.
inline std::string VersionLabel() { return "v." + std::string(kVersion); }

}  // namespace glintara
