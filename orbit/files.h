#pragma once

// Whole files in and out.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace glintara {

/// All bytes of a plain file; nothing when it cannot be read, is no plain file (a folder, a pipe, a device), or holds
/// more than `largest`. Never waits for anybody. `why`, when given, is then the reason in words that can follow the
/// file's name and a colon, such as "there is no such file".
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path, std::size_t largest,
                                         std::string* why = nullptr);

/// The same of what an open descriptor of any kind gives until its end; it stays open.
std::optional<std::string> ReadToEnd(int descriptor, std::size_t largest, std::string* why = nullptr);

/// Replaces a file by one with these bytes, written beside it and renamed, so that nobody ever sees half of it: the old
/// one or the new one is there whole, whatever becomes of the program meanwhile. A link is followed. False when that
/// cannot be done, or when what bears the name is no plain file; the old file then stays as it was, and nothing is left
/// beside it. `why` as above.
bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes, std::string* why = nullptr);

}  // namespace glintara
