// Downloads in the whole program, from a server on this computer.

#include "desktop/program/download_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <fstream>
#include <sstream>

#include "desktop/loopback_server.h"
#include "desktop/program/desktop_program.h"
#include "desktop/window_checks.h"
#include "orbit/download_fixture.h"
#include "orbit/message_writer.h"
#include "support/working_folder.h"

namespace glintara::desktop {
namespace {

using glintara::testing::RawAnswer;
using glintara::testing::TextAnswer;
using testing::Named;

struct DownloadWindowTest : ::testing::Test {
    DownloadWindowTest() {
        program.Download().Work().UseHosts({.catalogue = server.Host(), .personal = server.Host()});
        window.resize(900, 640);
        testing::Open(window);
        closer.setInterval(1);
        QObject::connect(&closer, &QTimer::timeout, [this] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            said << box->text();
            icons << box->icon();
            box->accept();
        });
        closer.start();
    }

    QDialog* Form() const { return window.findChild<QDialog*>("FormDownloadTLE"); }
    bool IsOpen() const { return Form() != nullptr && Form()->isVisible(); }

    static QByteArray Example(const char* name) {
        std::ifstream file(std::string(GLINTARA_SOURCE_DIR "/data/examples/") + name, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return QByteArray::fromStdString(text.str());
    }

    void Choose(int line) {
        auto& list = Named<QListView>(*Form(), "LSiteTLE");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(line, 0)).center());
    }

    void Press(const char* button) { QTest::mouseClick(&Named<QPushButton>(*Form(), button), Qt::LeftButton); }
    QString Progress() const { return Named<QLabel>(*Form(), "LProg").text(); }

    glintara::testing::WorkingFolder folder;
    glintara::testing::LoopbackServer server;
    DesktopProgram program{QString::fromStdString((folder.Path() / "places.ini").string())};
    Application& app = program.State();
    MainScope& window = program.Window();
    QTimer closer;
    QStringList said;
    QList<QMessageBox::Icon> icons;
};

TEST_F(DownloadWindowTest, TheMenuOpensItAndEscapeClosesIt) {
    EXPECT_TRUE(app.Main.MnuDownloadTLE.IsWired());
    app.Main.MnuDownloadTLE.Click();
    ASSERT_TRUE(IsOpen());
    EXPECT_FALSE(Form()->isModal());
    Choose(3);
    app.Main.MnuDownloadTLE.Click();
    EXPECT_EQ(app.Download.LSiteTLE.Current, 3) << "an open window is left as it is";
    QTest::keyClick(Form(), Qt::Key_Escape);
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(app.Download.Visible);
    app.Main.MnuDownloadTLE.Click();
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(app.Download.LSiteTLE.Current, kNoLine);
    Press("CExit");
    EXPECT_FALSE(IsOpen());
}

TEST_F(DownloadWindowTest, ItsButtonOpensTheSatelliteList) {
    app.Main.MnuDownloadTLE.Click();
    Press("CSelSat");
    auto* const list = window.findChild<QDialog*>("FormSatellites");
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->isVisible());
}

TEST_F(DownloadWindowTest, ASourceComesInFromTheNetworkAndThenFromTheFolder) {
    server.answers["/NORAD/elements/iridium.txt"] = TextAnswer(Example("iridium.tle"));
    app.Main.MnuDownloadTLE.Click();
    Choose(0);
    Press("CDownUp");
    EXPECT_EQ(app.Data.SatCount, 86);
    EXPECT_EQ(Progress(), "Added Satellites #86 (0 updated)");
    EXPECT_EQ(server.asked.size(), 1);
    Choose(0);
    Press("CDownUp");
    EXPECT_EQ(server.asked.size(), 1);
    EXPECT_EQ(Progress(), "Added Satellites #0 (86 updated); kept text, fetched less than a minute ago");
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "downloads"));
    EXPECT_TRUE(said.isEmpty());
}

TEST_F(DownloadWindowTest, AllFormsAndTriesComeInOverTheNetwork) {
    const QByteArray table =
        "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,ARG_OF_PERICENTER,"
        "MEAN_ANOMALY,EPHEMERIS_TYPE,CLASSIFICATION_TYPE,NORAD_CAT_ID,ELEMENT_SET_NO,REV_AT_EPOCH,BSTAR,"
        "MEAN_MOTION_DOT,MEAN_MOTION_DDOT\r\n"
        "T,2026-001A,2026-11-20T12:25:40.104192,15.7,0.0006703,51.6,247.4,130.5,325.0,0,U,100001,292,5635,0,0,0\r\n";
    const QByteArray json =
        R"([{"OBJECT_NAME":"J","OBJECT_ID":"2026-001A","EPOCH":"2026-11-20T12:25:40.104192","MEAN_MOTION":15.7,)"
        R"("ECCENTRICITY":0.0006703,"INCLINATION":51.6,"RA_OF_ASC_NODE":247.4,"ARG_OF_PERICENTER":130.5,)"
        R"("MEAN_ANOMALY":325.0,"BSTAR":0.0001,"NORAD_CAT_ID":100002}])";
    server.answers["/NORAD/elements/gp.php?GROUP=iridium&FORMAT=csv"] = TextAnswer(table);
    server.answers["/NORAD/elements/stations.txt"] = TextAnswer(json);
    server.answers["/NORAD/elements/gp.php?GROUP=gps-ops&FORMAT=tle"] = TextAnswer(Example("stations.tle"));
    server.answers["/NORAD/elements/visual.txt"] =
        glintara::testing::RedirectTo("/NORAD/elements/gp.php?GROUP=gps-ops&FORMAT=tle");
    app.Main.MnuDownloadTLE.Click();
    for (int line = 0; line < 4; ++line) {
        Choose(line);
        Press("CDownUp");
        EXPECT_TRUE(app.Download.LSiteTLE.Selected.Get().empty()) << line << Progress().toStdString();
    }
    ASSERT_GE(app.Data.SatCount, 3);
    EXPECT_EQ(app.Data.Satellite(1).SatNumber, "A0001");
    EXPECT_EQ(app.Data.Satellite(2).SatNumber, "A0002");
    EXPECT_TRUE(said.isEmpty()) << said.join('\n').toStdString();
}

TEST_F(DownloadWindowTest, EachButtonAndStrategyDoesItsPartInEveryForm) {
    using glintara::testing::SetOf;
    const auto fieldsOf = [](const char* name, const char* number, const char* epoch) {
        const std::string set = SetOf(name, number, epoch);
        const std::size_t line1 = set.find('\n') + 1;
        return glintara::testing::FieldsOf(name, set.substr(line1, 69), set.substr(line1 + 70, 69));
    };
    const std::vector<glintara::testing::MessageFields> old = {fieldsOf("OLD 1", "00001", "09001"),
                                                               fieldsOf("OLD 3", "00003", "09001")};
    const std::vector<glintara::testing::MessageFields> fresh = {fieldsOf("FRESH 1", "00001", "12001"),
                                                                 fieldsOf("FRESH 2", "00002", "12001")};
    const auto answer = [this](const char* path, const std::string& text) {
        server.answers[path] = TextAnswer(QByteArray::fromStdString(text));
    };
    answer("/NORAD/elements/iridium.txt", SetOf("ONE", "00001", "10001") + SetOf("TWO", "00002", "10001"));
    answer("/NORAD/elements/stations.txt", glintara::testing::TableOf(old));
    answer("/NORAD/elements/gps-ops.txt", glintara::testing::JsonOf(fresh, true));
    answer("/NORAD/elements/visual.txt", glintara::testing::XmlOf(fresh));
    app.Main.MnuDownloadTLE.Click();
    const auto press = [this](int line, const char* button) {
        Choose(line);
        Press(button);
        return Progress().section(';', 0, 0);
    };
    EXPECT_EQ(press(0, "CDownAdd"), "Added Satellites #2");
    app.Data.Satellite(1).Selected = true;
    app.Data.Satellite(2).Selected = false;
    Named<QRadioButton>(*Form(), "OUpdateAlways1").setChecked(true);
    EXPECT_EQ(press(1, "CDownOUP"), "Added Satellites #0 (0 updated)") << "none of them is newer";
    EXPECT_EQ(press(1, "CDownUp"), "Added Satellites #2 (0 updated)") << "a second of number 1, and number 3";
    app.Data.SatCount = 2;
    Named<QCheckBox>(*Form(), "COnlySel").setChecked(true);
    EXPECT_EQ(press(2, "CDownOUP"), "Added Satellites #0 (1 updated)") << "only the selected one";
    EXPECT_EQ(app.Data.Satellite(1).Name, "FRESH 1");
    EXPECT_EQ(app.Data.Satellite(2).Name, "TWO");
    Named<QRadioButton>(*Form(), "OUpdateAlways0").setChecked(true);
    Named<QCheckBox>(*Form(), "COnlySel").setChecked(false);
    EXPECT_EQ(press(3, "CDownOUP"), "Added Satellites #0 (2 updated)");
    EXPECT_EQ(app.Data.Satellite(2).Name, "FRESH 2");
    EXPECT_EQ(press(3, "CDownAdd"), "Added Satellites #2");
    EXPECT_EQ(app.Data.SatCount, 4);
    EXPECT_TRUE(said.isEmpty()) << said.join('\n').toStdString();
}

TEST_F(DownloadWindowTest, AFailureIsToldAndChangesNothing) {
    app.Main.TTLE.Text = std::string("typed");
    app.Main.MnuDownloadTLE.Click();
    Choose(25);
    Press("CDownAdd");
    EXPECT_EQ(Progress(), "Error");
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].startsWith("Download Error\n\nCLASSFD (127.0.0.1:")) << said[0].toStdString();
    EXPECT_EQ(icons[0], QMessageBox::Critical);
    EXPECT_EQ(app.Data.SatCount, 0);
    EXPECT_EQ(app.Main.TTLE.Text.Get(), "typed");
    server.Close();
    Choose(0);
    Press("CDownAdd");
    ASSERT_EQ(said.size(), 2);
    EXPECT_TRUE(said[1].contains("127.0.0.1 refuses the connection")) << said[1].toStdString();
}

TEST_F(DownloadWindowTest, AnAnswerWithoutEndIsGivenUp) {
    server.answers["/tle/classfd.tle"] = {
        .bytes = "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(65536, '\n'), .closes = false, .endless = true};
    app.Main.MnuDownloadTLE.Click();
    Choose(25);
    Press("CDownAdd");
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].endsWith("the answer is larger than 32 MiB.")) << said[0].toStdString();
    EXPECT_EQ(Progress(), "Error");
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.open == 0; }));
}

TEST_F(DownloadWindowTest, AWorkspaceThatIsLoadedMeanwhileTakesWhatComes) {
    const std::filesystem::path file = folder.Path() / "empty.cst";
    ASSERT_TRUE(program.Core().Files.SaveWorkspace(file));
    server.answers["/NORAD/elements/stations.txt"] = TextAnswer(Example("stations.tle"));
    app.Main.MnuDownloadTLE.Click();
    Choose(1);
    Press("CDownUp");
    const int stations = app.Data.SatCount;
    ASSERT_GT(stations, 1);
    server.answers["/NORAD/elements/iridium.txt"] = TextAnswer(Example("iridium.tle"));
    bool loaded = false;
    server.hook = [&](const QByteArray&) { loaded = program.Core().Files.LoadWorkspaceCommand(file, false); };
    Choose(0);
    Press("CDownUp");
    EXPECT_TRUE(loaded);
    EXPECT_EQ(app.Data.SatCount, 86);
    EXPECT_EQ(Progress(), "Added Satellites #86 (0 updated)");
}

TEST_F(DownloadWindowTest, ClosingTheWindowEndsADownload) {
    server.answers["/NORAD/elements/iridium.txt"] = {.bytes = "HTTP/1.1 200 OK\r\n\r\nhalf", .closes = false};
    app.Main.MnuDownloadTLE.Click();
    Choose(0);
    server.hook = [&](const QByteArray&) { QMetaObject::invokeMethod(Form(), &QWidget::close, Qt::QueuedConnection); };
    Press("CDownAdd");
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(app.Download.Running);
    EXPECT_TRUE(said.isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.open == 0; }));
}

TEST_F(DownloadWindowTest, TheProgramIsLeftWhileADownloadRuns) {
    server.answers["/NORAD/elements/iridium.txt"] = {.bytes = "HTTP/1.1 200 OK\r\n\r\nhalf", .closes = false};
    app.Main.MnuDownloadTLE.Click();
    Choose(0);
    server.hook = [&](const QByteArray&) { QMetaObject::invokeMethod(&window, &QWidget::close, Qt::QueuedConnection); };
    Press("CDownAdd");
    EXPECT_FALSE(app.Download.Running);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }));
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(app.Data.SatCount, 0);
    EXPECT_TRUE(said.isEmpty());
}

}  // namespace
}  // namespace glintara::desktop
