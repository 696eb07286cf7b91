#include "core/program_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "support/temporary_folder.h"

namespace glintara {
namespace {

namespace fs = std::filesystem;

void Write(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

std::string TextOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class ProgramFolderTest : public ::testing::Test {
  protected:
    testing::TemporaryFolder home_;
    const DataFolders folders_{home_.Path() / "bin", home_.Path() / "share", home_.Path() / "user" / "Glintara"};

    void SetUp() override { fs::create_directories(folders_.executable); }
};

TEST_F(ProgramFolderTest, UnpackedArchiveWorksWhereItStands) {
    Write(folders_.executable / "DB001.VDB", "map");
    Write(folders_.installed / "DB001.VDB", "another");
    EXPECT_EQ(ProgramFolder(folders_), folders_.executable);
    EXPECT_FALSE(fs::exists(folders_.user));
}

TEST_F(ProgramFolderTest, InstalledProgramFillsTheUsersFolderOnce) {
    Write(folders_.installed / "DB001.VDB", "map");
    Write(folders_.installed / "SeaSpot.txt", "0\n");
    Write(folders_.installed / "examples" / "iridium.tle", "sets");
    EXPECT_EQ(ProgramFolder(folders_), folders_.user);
    EXPECT_EQ(TextOf(folders_.user / "examples" / "iridium.tle"), "sets");
    EXPECT_EQ(TextOf(folders_.user / "DB001.VDB"), "map");
    EXPECT_EQ(TextOf(folders_.user / "SeaSpot.txt"), "0\n");

    // What the user has changed since stays theirs; what is new in an installation comes in.
    Write(folders_.user / "SeaSpot.txt", "1\n0.5\n0.5\n");
    Write(folders_.installed / "DB005.VDB", "cities");
    EXPECT_EQ(ProgramFolder(folders_), folders_.user);
    EXPECT_EQ(TextOf(folders_.user / "SeaSpot.txt"), "1\n0.5\n0.5\n");
    EXPECT_EQ(TextOf(folders_.user / "DB005.VDB"), "cities");
    EXPECT_FALSE(fs::exists(folders_.user / "DB005.VDB.part"));
}

TEST_F(ProgramFolderTest, NoInstalledDataStillGivesTheUserAFolder) {
    EXPECT_EQ(ProgramFolder(folders_), folders_.user);
    EXPECT_TRUE(fs::is_empty(folders_.user));
}

TEST_F(ProgramFolderTest, AFileInTheWayLeavesTheExecutablesFolder) {
    Write(folders_.user.parent_path(), "no folder");
    EXPECT_EQ(ProgramFolder(folders_), folders_.executable);
}

}  // namespace
}  // namespace glintara
