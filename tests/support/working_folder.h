#pragma once

// A folder of a test's own that is the current one as long as it stands: what the program writes by bare name goes
// there.

#include <filesystem>

#include "support/temporary_folder.h"

namespace glintara::testing {

class WorkingFolder {
  public:
    WorkingFolder() { std::filesystem::current_path(folder_.Path()); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;
    ~WorkingFolder() { std::filesystem::current_path(before_); }

    const std::filesystem::path& Path() const { return folder_.Path(); }

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
    TemporaryFolder folder_;
};

}  // namespace glintara::testing
