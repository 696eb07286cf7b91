#include "desktop/orbit/form_adv_sel.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <string>

#include "desktop/window_checks.h"
#include "flare/surface_models.h"
#include "orbit/advanced_selection.h"
#include "orbit/element_sets.h"
#include "state/recording_services.h"

namespace glintara::desktop {
namespace {

using testing::ExpectNothingClipped;
using testing::Named;
using testing::Open;

class ServesNothing : public Events {
  public:
    void ServeEvents() override {}
};

struct FormAdvSelTest : ::testing::Test {
    FormAdvSelTest() {
        EXPECT_TRUE(LoadTLEFile(app, GLINTARA_SOURCE_DIR "/data/examples/iridium.tle"));
        CApplyTLEOrbit_click(app);
        advanced_selection::Connect(app, HasFlareModel);
        app.AdvSel.Visible.SetHandler([this] {
            if (form && !app.AdvSel.Visible) form->close();
        });
        form = std::make_unique<FormAdvSel>(app, nullptr);
        Open(*form);
    }

    void Type(const char* field, const char* text) {
        auto& line = Named<QLineEdit>(*form, field);
        line.setFocus();
        line.selectAll();
        QTest::keyClick(&line, Qt::Key_Delete);
        QTest::keyClicks(&line, text);
    }

    QString Count() const { return Named<QLabel>(*form, "LCount").text(); }

    int InTable() const {
        int count = 0;
        for (int i = 1; i <= app.Data.SatCount; ++i) count += app.Data.Satellite(i).Selected ? 1 : 0;
        return count;
    }

    glintara::testing::RecordingBoxes boxes;
    ServesNothing events;
    glintara::testing::RecordingWindows windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
    std::unique_ptr<FormAdvSel> form;
};

TEST_F(FormAdvSelTest, ItOpensWithTheCountOfAll) {
    EXPECT_EQ(form->windowTitle(), "Advanced Satellite Selection");
    EXPECT_EQ(Count(), "86 of 86 match. Selected: 0 now, 86 after \"Apply\"");
    EXPECT_EQ(form->focusWidget()->objectName(), "TFromInclination");
    ExpectNothingClipped(*form);
}

TEST_F(FormAdvSelTest, TheCountFollowsWhatIsTypedAndReturnApplies) {
    int expected = 0;
    for (int i = 1; i <= app.Data.SatCount; ++i) expected += app.Data.Satellite(i).MeanMotion > 1440 / 99.5 ? 1 : 0;
    ASSERT_GT(expected, 0);
    ASSERT_LT(expected, 86);
    Type("TToPeriod", "99.5");
    EXPECT_TRUE(Count().startsWith(QString("%1 of 86 match").arg(expected))) << Count().toStdString();
    EXPECT_EQ(InTable(), 0);
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(InTable(), expected);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(FormAdvSelTest, BadTextIsToldBesideItsFieldAndNothingMoves) {
    const QSize before = form->size();
    auto& field = Named<QLineEdit>(*form, "TFromPerigee");
    const QPoint place = field.mapTo(form.get(), QPoint(0, 0));
    for (const char* text : {"km", "1,5", "2000"}) {
        Named<QLineEdit>(*form, "TToPerigee").setText("1000");
        Type("TFromPerigee", text);
        const auto& note = Named<QLabel>(*form, "LNotePerigee");
        EXPECT_FALSE(note.text().isEmpty());
        EXPECT_GE(note.width(), note.sizeHint().width()) << note.text().toStdString();
        EXPECT_EQ(note.mapTo(form.get(), QPoint(0, 0)).y() + note.height() / 2, place.y() + field.height() / 2);
        EXPECT_EQ(field.accessibleDescription(), note.text());
        EXPECT_EQ(field.property("bad").toBool(), QString(text) != "2000");
        EXPECT_FALSE(Named<QPushButton>(*form, "CApply").isEnabled());
    }
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(InTable(), 0);
    EXPECT_EQ(form->size(), before);
    EXPECT_EQ(field.mapTo(form.get(), QPoint(0, 0)), place);
    Type("TFromPerigee", "x");
    QTest::mouseClick(&Named<QPushButton>(*form, "CClear"), Qt::LeftButton);
    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_FALSE(field.property("bad").toBool());
    EXPECT_TRUE(Named<QPushButton>(*form, "CApply").isEnabled());
}

TEST_F(FormAdvSelTest, OptionsAreOneOfSeveral) {
    auto& with = Named<QRadioButton>(*form, "OWithModel");
    auto& any = Named<QRadioButton>(*form, "OAnyModel");
    QTest::mouseClick(&with, Qt::LeftButton);
    EXPECT_TRUE(with.isChecked());
    EXPECT_FALSE(any.isChecked());
    QTest::mouseClick(&with, Qt::LeftButton);
    EXPECT_TRUE(with.isChecked());
    QTest::mouseClick(&any, Qt::LeftButton);
    EXPECT_FALSE(with.isChecked());
    QTest::mouseClick(&Named<QRadioButton>(*form, "OTake"), Qt::LeftButton);
    EXPECT_EQ(Count(), "86 of 86 match. Selected: 0 now, 0 after \"Apply\"");
}

TEST_F(FormAdvSelTest, KeysGoOnAfterAClickOnACheckBox) {
    auto& above = Named<QCheckBox>(*form, "CAbove");
    EXPECT_FALSE(Named<QLineEdit>(*form, "TMinElevation").isEnabled());
    QTest::mouseClick(&above, Qt::LeftButton, {}, QPoint(5, above.height() / 2));
    EXPECT_TRUE(Named<QLineEdit>(*form, "TMinElevation").isEnabled());
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(windows.calls.back(), "UpDateAll");
    QTest::keyClick(form->focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_FALSE(app.AdvSel.Visible);
}

TEST_F(FormAdvSelTest, TheSkyIsCountedEachSecondWhileItIsAskedFor) {
    QTest::mouseClick(&Named<QCheckBox>(*form, "CLit"), Qt::LeftButton, {}, QPoint(5, 5));
    app.Data.SunDir = {1, 0, 0};
    app.Data.SatCount = 85;
    EXPECT_TRUE(QTest::qWaitFor([this] { return Count().contains(" of 85 "); }, 20000));
    Named<QPushButton>(*form, "CClose").click();
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormAdvSelTest, TabGoesThroughTheFields) {
    QStringList seen{form->focusWidget()->objectName()};
    for (int k = 0; k < 24; ++k) {
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
        seen << form->focusWidget()->objectName();
    }
    EXPECT_EQ(
        seen.join(" "),
        "TFromInclination TToInclination TFromPerigee TToPerigee TFromApogee TToApogee TFromPeriod TToPeriod "
        "TFromEccentricity TToEccentricity TFromAge TToAge OAnyModel OWithModel OWithoutModel CLit CAbove OReplace "
        "OAdd OTake CClear CApply CClose TFromInclination TToInclination");
}

}  // namespace
}  // namespace glintara::desktop
