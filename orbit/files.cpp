#include "orbit/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace glintara {

namespace {

constexpr std::size_t kPartBytes = 65536;
constexpr std::size_t kMebibyte = std::size_t{1} << 20;
constexpr std::size_t kKibibyte = std::size_t{1} << 10;

/// An open file that is closed again.
class Descriptor {
  public:
    // Without waiting: a pipe opens only when somebody writes to it.
    explicit Descriptor(const std::filesystem::path& path)
        : number_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }

    int Number() const { return number_; }

  private:
    int number_;
};

std::nullopt_t Fail(std::string* why, std::string reason) {
    if (why != nullptr) *why = std::move(reason);
    return std::nullopt;
}

// The system's own texts follow the user's language; the program's do not.
std::string ReasonOf(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return "there is no such file";
        case EACCES:
        case EPERM:
            return "it may not be read";
        default:
            return "it cannot be read";
    }
}

std::string SizeText(std::size_t bytes) {
    if (bytes >= kMebibyte) return std::to_string(bytes / kMebibyte) + " MiB";
    if (bytes >= kKibibyte) return std::to_string(bytes / kKibibyte) + " KiB";
    return std::to_string(bytes) + " bytes";
}

std::string TooLarge(std::size_t largest) { return "it is larger than " + SizeText(largest); }

bool WriteFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

}  // namespace

std::optional<std::string> ReadToEnd(int descriptor, std::size_t largest, std::string* why) {
    std::string content;
    std::array<char, kPartBytes> part;
    for (;;) {
        const ssize_t count = read(descriptor, part.data(), part.size());
        if (count == 0) return content;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Fail(why, ReasonOf(errno));
        if (static_cast<std::size_t>(count) > largest - content.size()) return Fail(why, TooLarge(largest));
        content.append(part.data(), static_cast<std::size_t>(count));
    }
}

std::optional<std::string> ReadWholeFile(const std::filesystem::path& path, std::size_t largest, std::string* why) {
    const Descriptor file(path);
    if (file.Number() < 0) return Fail(why, ReasonOf(errno));
    struct stat status {};
    if (fstat(file.Number(), &status) != 0) return Fail(why, ReasonOf(errno));
    if (S_ISDIR(status.st_mode)) return Fail(why, "it is a folder");
    if (!S_ISREG(status.st_mode)) return Fail(why, "it is no plain file");
    return ReadToEnd(file.Number(), largest, why);
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
