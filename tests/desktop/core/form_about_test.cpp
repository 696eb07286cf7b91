#include "desktop/core/form_about.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBrowser>
#include <QUrl>

#include "desktop/window_checks.h"

namespace glintara::desktop {
namespace {

using testing::Named;
using testing::Open;

struct FormAboutTest : ::testing::Test {
    FormAboutTest() { Open(form); }

    QTextBrowser& Page() const { return Named<QTextBrowser>(form, "TSources"); }

    FormAbout form{nullptr};
};

TEST_F(FormAboutTest, TellsVersionAndDate) {
    EXPECT_EQ(Named<QLabel>(form, "LTitle").text(), "Glintara - v1.5.2");
    EXPECT_EQ(Named<QLabel>(form, "LReleaseDate").text(), "3 January 2010");
    EXPECT_EQ(Named<QLabel>(form, "LBuild").text(), "v.1.5.2");
}

TEST_F(FormAboutTest, NamesEverySourceOfTheData) {
    QFile told(GLINTARA_SOURCE_DIR "/data/README.md");
    ASSERT_TRUE(told.open(QIODevice::ReadOnly));
    const QString sources = QString::fromUtf8(told.readAll()).simplified();
    const QString page = Page().toPlainText().simplified();
    const QRegularExpression package("package `([^`]+)`, version ([^ ,;:]*[^ ,;:.])");
    int count = 0;
    for (auto match = package.globalMatch(sources); match.hasNext(); ++count) {
        const QRegularExpressionMatch one = match.next();
        const QString words = one.captured(1) + ", version " + one.captured(2);
        EXPECT_TRUE(page.contains(words)) << words.toStdString();
    }
    EXPECT_EQ(count, 6);
}

TEST_F(FormAboutTest, GivesCreditUnderEachLicence) {
    const QString page = Page().toPlainText().simplified();
    for (const char* words :
         {"Natural Earth is in the public domain", "Hipparcos catalogue, ESA 1997, SP-1200",
          "three-clause BSD licence, copyright 2015 Olaf Frohn",
          "GeoNames gives its data under the Creative Commons Attribution licence, version 4.0 "
          "(creativecommons.org/licenses/by/4.0). They were changed",
          "GNU General Public License, version 2 or later", "MIT licence", "GNU Lesser General Public License"})
        EXPECT_TRUE(page.contains(words)) << words;
    EXPECT_FALSE(page.contains('*')) << "the marks of the text are its form";
}

TEST_F(FormAboutTest, ThePageTurnsByKeysAndStaysWhatItIs) {
    EXPECT_EQ(form.focusWidget(), &Page());
    EXPECT_TRUE(Page().isReadOnly());
    QScrollBar& bar = *Page().verticalScrollBar();
    EXPECT_EQ(Page().horizontalScrollBar()->maximum(), 0) << "its lines fit";
    ASSERT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), 0);
    QTest::keyClick(&Page(), Qt::Key_PageDown);
    EXPECT_GT(bar.value(), 0);
    QTest::keyClick(&Page(), Qt::Key_End);
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(FormAboutTest, ALinkThatLeadsOutIsNotFollowed) {
    const QString before = Page().toPlainText();
    Page().setSource(QUrl("https://example.org/"));
    EXPECT_EQ(Page().toPlainText(), before);
}

TEST_F(FormAboutTest, ClosesByItsButtonReturnAndEscape) {
    QTest::mouseClick(&Named<QPushButton>(form, "CClose"), Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        Open(form);
        QTest::keyClick(&Page(), key);
        EXPECT_FALSE(form.isVisible()) << key;
    }
}

TEST_F(FormAboutTest, HasItsNamesAndRoom) {
    testing::ExpectNothingClipped(form);
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_")) continue;
        if (widget->inherits("QLabel")) continue;
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
    }
    EXPECT_LE(form.height(), 700) << "on a small screen it has room under the menu";
}

}  // namespace
}  // namespace glintara::desktop
