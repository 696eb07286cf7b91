#include "orbit/files.h"

#include <array>
#include <fstream>
#include <system_error>

namespace glintara {

namespace {

constexpr std::size_t kPartBytes = 65536;

bool WriteFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::filesystem::path& path, std::size_t largest) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::string content;
    std::array<char, kPartBytes> part;
    while (file.read(part.data(), part.size()), file.gcount() > 0) {
        content.append(part.data(), static_cast<std::size_t>(file.gcount()));
        if (content.size() > largest) return std::nullopt;
    }
    // A folder opens like a file and fails at the first byte.
    if (file.bad() || !file.eof()) return std::nullopt;
    return content;
}

bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes) {
    std::filesystem::path beside = path;
    beside += ".new";
    std::error_code failed;
    if (WriteFile(beside, bytes)) {
        std::filesystem::rename(beside, path, failed);
        if (!failed) return true;
    }
    std::filesystem::remove(beside, failed);
    return false;
}

}  // namespace glintara
