// The kept views in the window: their buttons, and the picture that comes back.

#include "desktop/program/window_fixture.h"

namespace glintara::desktop {
namespace {

class ViewsWindowTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        Settle();
        LoadIridium();
    }

    /// The button of the panel that bears this number and whose tool tip begins so.
    QPushButton& ButtonOfView(const QString& number, const QString& tip) {
        for (QPushButton* button : window_.findChildren<QPushButton*>())
            if (button->text() == number && button->toolTip().startsWith(tip)) return *button;
        ADD_FAILURE() << number.toStdString() << " " << tip.toStdString();
        std::abort();
    }

    QImage Picture() {
        app_.Windows.UpdateGraphicsLevel2();
        WaitForPicture();
        return window_.Picture().Image().copy();
    }
};

TEST_F(ViewsWindowTest, ThePanelKeepsAViewAndBringsItsPictureBack) {
    main_.FrameInfo.Click();
    main_.MnuQSkyChart.Click();
    main_.CStarNames.Value = true;
    program_.Core().Time.SetJDToTimeOffset(kNight + 30.5 / 86400);

    QPushButton& enter = ButtonOfView("4", "View 4 is empty");
    ASSERT_TRUE(enter.isVisible());
    EXPECT_FALSE(enter.property("lit").toBool());
    QTest::mouseClick(&ButtonOfView("4", "Keep what is shown as view 4"), Qt::LeftButton);
    EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "Saved View 4");
    EXPECT_TRUE(enter.property("lit").toBool());
    EXPECT_EQ(enter.toolTip(), "View 4: 20/01/2018 00:00:30 UTC (4)");
    const QImage kept = Picture();

    main_.MnuQResetView.Click();
    main_.CPlaniSphere.Value = true;
    EXPECT_NE(Picture(), kept);
    QTest::mouseClick(&enter, Qt::LeftButton);
    EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "Restored View 4");
    EXPECT_EQ(Picture(), kept) << "to the last pixel";
    EXPECT_TRUE(EntryNamed("View 4")->isChecked());
    EXPECT_EQ(EntryNamed("View 4")->toolTip(), "View 4: 20/01/2018 00:00:30 UTC");
}

TEST_F(ViewsWindowTest, TheTenthViewHasButtonsAndNoKey) {
    main_.FrameInfo.Click();
    QTest::mouseClick(&ButtonOfView("10", "Keep what is shown as view 10"), Qt::LeftButton);
    EXPECT_TRUE(app_.Data.SavedViews[10].Used);
    EXPECT_TRUE(EntryNamed("View 10")->isChecked());
    EntryNamed("View 3")->trigger();
    EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "Enter View 3");
    EXPECT_TRUE(EntryNamed("View 3")->isChecked());
    EXPECT_FALSE(EntryNamed("View 10")->isChecked());
}

TEST_F(ViewsWindowTest, TheQuickViewsActFromTheMenu) {
    EntryNamed("Sky Chart")->trigger();
    EXPECT_TRUE(main_.CFlatSky.Value && main_.CSkyOnly.Value);
    EntryNamed("Horizont View")->trigger();
    EXPECT_EQ(view_.ZoomFactor, 150);
    EntryNamed("Real, Locked, Horizont View")->trigger();
    EXPECT_EQ(view_.ZoomFactor, 75);
    EXPECT_TRUE(main_.CRealTime.Value);
    EntryNamed("Draw Sky Map")->trigger();
    EXPECT_TRUE(EntryNamed("Flat Sky")->isChecked());
    EntryNamed("Toggle Sky/Earth")->trigger();
    EXPECT_FALSE(EntryNamed("Hide Earth")->isChecked());
    EntryNamed("Reset View")->trigger();
    EXPECT_EQ(view_.ZoomFactor, 29);
    EXPECT_FALSE(EntryNamed("Draw Sky")->isChecked());
    EXPECT_TRUE(main_.CPlotOrbit.Enabled) << "the satellites that came since the start can still be drawn";
}

}  // namespace
}  // namespace glintara::desktop
