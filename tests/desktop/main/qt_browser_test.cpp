#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "desktop/main/qt_services.h"
#include "support/temporary_folder.h"

namespace glintara::desktop {
namespace {

constexpr auto kAddress = "file:///data/Glintara/update.html?r=0123456789&c=1&t=0&m=0&v=152";

/// A computer on which the opener of the desktop is what the test says, or not there.
class QtBrowserTest : public ::testing::Test {
  protected:
    testing::TemporaryFolder folder_;
    const std::string path_ = std::getenv("PATH");
    QtBrowser browser_;
    int failures_ = 0;

    void SetUp() override { setenv("PATH", folder_.Path().c_str(), 1); }
    void TearDown() override { setenv("PATH", path_.c_str(), 1); }

    void InstallOpener(const std::string& commands) const {
        const std::filesystem::path opener = folder_.Path() / "xdg-open";
        std::ofstream(opener) << "#!/bin/sh\n" << commands;
        std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    }

    void Open() {
        browser_.Open(
            kAddress, [this] { ++failures_; });
    }

    std::string Seen() const {
        std::ifstream in(folder_.Path() / "seen");
        return {std::istreambuf_iterator<char>(in), {}};
    }
};

TEST_F(QtBrowserTest, TheDesktopsOpenerGetsTheAddressWhole) {
    const std::string seen = (folder_.Path() / "seen").string();
    InstallOpener("printf %s \"$1\" > '" + seen + ".part'\n/bin/mv '" + seen + ".part' '" + seen + "'\n");
    Open();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Seen().empty(); }));
    EXPECT_EQ(Seen(), kAddress);
    QTest::qWait(50);
    EXPECT_EQ(failures_, 0);
}

TEST_F(QtBrowserTest, AnOpenerThatFindsNoBrowserHasFailed) {
    InstallOpener("exit 3\n");
    Open();
    EXPECT_EQ(failures_, 0) << "the program does not wait for it";
    EXPECT_TRUE(QTest::qWaitFor([this] { return failures_ > 0; }));
    EXPECT_EQ(failures_, 1);
}

TEST_F(QtBrowserTest, AnOpenerThatCannotRunHasFailed) {
    const std::filesystem::path opener = folder_.Path() / "xdg-open";
    std::ofstream(opener) << "#!/no/such/shell\n";
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    Open();
    EXPECT_TRUE(QTest::qWaitFor([this] { return failures_ > 0; }));
    QTest::qWait(20);
    EXPECT_EQ(failures_, 1);
}

TEST_F(QtBrowserTest, WithoutAnOpenerTheDesktopIsAskedInQtsWay) {
    Open();
    EXPECT_EQ(failures_, 1) << "the desktop without a screen has none";
}

TEST_F(QtBrowserTest, AnAnswerAfterTheEndReachesNobody) {
    InstallOpener("exit 3\n");
    {
        QtBrowser brief;
        brief.Open(kAddress, [this] { ++failures_; });
    }
    QTest::qWait(200);
    EXPECT_EQ(failures_, 0);
}

}  // namespace
}  // namespace glintara::desktop
