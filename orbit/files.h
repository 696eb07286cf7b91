#pragma once

// Whole files in and out.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace glintara {

/// All bytes of a file; nothing when it cannot be read, is no plain file of bytes, or holds more than `largest`.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path, std::size_t largest);

/// Replaces a file by one with these bytes, written beside it and renamed, so that nobody ever sees half of it. False
/// when that cannot be done; the old file then stays as it was.
bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace glintara
