// The workspace in the window: its file dialogs, keys, questions and title, and files dropped on it.

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTimer>
#include <QUrl>

#include "core/workspace.h"
#include "desktop/main/bindings.h"
#include "desktop/program/window_fixture.h"
#include "orbit/files.h"
#include "orbit/location.h"

namespace glintara::desktop {
namespace {

class WorkspaceWindowTest : public WindowTest {
  protected:
    /// Does `act` with the next dialog of its kind that comes up.
    template <class Dialog>
    void Expect(const std::function<void(Dialog&)>& act) {
        auto* const look = new QTimer(&window_);
        QObject::connect(look, &QTimer::timeout, &window_, [this, look, act] {
            auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            look->deleteLater();
            ++dialogs_;
            act(*dialog);
        });
        look->start(1);
    }

    void ExpectFileDialog(const fs::path& choice) {
        Expect<QFileDialog>([this, choice](QFileDialog& dialog) {
            title_ = dialog.windowTitle();
            filters_ = dialog.nameFilters();
            if (choice.empty()) {
                dialog.reject();
                return;
            }
            dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(choice.string()));
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }

    void ExpectBox(QMessageBox::StandardButton answer) {
        Expect<QMessageBox>([this, answer](QMessageBox& box) {
            question_ = box.text();
            if (neverAgain_) box.checkBox()->setChecked(true);
            box.button(answer)->click();
        });
    }

    void PressKeys(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        // A dialog before has left no window active.
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        QTest::keyClick(&window_.Picture(), key, modifiers);
    }

    void Drop(const QList<QUrl>& urls) { DropOn(window_, urls); }

    void DropOn(QWidget& widget, const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        const QPointF middle(300, 300);
        QDragEnterEvent enter(middle.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &enter);
        taken_ = enter.isAccepted();
        if (!taken_) return;
        QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &drop);
        QTest::qWait(1);
    }

    static QUrl Url(const fs::path& file) { return QUrl::fromLocalFile(QString::fromStdString(file.string())); }

    fs::path File(const std::string& name) const { return folder_.Path() / name; }

    int dialogs_ = 0;
    QString title_;
    QStringList filters_;
    QString question_;
    bool neverAgain_ = false;
    bool taken_ = false;
};

TEST_F(WorkspaceWindowTest, IsSavedAndOpenedByKeys) {
    Settle();
    EXPECT_FALSE(EntryNamed("Reload Workspace")->isEnabled());
    SetLocation(app_.Data, {0.8, 0.2, 300});
    // Without a file Ctrl+S asks for one.
    ExpectFileDialog(File("night"));
    PressKeys(Qt::Key_S);
    ASSERT_TRUE(WaitFor([&] { return dialogs_ == 1; }));
    EXPECT_EQ(title_, "Save Glintara Configuration");
    EXPECT_EQ(filters_, QStringList("Configuration Files (*.cst)"));
    EXPECT_TRUE(fs::exists(File("night.cst"))) << "the ending is added";
    EXPECT_EQ(window_.windowTitle(), "night.cst - Glintara - v.1.5.2");

    view_.ViewLat = 0.5;
    ExpectBox(QMessageBox::Yes);
    PressKeys(Qt::Key_S);
    ASSERT_TRUE(WaitFor([&] { return dialogs_ == 2; }));
    EXPECT_EQ(question_, "Save Workspace (night.cst)\nAre you sure?");

    view_.ViewLat = 0;
    ExpectFileDialog(File("night.cst"));
    PressKeys(Qt::Key_O);
    ASSERT_TRUE(WaitFor([&] { return dialogs_ == 3; }));
    EXPECT_EQ(title_, "Open Glintara Configuration");
    EXPECT_EQ(view_.ViewLat, 0.5);
    EXPECT_EQ(app_.Data.Site.SiteAlt, 300);
    WaitForPicture();

    view_.ViewLat = 0.1;
    EntryNamed("Reload Workspace")->trigger();
    EXPECT_EQ(view_.ViewLat, 0.5);

    ExpectFileDialog({});
    PressKeys(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(WaitFor([&] { return dialogs_ == 4; }));
    EXPECT_EQ(title_, "Save Glintara Configuration");
}

TEST_F(WorkspaceWindowTest, TheStartUpWorkspaceIsLoadedAtTheEndOfTheOpening) {
    Settle();
    LoadIridium();
    SetLocation(app_.Data, {0.8, 0.2, 300});
    EntryNamed("Save as Start-up Workspace")->trigger();
    ASSERT_TRUE(fs::exists(File("startup.cst")));
    DesktopProgram second{QString::fromStdString(File("other.ini").string())};
    second.Start(folder_.Path());
    ASSERT_TRUE(WaitFor([&] { return second.State().Main.Timer5.Enabled && !second.State().Run.Opening; }));
    EXPECT_EQ(second.State().Data.SatCount, 86);
    EXPECT_EQ(second.State().Data.Site.SiteAlt, 300);
    EXPECT_EQ(second.Window().windowTitle(), "startup.cst - Glintara - v.1.5.2");
    EXPECT_FALSE(second.State().Main.TimerHRot.Enabled);
}

TEST_F(WorkspaceWindowTest, ClosingAsksOnceForWhatWouldBeLost) {
    Settle();
    LoadIridium();
    ExpectBox(QMessageBox::Cancel);
    window_.close();
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(dialogs_, 1);
    EXPECT_EQ(question_,
              "Satellites, surfaces, views or the place have changed since they were last saved.\nSave Workspace?");

    // Saving needs a name, and who has none stays.
    ExpectBox(QMessageBox::Yes);
    ExpectFileDialog({});
    PressKeys(Qt::Key_Q);
    ASSERT_TRUE(WaitFor([&] { return dialogs_ == 3; }));
    EXPECT_TRUE(window_.isVisible());

    ExpectBox(QMessageBox::Yes);
    ExpectFileDialog(File("evening.cst"));
    PressKeys(Qt::Key_Q);
    ASSERT_TRUE(WaitFor([&] { return !window_.isVisible(); }));
    EXPECT_EQ(dialogs_, 5);
    EXPECT_TRUE(fs::exists(File("evening.cst")));
}

TEST_F(WorkspaceWindowTest, WhoDoesNotWantToBeAskedIsNot) {
    Settle();
    LoadIridium();
    neverAgain_ = true;
    ExpectBox(QMessageBox::No);
    EXPECT_TRUE(window_.close());
    EXPECT_EQ(dialogs_, 1);
    EXPECT_FALSE(fs::exists(File("startup.cst"))) << "it never saves by itself";

    // The answer is kept for the next start.
    DesktopProgram second{QString::fromStdString((folder_.Path() / "places.ini").string())};
    EXPECT_FALSE(second.State().Run.AskToSave);
}

TEST_F(WorkspaceWindowTest, FilesOfTheCommandLineAreOpenedFirst) {
    Settle();
    ASSERT_TRUE(program_.Core().Files.SaveWorkspace(File("night.cst")));
    ASSERT_TRUE(program_.Core().Files.SaveWorkspace(File("startup.cst")));
    const QString sets = GLINTARA_SOURCE_DIR "/data/examples/stations.tle";
    const auto opened = [this](const QStringList& files) {
        auto program = std::make_unique<DesktopProgram>(QString::fromStdString(File("others.ini").string()));
        program->Start(folder_.Path(), {}, files);
        EXPECT_TRUE(WaitFor([&] { return program->State().Main.Timer5.Enabled && !program->State().Run.Opening; }));
        return program;
    };
    auto program = opened({QString::fromStdString(File("night.cst").string())});
    EXPECT_EQ(program->State().Run.WorkspaceFile.Get(), File("night.cst").string());
    program = opened({sets});
    EXPECT_EQ(program->State().Run.WorkspaceFile.Get(), File("startup.cst").string()) << "element sets go on top of it";
    EXPECT_NE(program->State().Main.TTLE.Text.Get().find("HST"), std::string::npos);
    program = opened({});
    EXPECT_TRUE(program->State().Main.TTLE.Text.Get().empty());
}

TEST_F(WorkspaceWindowTest, DroppedFilesAreTaken) {
    Settle();
    SetLocation(app_.Data, {0.8, 0.2, 300});
    ASSERT_TRUE(program_.Core().Files.SaveWorkspace(File("night.cst")));
    ASSERT_TRUE(program_.Core().Files.SaveWorkspace(File("other.cst")));
    view_.ViewLat = 0.7;
    Drop({Url(File("places.ini")), Url(File("night.cst"))});
    EXPECT_TRUE(taken_);
    ASSERT_TRUE(WaitFor([&] { return app_.Run.WorkspaceFile.Get() == File("night.cst").string(); }));
    EXPECT_NE(view_.ViewLat, 0.7);

    Drop({Url(GLINTARA_SOURCE_DIR "/data/examples/stations.tle")});
    ASSERT_TRUE(WaitFor([&] { return !main_.TTLE.Text.Get().empty(); }));
    EXPECT_TRUE(main_.TTLE.Text.Get().find("HST") != std::string::npos);

    Drop({Url(GLINTARA_SOURCE_DIR "/data/examples/stations.tle"), Url(GLINTARA_SOURCE_DIR "/data/examples/geo.tle")});
    ASSERT_TRUE(WaitFor([&] { return main_.LCommandOutput.Caption.Get().starts_with("21 element sets"); }));
    EXPECT_TRUE(main_.TTLE.Text.Get().starts_with("HST")) << "the second came behind the first";

    ASSERT_TRUE(ReplaceFile(File("today.csv"),
                            "OBJECT_NAME,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,ARG_OF_PERICENTER,"
                            "MEAN_ANOMALY,NORAD_CAT_ID,BSTAR\nTODAY,2026-08-01T00:00:00,15.7,.0006,51.6,247.4,130.5,"
                            "325.0,270001,0\n"));
    Drop({Url(File("today.csv"))});
    ASSERT_TRUE(WaitFor([&] { return main_.TTLE.Text.Get().starts_with("TODAY\r\n1 T0001U "); }));

    Drop({QUrl("https://example.org/night.cst")});
    EXPECT_FALSE(taken_) << "only files of this computer";

    QPlainTextEdit* const box = window_.findChild<QPlainTextEdit*>();
    ASSERT_NE(box, nullptr);
    DropOn(*box->viewport(), {Url(GLINTARA_SOURCE_DIR "/data/examples/iridium.tle")});
    ASSERT_TRUE(WaitFor([&] { return main_.TTLE.Text.Get().starts_with("IRIDIUM 7 [+]"); }))
        << "the file, not its name";

    // Changes are not lost to a file that slips from the hand.
    LoadIridium();
    ExpectBox(QMessageBox::Cancel);
    Drop({Url(File("night.cst"))});
    ASSERT_TRUE(WaitFor([&] { return dialogs_ == 1; }));
    EXPECT_EQ(app_.Data.SatCount, 86);
}

}  // namespace
}  // namespace glintara::desktop
