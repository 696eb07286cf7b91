#include "orbit/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <string>

#include "orbit/little_endian.h"
#include "support/temporary_folder.h"

namespace glintara {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;

std::string WhyNot(const fs::path& path, std::size_t largest = 100) {
    std::string why;
    EXPECT_FALSE(ReadWholeFile(path, largest, &why));
    return why;
}

TEST(WholeFile, IsReadUpToALimit) {
    const TemporaryFolder folder;
    const fs::path path = folder.Path() / "file";
    std::string bytes(100000, 'x');
    bytes[70000] = '\0';
    ASSERT_TRUE(ReplaceFile(path, bytes));
    EXPECT_EQ(ReadWholeFile(path, 100000), bytes);
    EXPECT_EQ(WhyNot(path, 99999), "it is larger than 97 KiB");
    EXPECT_EQ(WhyNot(path, 99), "it is larger than 99 bytes");
}

TEST(WholeFile, OnlyPlainFilesAreRead) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(WhyNot(folder.Path()), "it is a folder");
    EXPECT_EQ(WhyNot(folder.Path() / "none"), "there is no such file");
    EXPECT_EQ(WhyNot(folder.Path() / "pipe"), "it is no plain file") << "and nobody waits for a writer";
    EXPECT_EQ(WhyNot("/dev/zero"), "it is no plain file");
    ASSERT_TRUE(ReplaceFile(folder.Path() / "file", "bytes"));
    fs::create_symlink("file", folder.Path() / "link");
    EXPECT_EQ(ReadWholeFile(folder.Path() / "link", 100), "bytes");
    EXPECT_EQ(WhyNot(folder.Path() / "file" / "below"), "there is no such file");
}

TEST(WholeFile, APipeIsReadToItsEnd) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    ASSERT_EQ(write(ends[1], "some text", 9), 9);
    close(ends[1]);
    EXPECT_EQ(ReadToEnd(ends[0], 9), "some text");
    close(ends[0]);

    const int endless = open("/dev/zero", O_RDONLY);
    std::string why;
    EXPECT_FALSE(ReadToEnd(endless, std::size_t{1} << 20, &why));
    EXPECT_EQ(why, "it is larger than 1 MiB");
    close(endless);
}

TEST(WholeFile, StaysAsItWasWhenTheNewOneCannotBeWritten) {
    const TemporaryFolder folder;
    const fs::path path = folder.Path() / "file";
    ASSERT_TRUE(ReplaceFile(path, "before"));
    fs::create_directory(folder.Path() / "file.new");  // where the new one would be written
    EXPECT_FALSE(ReplaceFile(path, "after"));
    EXPECT_EQ(ReadWholeFile(path, 100), "before");
}

TEST(WholeFile, NothingIsLeftBesideItWhenItCannotBeRenamed) {
    const TemporaryFolder folder;
    const fs::path path = folder.Path() / "file";
    fs::create_directories(path / "in the way");  // no file takes the place of a folder that holds something
    EXPECT_FALSE(ReplaceFile(path, "after"));
    EXPECT_TRUE(fs::is_directory(path / "in the way"));
    EXPECT_EQ(folder.FileCount(), 1) << "file.new has gone";
}

TEST(WholeFile, WhyItWasNotReplacedIsTold) {
    const TemporaryFolder folder;
    const auto whyNot = [](const fs::path& path) {
        std::string why;
        EXPECT_FALSE(ReplaceFile(path, "bytes", &why));
        return why;
    };
    fs::create_directory(folder.Path() / "below");
    EXPECT_EQ(whyNot(folder.Path() / "below"), "it is a folder");
    EXPECT_EQ(whyNot(folder.Path() / "none" / "file"), "there is no such folder");
    EXPECT_EQ(whyNot("/dev/full"), "it is no plain file") << "and a device is not exchanged for a file";
    EXPECT_EQ(whyNot(folder.Path() / std::string(300, 'x')), "its name is too long");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_EQ(folder.FileCount(), 1);
}

TEST(WholeFile, BehindALinkIsReplacedWithItsRights) {
    const TemporaryFolder folder;
    const fs::path file = folder.Path() / "file";
    ASSERT_TRUE(ReplaceFile(file, "before"));
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    fs::create_symlink("file", folder.Path() / "link");
    ASSERT_TRUE(ReplaceFile(folder.Path() / "link", "after"));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link"));
    EXPECT_EQ(ReadWholeFile(file, 100), "after");
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(folder.FileCount(), 2);

    fs::create_symlink("new", folder.Path() / "ahead");
    EXPECT_TRUE(ReplaceFile(folder.Path() / "ahead", "made"));
    EXPECT_EQ(ReadWholeFile(folder.Path() / "new", 100), "made") << "a link may lead to where no file is yet";
}

TEST(LittleEndian, NumbersByteByByte) {
    ByteWriter writer;
    writer.Integer(0x01020304);
    writer.Integer(-2);
    writer.Real(-0.15625);  // -1.25 / 8: sign, exponent 1020, fraction a quarter
    writer.Text("ab");
    const std::string bytes = writer.Take();
    EXPECT_EQ(bytes, std::string("\x04\x03\x02\x01\xFE\xFF\xFF\xFF\0\0\0\0\0\0\xC4\xBF\x02\0ab", 20));
    EXPECT_EQ(writer.Take(), "");

    ByteReader reader(bytes);
    EXPECT_EQ(reader.Integer(), 0x01020304);
    EXPECT_EQ(reader.Integer(), -2);
    EXPECT_EQ(reader.Real(), -0.15625);
    EXPECT_EQ(reader.Rest(), 4U);
    EXPECT_EQ(reader.Text(), "ab");
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.Integer(), 0);
    EXPECT_TRUE(reader.Failed());
}

TEST(LittleEndian, ATextThatIsCutOffIsNone) {
    ByteReader reader(std::string_view("\x03\0ab", 4));
    EXPECT_EQ(reader.Text(), "");
    EXPECT_TRUE(reader.Failed());
    EXPECT_EQ(reader.Rest(), 0U) << "nothing behind it is taken for something";

    ByteWriter writer;
    writer.Text(std::string(70000, 'x'));
    EXPECT_EQ(writer.Take().size(), 2U + 65535U);
}

}  // namespace
}  // namespace glintara
