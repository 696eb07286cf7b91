// The picture in a file and on paper, without a printer: paper is a PDF file, or one that cannot be written.

#include "desktop/main/picture_output.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QFile>
#include <QRegularExpression>
#include <filesystem>
#include <memory>

#include "state/recording_services.h"
#include "support/ordinary_user.h"
#include "support/temporary_folder.h"

namespace glintara::desktop {
namespace {

namespace fs = std::filesystem;

/// Answers as the test says.
class Answers : public PictureDialogs {
  public:
    std::optional<QString> AskForFile(const QString& name) override {
        suggested = name;
        if (whileAsked) whileAsked();
        return file;
    }

    bool AskForPrinter(QPrinter& printer) override {
        landscape = printer.pageLayout().orientation() == QPageLayout::Landscape;
        document = printer.docName();
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(paper);
        return prints;
    }

    std::optional<QString> file;
    QString suggested;
    QString paper;
    QString document;
    bool landscape = false;
    bool prints = true;
    std::function<void()> whileAsked;
};

struct PictureOutputTest : ::testing::Test {
    PictureOutputTest() {
        picture.fill(Qt::black);
        picture.setPixelColor(3, 2, QColor(10, 200, 30));
        picture.setDevicePixelRatio(2);
        app.Data.SetSimInstant({2018, 1, 20, 7, 42, 9.99}, 2458138.8);
    }

    QString In(const char* name) const { return QString::fromStdString((folder.Path() / name).string()); }

    static QByteArray BytesOf(const QString& file) {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    testing::TemporaryFolder folder;
    testing::RecordingBoxes boxes;
    Events events;
    testing::RecordingWindows windows;
    Application app{boxes, events, windows};
    Answers dialogs;
    QImage picture{320, 200, QImage::Format_RGB32};
    PictureOutput output{app, dialogs, [this] { return picture; }};
};

TEST_F(PictureOutputTest, IsKeptPixelForPixelOfTheDisplay) {
    dialogs.file = In("night.png");
    output.Save();
    const QImage kept(*dialogs.file);
    EXPECT_EQ(kept.size(), QSize(320, 200)) << "not in pixels of the layout";
    EXPECT_EQ(kept.pixelColor(3, 2), QColor(10, 200, 30));
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "Picture saved: night.png");
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(folder.FileCount(), 1) << "nothing is left beside it";
}

TEST_F(PictureOutputTest, TheNameTellsTheDisplayedInstant) {
    output.Save();
    EXPECT_EQ(dialogs.suggested, "Glintara 2018-01-20 07-42-09 UTC.png");
    EXPECT_EQ(folder.FileCount(), 0) << "nothing is written when no file is chosen";
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "");
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(PictureOutputTest, KeepsWhatWasShownWhenItWasAskedFor) {
    dialogs.file = In("night.png");
    dialogs.whileAsked = [this] { picture.fill(Qt::red); };
    output.Save();
    EXPECT_EQ(QImage(*dialogs.file).pixelColor(0, 0), QColor(Qt::black));
}

TEST_F(PictureOutputTest, AFileThatCannotBeWrittenIsToldAndTheOldOneStays) {
    dialogs.file = In("old.png");
    QFile old(*dialogs.file);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    {
        const testing::OrdinaryUser user;
        output.Save();
    }
    fs::permissions(folder.Path(), fs::perms::owner_all);
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Critical);
    const std::string wanted = "Cannot write " + (folder.Path() / "old.png").string() + ": ";
    EXPECT_EQ(boxes.messages[0].text.substr(0, wanted.size()), wanted);
    EXPECT_GT(boxes.messages[0].text.size(), wanted.size()) << "and why";
    EXPECT_EQ(BytesOf(*dialogs.file), "old");
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "");
}

TEST_F(PictureOutputTest, AFolderThatIsGoneIsTold) {
    dialogs.file = In("gone/night.png");
    output.Save();
    EXPECT_EQ(boxes.messages.size(), 1U);
}

TEST_F(PictureOutputTest, IsPrintedAcrossThePage) {
    dialogs.paper = In("night.pdf");
    output.Print();
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_TRUE(dialogs.landscape);
    EXPECT_EQ(dialogs.document, "Glintara 2018-01-20 07-42-09 UTC");
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "Picture printed");
    const QByteArray pdf = BytesOf(dialogs.paper);
    EXPECT_EQ(pdf.left(4), "%PDF");
    EXPECT_TRUE(pdf.contains("/Subtype /Image"));
    const auto box = QRegularExpression("/MediaBox \\[\\s*0 0 ([0-9.]+) ([0-9.]+)").match(QString::fromLatin1(pdf));
    ASSERT_TRUE(box.hasMatch());
    EXPECT_GT(box.captured(1).toDouble(), box.captured(2).toDouble());
}

TEST_F(PictureOutputTest, AHighPictureIsPrintedUpright) {
    picture = picture.copy(0, 0, 100, 200);
    dialogs.paper = In("night.pdf");
    output.Print();
    EXPECT_FALSE(dialogs.landscape);
}

TEST_F(PictureOutputTest, APrinterThatFailsIsAPrinterError) {
    dialogs.paper = In("gone/night.pdf");
    output.Print();
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text, "Printer Error");
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Critical);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "");
}

TEST_F(PictureOutputTest, WhoThinksBetterOfItPrintsNothing) {
    dialogs.prints = false;
    dialogs.paper = In("night.pdf");
    output.Print();
    EXPECT_EQ(folder.FileCount(), 0);
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "");
}

}  // namespace
}  // namespace glintara::desktop
