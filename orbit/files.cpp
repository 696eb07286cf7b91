#include "orbit/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace glintara {

namespace {

constexpr std::size_t kPartBytes = 65536;
constexpr std::size_t kMebibyte = std::size_t{1} << 20;
constexpr std::size_t kKibibyte = std::size_t{1} << 10;

/// Rights of a new file, less those that the user's mask takes away.
constexpr mode_t kNewFileMode = 0666;

constexpr mode_t kAllRights = 0777;

/// An open file that is closed again.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
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

std::string WriteReasonOf(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return "there is no such folder";
        case EACCES:
        case EPERM:
        case EROFS:
            return "it may not be written there";
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return "there is no room for it";
        case EISDIR:
            return "it is a folder";
        case ENAMETOOLONG:
            return "its name is too long";
        default:
            return "it cannot be written";
    }
}

/// Writes a file whose bytes have reached the disk, with the rights of `like` when there is such a file; 0, or the
/// error.
int WriteFile(const std::filesystem::path& path, const std::filesystem::path& like, std::string_view bytes) {
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kNewFileMode));
    if (file.Number() < 0) return errno;
    struct stat status {};
    if (stat(like.c_str(), &status) == 0 && fchmod(file.Number(), status.st_mode & kAllRights) != 0) return errno;
    while (!bytes.empty()) {
        const ssize_t count = write(file.Number(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    // Otherwise a power cut soon after could leave the new name with nothing behind it.
    return fsync(file.Number()) == 0 ? 0 : errno;
}

/// The file that `path` names, behind links; it need not be there.
std::filesystem::path BehindLinks(std::filesystem::path path) {
    constexpr int kMostLinks = 40;
    std::error_code failed;
    for (int link = 0; link < kMostLinks && std::filesystem::is_symlink(path, failed); ++link) {
        const std::filesystem::path next = std::filesystem::read_symlink(path, failed);
        if (failed) break;
        path = path.parent_path() / next;  // which is `next` alone when that begins at the root
    }
    return path;
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
    // Without waiting: a pipe opens only when somebody writes to it.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.Number() < 0) return Fail(why, ReasonOf(errno));
    struct stat status {};
    if (fstat(file.Number(), &status) != 0) return Fail(why, ReasonOf(errno));
    if (S_ISDIR(status.st_mode)) return Fail(why, "it is a folder");
    if (!S_ISREG(status.st_mode)) return Fail(why, "it is no plain file");
    return ReadToEnd(file.Number(), largest, why);
}

bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes, std::string* why) {
    const std::filesystem::path target = BehindLinks(path);
    std::error_code failed;
    const std::filesystem::file_status status = std::filesystem::status(target, failed);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        Fail(why, std::filesystem::is_directory(status) ? "it is a folder" : "it is no plain file");
        return false;
    }
    if (std::filesystem::exists(status) && access(target.c_str(), W_OK) != 0) {
        Fail(why, WriteReasonOf(errno));  // a file that its owner protects is not exchanged behind his back
        return false;
    }
    std::filesystem::path beside = target;
    beside += ".new";
    int error = WriteFile(beside, target, bytes);
    if (error == 0) {
        std::filesystem::rename(beside, target, failed);
        if (!failed) return true;
        error = failed.value();
    }
    Fail(why, WriteReasonOf(error));
    std::filesystem::remove(beside, failed);
    return false;
}

}  // namespace glintara
