// The window "Satellite Info" in the whole program.

#include <QApplication>
#include <QDialog>

#include "desktop/program/window_fixture.h"
#include "orbit/satellite_info.h"
#include "orbit/satellite_table.h"

namespace glintara::desktop {
namespace {

class InfoWindowTest : public WindowTest {
  protected:
    QDialog* Form() const {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == "FormSatPosition") return qobject_cast<QDialog*>(widget);
        return nullptr;
    }

    std::string Line(std::size_t line) const { return app_.SatPosition.LInfo[line].Caption.Get(); }

    void NewPicture() {
        app_.Windows.UpdateGraphicsLevel2();
        WaitForPicture();
    }
};

TEST_F(InfoWindowTest, OpensFromTheMenuAndFollowsEveryPicture) {
    Settle();
    EXPECT_FALSE(EntryNamed("Satellite Info...")->isEnabled()) << "without satellites";
    LoadIridium();
    WaitForPicture();
    EntryNamed("Satellite Info...")->trigger();
    ASSERT_NE(Form(), nullptr);
    EXPECT_TRUE(Form()->isVisible());
    const SatRecord& working = app_.Data.Satellite(app_.Data.SatCount);
    EXPECT_EQ(Line(0), "Satellite #86 - " + working.Name);
    const std::string x = Line(1);
    EXPECT_NE(x, "X: n.a.");
    program_.Core().Time.SetJDToTimeOffset(app_.Data.SimTime + 0.01);
    NewPicture();
    EXPECT_NE(Line(1), x) << "a new picture, new numbers";
    EXPECT_EQ(Line(1), satellite_info::LinesOf(app_)[1]);

    ChangeWorkingSatellite(app_, 3);
    EXPECT_EQ(Line(0).substr(0, 15), "Satellite #3 - ") << "before the next picture";
    WaitForPicture();
    EXPECT_EQ(Line(1), satellite_info::LinesOf(app_)[1]);

    Form()->close();
    const std::string last = Line(1);
    program_.Core().Time.SetJDToTimeOffset(app_.Data.SimTime + 0.01);
    NewPicture();
    EXPECT_EQ(Line(1), last) << "closed, it costs nothing";
    EntryNamed("Satellite Info...")->trigger();
    EXPECT_NE(Line(1), last);
}

TEST_F(InfoWindowTest, TheMenuOfTheModelsChangesPictureAndWindow) {
    Settle();
    LoadIridium();
    EntryNamed("Satellite Info...")->trigger();
    WaitForPicture();
    EXPECT_NE(Line(1), "X: n.a.");
    const std::string height = main_.LSatDetail.Caption;
    ASSERT_TRUE(EntryNamed("SGP1")->isEnabled());
    EntryNamed("SGP1")->trigger();
    EXPECT_TRUE(main_.CSGP1.Value);
    WaitForPicture();
    EXPECT_EQ(Line(1), "X: n.a.");
    EXPECT_EQ(Line(10), "RA:  n.a.");
    EXPECT_NE(main_.LSatDetail.Caption.Get(), height) << "the picture has the other model";
    ExpectMenusAndBoxesAgree("SGP1");
    EntryNamed("SGP4/SDP4")->trigger();
    WaitForPicture();
    EXPECT_NE(Line(1), "X: n.a.");
    EXPECT_EQ(main_.LSatDetail.Caption.Get(), height);
}

TEST_F(InfoWindowTest, OpensWhereItDoesNotCoverTheListOfTheOrbit) {
    Settle();
    LoadIridium();
    WaitForPicture();
    window_.resize(1600, 900);  // the screen has no room beside it
    WaitForPicture();
    main_.C2OrbitDetails.Value = true;
    EntryNamed("Satellite Info...")->trigger();
    ASSERT_NE(Form(), nullptr);
    const QWidget& picture = window_.Picture();
    const QPoint corner = picture.mapToGlobal(QPoint(0, 0));
    const QRect shown(corner, picture.size());
    EXPECT_FALSE(Form()->frameGeometry().intersects(QRect(shown.center().x(), shown.top(), shown.width(), 100)));
}

TEST_F(InfoWindowTest, AnEmptyListLeavesItOpen) {
    Settle();
    LoadIridium();
    EntryNamed("Satellite Info...")->trigger();
    app_.Data.SatCount = 0;
    NewPicture();
    EXPECT_TRUE(Form()->isVisible());
    EXPECT_EQ(Line(0), "No satellite in the list");
    EXPECT_EQ(Line(4), "D: n.a.");
}

TEST_F(InfoWindowTest, ItsPlaceIsRememberedAndItIsUnloadedWithTheProgram) {
    Settle();
    LoadIridium();
    EntryNamed("Satellite Info...")->trigger();
    Form()->move(40, 50);
    const QPoint place = Form()->pos();
    Form()->close();
    EntryNamed("Satellite Info...")->trigger();
    EXPECT_EQ(Form()->pos(), place);
    program_.Core().End.Form_Unload();
    EXPECT_FALSE(Form()->isVisible());
}

}  // namespace
}  // namespace glintara::desktop
