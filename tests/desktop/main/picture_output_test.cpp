// The picture in a file and on paper, without a printer: paper is a PDF file, or one that cannot be written.

#include "desktop/main/picture_output.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QFile>
#include <QList>
#include <QRegularExpression>
#include <QStringList>
#include <QTransform>
#include <algorithm>
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

    /// Where the image of a page stands, points. The page's operators are compressed; of them only those that matter to
    /// a single image are understood: the axes, which are kept and brought back, and the image, a unit square.
    static QRectF PictureOnPage(const QByteArray& pdf) {
        for (qsizetype at = pdf.indexOf("stream\n"); at >= 0; at = pdf.indexOf("stream\n", at + 1)) {
            // What unpacks it wants a length before it; a wrong one is only a first guess.
            const QByteArray text = qUncompress(QByteArray("\0\0\x10\0", 4) + pdf.mid(at + 7));
            if (!text.contains(" Do")) continue;
            QList<QTransform> kept;
            QTransform axes;
            QStringList words;
            for (const QString& word : QString::fromLatin1(text).split(QRegularExpression("\\s+"))) {
                words << word;
                const auto number = [&words](int fromEnd) { return words.at(words.size() - fromEnd).toDouble(); };
                if (word == "q") kept << axes;
                if (word == "Q" && !kept.isEmpty()) axes = kept.takeLast();
                if (word == "cm")
                    axes = QTransform(number(7), number(6), number(5), number(4), number(3), number(2)) * axes;
                if (word == "Do") return axes.mapRect(QRectF(0, 0, 1, 1));
            }
        }
        return {};
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

TEST_F(PictureOutputTest, TheWholePictureStandsInTheMiddleOfThePage) {
    for (const QSize size : {QSize(320, 200), QSize(900, 100), QSize(100, 200)}) {
        picture = QImage(size, QImage::Format_RGB32);
        picture.fill(Qt::darkBlue);
        picture.setDevicePixelRatio(2);
        dialogs.paper = In("night.pdf");
        output.Print();
        const QByteArray pdf = BytesOf(dialogs.paper);
        EXPECT_FALSE(pdf.contains("DCTDecode")) << "letters stay sharp";
        const auto box = QRegularExpression("/MediaBox \\[\\s*0 0 ([0-9.]+) ([0-9.]+)").match(QString::fromLatin1(pdf));
        ASSERT_TRUE(box.hasMatch());
        const QRectF page(0, 0, box.captured(1).toDouble(), box.captured(2).toDouble());
        const QRectF drawn = PictureOnPage(pdf);
        EXPECT_TRUE(page.contains(drawn));
        EXPECT_NEAR(drawn.center().x(), page.center().x(), 0.5) << size.width();
        EXPECT_NEAR(drawn.center().y(), page.center().y(), 0.5) << size.width();
        EXPECT_NEAR(drawn.width() / drawn.height(), static_cast<double>(size.width()) / size.height(), 0.01);
        // To the margins of the printer, which are some millimetres wide, in one direction.
        const double free = std::min(page.width() - drawn.width(), page.height() - drawn.height());
        EXPECT_LT(free, 2 * 20) << size.width();
    }
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
