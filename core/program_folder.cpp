#include "core/program_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <system_error>

#include "core/usage_record.h"
#include "orbit/files.h"
#include "scene/map_files.h"

namespace glintara {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestPage = std::size_t{16} << 20;

bool HoldsData(const fs::path& folder) {
    std::error_code failed;
    return fs::exists(folder / kFineBorderFile, failed);
}

bool CanBeWrittenTo(const fs::path& folder) { return faccessat(AT_FDCWD, folder.c_str(), W_OK, AT_EACCESS) == 0; }

/// Copies a file beside its place and renames it, so that a copy broken off is not taken for the file.
void CopyWhole(const fs::path& from, const fs::path& to) {
    std::error_code failed;
    const fs::path beside = to.string() + ".part";
    fs::copy_file(from, beside, fs::copy_options::overwrite_existing, failed);
    if (!failed) fs::rename(beside, to, failed);
    if (failed) fs::remove(beside, failed);
}

/// Whether a file, named from the folder of the data, belongs to a version of the program: a newer one replaces it.
bool BelongsToVersion(const fs::path& name) { return name == fs::path(kNewsPage).relative_path(); }

bool AreEqual(const fs::path& one, const fs::path& other) {
    const std::optional<std::string> bytes = ReadWholeFile(one, kLargestPage);
    return bytes && bytes == ReadWholeFile(other, kLargestPage);
}

void FillUp(const fs::path& folder, const fs::path& installed) {
    std::error_code failed;
    for (fs::recursive_directory_iterator entry(installed, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const fs::path name = entry->path().lexically_relative(installed);
        const fs::path to = folder / name;
        std::error_code unknown;
        if (entry->is_directory(unknown))
            fs::create_directory(to, unknown);
        else if (entry->is_regular_file(unknown) &&
                 (!fs::exists(to, unknown) || (BelongsToVersion(name) && !AreEqual(entry->path(), to))))
            CopyWhole(entry->path(), to);
    }
}

}  // namespace

ProgramFolders FindProgramFolders(const DataFolders& folders) {
    const bool standsAlone = HoldsData(folders.executable);
    if (standsAlone && CanBeWrittenTo(folders.executable)) return {folders.executable, {}};
    const fs::path& source = standsAlone ? folders.executable : folders.installed;

    std::error_code failed;
    fs::create_directories(folders.user, failed);
    if (!fs::is_directory(folders.user, failed)) return {source, {folders.installed}};
    FillUp(folders.user, source);
    return {folders.user, {source, folders.installed}};
}

}  // namespace glintara
