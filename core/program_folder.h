#pragma once

// Where the program's data stand.

#include <filesystem>

namespace glintara {

/// Folders that the program may find its data in.
struct DataFolders {
    std::filesystem::path executable;  ///< the program's own: a build's, or that of an unpacked archive
    std::filesystem::path installed;   ///< data files of an installation, read only
    std::filesystem::path user;        ///< the user's, made when it is needed
};

/// The folder that the program works in: that of the executable when the data stand there and it can be written to;
/// otherwise the user's, filled with those installed data files that it does not have yet. A file that the user has is
/// never replaced. When the user's folder cannot be made, that of the executable.
std::filesystem::path ProgramFolder(const DataFolders& folders);

}  // namespace glintara
