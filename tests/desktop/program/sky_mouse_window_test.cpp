// What stands over the picture: the finder's box and the readouts of the sky pointer.

#include <QFrame>
#include <QLabel>
#include <QWindow>

#include "desktop/program/window_fixture.h"

namespace glintara::desktop {
namespace {

class SkyMouseWindowTest : public WindowTest {
  protected:
    template <class Widget>
    Widget& Named(const QString& name) {
        return *window_.findChild<Widget*>(name);
    }
};

TEST_F(SkyMouseWindowTest, TheBoxTellsOfWhatTheMouseRestsOn) {
    Settle();
    LoadIridium();
    WaitForPicture();
    QLabel& box = Named<QLabel>("LFInfo");
    EXPECT_FALSE(box.isVisible());
    ASSERT_GE(app_.Run.Finder.FinderCount(), 1);
    const FinderEntry mark = app_.Run.Finder.FinderList[1];
    const QSize size = window_.Picture().size();
    const double unit = std::min(size.width(), size.height()) / 2.0 * view_.ZoomFactor / 64;
    const QPoint at(qRound(size.width() / 2.0 + mark.x * unit), qRound(size.height() / 2.0 - mark.y * unit));
    QTest::mouseMove(&window_.Picture(), at - QPoint(30, 0));
    QTest::mouseMove(&window_.Picture(), at);
    ASSERT_TRUE(WaitFor([&] { return box.isVisible(); }, 5000));
    EXPECT_TRUE(box.text().startsWith("Satellite #")) << box.text().toStdString();
    EXPECT_EQ(box.text().count('\n'), 2);
    EXPECT_TRUE(window_.Picture().rect().contains(box.geometry()));
    EXPECT_FALSE(box.geometry().contains(at));
    const QFontMetrics letters = box.fontMetrics();
    EXPECT_GE(box.width(), letters.horizontalAdvance(box.text().section('\n', 0, 0)));
    EXPECT_GE(box.height(), 3 * letters.lineSpacing());
    QTest::mouseMove(&window_.Picture(), at + QPoint(0, 100));
    EXPECT_TRUE(WaitFor([&] { return !box.isVisible(); }, 5000));
}

TEST_F(SkyMouseWindowTest, TheBoxGoesWhenTheMouseLeavesThePicture) {
    Settle();
    PictureBox& picture = window_.Picture();
    QWindow* const screen = window_.windowHandle();
    QTest::mouseMove(screen, picture.mapTo(&window_, QPoint(200, 200)));
    QTest::mouseMove(screen, picture.mapTo(&window_, QPoint(210, 200)));
    ASSERT_TRUE(main_.Timer_ObjectFinder.Enabled);
    QLabel& box = Named<QLabel>("LFInfo");
    main_.LFInfo.Visible = true;
    ASSERT_TRUE(WaitFor([&] { return !main_.Timer_InfoHider.Enabled; }, 5000)) << "the move has been served";
    main_.LFInfo.Visible = true;
    ASSERT_TRUE(box.isVisible());
    QTest::mouseMove(screen, picture.mapTo(&window_, QPoint(210, picture.height() + 20)));
    EXPECT_FALSE(main_.Timer_ObjectFinder.Enabled);
    EXPECT_TRUE(WaitFor([&] { return !box.isVisible(); }, 5000));
}

TEST_F(SkyMouseWindowTest, ADoubleClickWithAltShowsTheReadouts) {
    Settle();
    QFrame& frame = Named<QFrame>("FSkyMouse");
    EXPECT_FALSE(frame.isVisible());
    QTest::mouseDClick(&window_.Picture(), Qt::LeftButton, Qt::AltModifier, QPoint(300, 300));
    EXPECT_TRUE(frame.isVisible());
    QStringList words;
    for (const QLabel* label : frame.findChildren<QLabel*>()) words << label->text();
    EXPECT_TRUE(words.contains("TACC: 0.5 s")) << words.join("|").toStdString();
    QTest::mouseDClick(&window_.Picture(), Qt::LeftButton, Qt::AltModifier, QPoint(300, 300));
    EXPECT_FALSE(frame.isVisible());
}

}  // namespace
}  // namespace glintara::desktop
