#pragma once

// Where the program works, and where its data stand.

#include <filesystem>
#include <vector>

namespace glintara {

/// Folders that the program may find its data in.
struct DataFolders {
    std::filesystem::path executable;  ///< the program's own: a build's, or that of an unpacked archive
    std::filesystem::path installed;   ///< data files of an installation, read only
    std::filesystem::path user;        ///< the user's, made when it is needed
};

/// What the program makes of them.
struct ProgramFolders {
    std::filesystem::path work;               ///< becomes the current directory; what the program writes stands there
    std::vector<std::filesystem::path> data;  ///< where else a data file is read that is missing in `work`, in order
};

/// Works in the folder of the executable when the data stand there and it can be written to. Otherwise in the user's,
/// filled with those data files of the executable's folder, or of the installation, that it does not have yet; a file
/// that the user has is never replaced, but for the news page, which belongs to the version. What cannot be copied (a
/// full disk) is read where it stands. When there is no user's folder and none can be made, the program works where its
/// data stand.
ProgramFolders FindProgramFolders(const DataFolders& folders);

}  // namespace glintara
