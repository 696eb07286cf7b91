#pragma once

// A folder of a test's own, removed with all that is in it.

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

namespace glintara::testing {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "glintara-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::filesystem::filesystem_error("mkdtemp", name, std::error_code());
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& Path() const { return path_; }

    std::ptrdiff_t FileCount() const {
        return std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator());
    }

  private:
    std::filesystem::path path_;
};

}  // namespace glintara::testing
