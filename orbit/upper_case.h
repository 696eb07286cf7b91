#pragma once

// Texts that are to be alike whatever the case of their letters.

#include <string>
#include <string_view>

namespace glintara {

/// `text` in capitals, where they are one letter each: of the Latin, Greek and Cyrillic alphabets. UTF-8.
std::string UpperCase(std::string_view text);

}  // namespace glintara
