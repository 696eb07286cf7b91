#pragma once

// The version of the program and of its engine, and its date: here and nowhere else. CMake reads it from the line below.

#include <string>
#include <string_view>

namespace glintara {

inline constexpr std::string_view kVersion = "1.5.2";

/// When this version was given out.
inline constexpr std::string_view kReleaseDate = "3 January 2010";

/// Program and version, as reports and the about window begin.
inline std::string ProgramTitle() { return "Glintara - v" + std::string(kVersion); }

/// The version as title and splash show it.
inline std::string VersionLabel() { return "v." + std::string(kVersion); }

}  // namespace glintara
