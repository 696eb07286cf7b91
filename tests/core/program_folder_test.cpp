#include "core/program_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "support/ordinary_user.h"
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

    void ExpectWork(const fs::path& folder) const { EXPECT_EQ(FindProgramFolders(folders_).work, folder); }

    /// Where a data file of that name is read.
    std::string Found(const fs::path& file) const {
        const ProgramFolders found = FindProgramFolders(folders_);
        if (fs::exists(found.work / file)) return TextOf(found.work / file);
        for (const fs::path& folder : found.data)
            if (fs::exists(folder / file)) return TextOf(folder / file);
        return "nowhere";
    }
};

TEST_F(ProgramFolderTest, UnpackedArchiveWorksWhereItStands) {
    Write(folders_.executable / "DB001.VDB", "map");
    Write(folders_.installed / "DB001.VDB", "another");
    ExpectWork(folders_.executable);
    EXPECT_FALSE(fs::exists(folders_.user));
}

TEST_F(ProgramFolderTest, InstalledProgramFillsTheUsersFolderOnce) {
    Write(folders_.installed / "DB001.VDB", "map");
    Write(folders_.installed / "SeaSpot.txt", "0\n");
    Write(folders_.installed / "examples" / "iridium.tle", "sets");
    ExpectWork(folders_.user);
    EXPECT_EQ(TextOf(folders_.user / "examples" / "iridium.tle"), "sets");
    EXPECT_EQ(TextOf(folders_.user / "DB001.VDB"), "map");
    EXPECT_EQ(TextOf(folders_.user / "SeaSpot.txt"), "0\n");

    // What the user has changed since stays theirs; what is new in an installation comes in.
    Write(folders_.user / "SeaSpot.txt", "1\n0.5\n0.5\n");
    Write(folders_.installed / "DB005.VDB", "cities");
    ExpectWork(folders_.user);
    EXPECT_EQ(TextOf(folders_.user / "SeaSpot.txt"), "1\n0.5\n0.5\n");
    EXPECT_EQ(TextOf(folders_.user / "DB005.VDB"), "cities");
    EXPECT_FALSE(fs::exists(folders_.user / "DB005.VDB.part"));
}

TEST_F(ProgramFolderTest, TheNewsPageIsThatOfTheVersion) {
    Write(folders_.installed / "DB001.VDB", "map");
    Write(folders_.installed / "Glintara" / "update.html", "news of version 1");
    ExpectWork(folders_.user);
    EXPECT_EQ(TextOf(folders_.user / "Glintara" / "update.html"), "news of version 1");
    Write(folders_.installed / "Glintara" / "update.html", "news of version 2");
    Write(folders_.installed / "DB001.VDB", "another map");
    ExpectWork(folders_.user);
    EXPECT_EQ(TextOf(folders_.user / "Glintara" / "update.html"), "news of version 2");
    EXPECT_EQ(TextOf(folders_.user / "DB001.VDB"), "map");
}

TEST_F(ProgramFolderTest, ACopyThatCannotBeWrittenFillsTheUsersFolderToo) {
    Write(folders_.executable / "DB001.VDB", "map");
    fs::create_directories(folders_.user);
    fs::permissions(home_.Path(), fs::perms::all);
    fs::permissions(folders_.user, fs::perms::all);
    fs::permissions(folders_.executable, fs::perms(0555));
    {
        const testing::OrdinaryUser user;
        ExpectWork(folders_.user);
        EXPECT_EQ(Found("DB001.VDB"), "map");
    }
    fs::permissions(folders_.executable, fs::perms::all);
    EXPECT_EQ(TextOf(folders_.user / "DB001.VDB"), "map");
}

TEST_F(ProgramFolderTest, WithoutAHomeAReadableCopyWorksWhereItStands) {
    Write(folders_.executable / "DB001.VDB", "map");
    fs::permissions(home_.Path(), fs::perms(0555));
    fs::permissions(folders_.executable, fs::perms(0555));
    {
        const testing::OrdinaryUser user;
        ExpectWork(folders_.executable);
        EXPECT_EQ(Found("DB001.VDB"), "map");
    }
    fs::permissions(home_.Path(), fs::perms::all);
    fs::permissions(folders_.executable, fs::perms::all);
}

TEST_F(ProgramFolderTest, WhatCannotBeCopiedIsReadWhereItStands) {
    Write(folders_.installed / "DB001.VDB", "map");
    Write(folders_.installed / "DB002.VDB", "reduced");
    // As on a disk that has no room for the second.
    fs::create_directories(folders_.user / "DB002.VDB.part" / "in the way");
    Write(folders_.user / "startup.cst", "mine");
    ExpectWork(folders_.user);
    EXPECT_FALSE(fs::exists(folders_.user / "DB002.VDB"));
    EXPECT_EQ(Found("DB001.VDB"), "map");
    EXPECT_EQ(Found("DB002.VDB"), "reduced");
    EXPECT_EQ(Found("startup.cst"), "mine");
}

TEST_F(ProgramFolderTest, NoInstalledDataStillGivesTheUserAFolder) {
    ExpectWork(folders_.user);
    EXPECT_TRUE(fs::is_empty(folders_.user));
}

TEST_F(ProgramFolderTest, AFileInPlaceOfTheUsersFolderLeavesTheInstalledData) {
    Write(folders_.user.parent_path(), "no folder");
    Write(folders_.installed / "DB001.VDB", "map");
    ExpectWork(folders_.installed);
    EXPECT_EQ(Found("DB001.VDB"), "map");
}

}  // namespace
}  // namespace glintara
