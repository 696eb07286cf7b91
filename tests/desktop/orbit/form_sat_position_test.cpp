#include "desktop/orbit/form_sat_position.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <set>

#include "desktop/window_checks.h"
#include "orbit/satellite_info.h"
#include "state/recording_services.h"

namespace glintara::desktop {
namespace {

using testing::Named;
using testing::Open;

struct FormSatPositionTest : ::testing::Test {
    FormSatPositionTest() {
        satellite_info::Connect(app);
        app.SatPosition.Visible.SetHandler([this] {
            if (!app.SatPosition.Visible) form.close();
        });
        SatRecord& satellite = app.Data.Satellite(++app.Data.SatCount);
        satellite.OrbitNumber = 12;
        satellite.Name = "NOAA 19";
        Leave(6524.834, 6862.875, 6448.296);
        Open(form);
    }

    /// What a picture leaves of the working satellite: the velocity is a thousandth of its position.
    void Leave(double x, double y, double z) {
        ::EngineBlock& block = app.Data.Satellite(1).EngineBlock;
        const double numbers[3] = {x, y, z};
        for (std::size_t i = 0; i < 3; ++i) {
            block.InertialPosition[i] = numbers[i];
            block.InertialVelocity[i] = numbers[i] / 1000;
            block.WorldPosition[i] = numbers[i] / 6000;
        }
        satellite_info::RefreshInfo(app);
    }

    QLabel& Value(int line) const { return Named<QLabel>(form, ("LInfo" + std::to_string(line)).c_str()); }

    QString TextOf(const char* name) const { return Named<QLabel>(form, name).text(); }

    /// Where the decimal point of a line stands, or would stand, in pixels of the window.
    int PointOf(int line) const {
        const QLabel& value = Value(line);
        const QString number = value.text().remove(QChar(0xB0));
        const QFontMetrics metrics(value.font());
        const int right = value.mapTo(&form, QPoint(value.contentsRect().right(), 0)).x();
        const int behind = static_cast<int>(value.text().size() - std::max<qsizetype>(number.indexOf('.'), 0));
        return right - (number.contains('.') ? behind : 0) * metrics.horizontalAdvance('0');
    }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    glintara::testing::RecordingWindows windows;
    Application app{boxes, events, windows};
    FormSatPosition form{app, nullptr};
};

TEST_F(FormSatPositionTest, ShowsTheLinesInTheirParts) {
    EXPECT_EQ(form.windowTitle(), "Satellite Info");
    EXPECT_EQ(Named<QGroupBox>(form, "FrameSatPos").title(), "Position and velocity");
    EXPECT_EQ(TextOf("LInfo0"), "Satellite #12 - NOAA 19");
    EXPECT_EQ(TextOf("LName1"), "X:");
    EXPECT_EQ(TextOf("LInfo1"), "6524.834");
    EXPECT_EQ(TextOf("LUnit1"), "km");
    EXPECT_EQ(TextOf("LName8"), "vW:");
    EXPECT_EQ(TextOf("LInfo8"), "11.457");
    EXPECT_EQ(TextOf("LUnit8"), "km/s");
    EXPECT_EQ(TextOf("LName12"), "Az:");
    EXPECT_TRUE(TextOf("LInfo12").endsWith(QChar(0xB0)));
    EXPECT_EQ(Value(1).accessibleName(), "X: 6524.834 km");
    EXPECT_EQ(form.findChild<QLabel*>("LInfo13"), nullptr) << "stays empty";
}

TEST_F(FormSatPositionTest, FollowsThePicturesAndTheModel) {
    Leave(7000, -1, 2);
    EXPECT_EQ(TextOf("LInfo1"), "7000");
    EXPECT_EQ(TextOf("LInfo2"), "-1");
    app.Main.CSGP4.Value = false;
    satellite_info::RefreshInfo(app);
    for (int line = 1; line <= 12; ++line) EXPECT_EQ(Value(line).text(), "n.a.") << line;
    EXPECT_EQ(TextOf("LUnit1"), "");
    EXPECT_EQ(TextOf("LInfo0"), "Satellite #12 - NOAA 19");
    EXPECT_EQ(TextOf("LNote"), "SGP1 gives no numbers: choose SGP4/SDP4.");
}

TEST_F(FormSatPositionTest, NothingMovesButDigits) {
    const int point = PointOf(1);
    const QSize size = form.size();
    for (const double x : {6524.834, -6524.8, 7000.0, -0.25, 42164.12}) {
        Leave(x, 1, 1);
        QCoreApplication::processEvents();
        EXPECT_EQ(PointOf(1), PointOf(2)) << x;
        EXPECT_EQ(PointOf(1), PointOf(5)) << x;
        EXPECT_EQ(PointOf(1), PointOf(11)) << "the sign of degrees stands behind the decimals";
        if (std::floor(x) != x) EXPECT_NEAR(PointOf(1), point, 1) << x;
        EXPECT_EQ(form.size(), size);
    }
    app.Data.Satellite(1).Name = std::string(200, 'W');
    satellite_info::RefreshInfo(app);
    QCoreApplication::processEvents();
    EXPECT_EQ(form.size(), size) << "a long name does not widen the window";
}

TEST_F(FormSatPositionTest, CopiesAllLinesOrTheOneThatIsMarked) {
    QTest::mouseClick(&Named<QPushButton>(form, "CCopy"), Qt::LeftButton);
    const QString all = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(all.startsWith("Satellite #12 - NOAA 19\nX: 6524.834 km\nY: 6862.875 km\n")) << all.toStdString();
    EXPECT_EQ(all.count('\n'), 13);
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(&form, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), all);
    Value(2).setFocus();
    Value(2).setSelection(0, 4);
    QTest::keyClick(&Value(2), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "6862");
}

TEST_F(FormSatPositionTest, ClosesWithEscapeReturnAndByItsButton) {
    EXPECT_TRUE(app.SatPosition.Visible);
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(app.SatPosition.Visible);
    Open(form);
    EXPECT_TRUE(Named<QPushButton>(form, "CClose").hasFocus());
    QTest::keyClick(form.focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    Open(form);
    QTest::mouseClick(&Named<QPushButton>(form, "CClose"), Qt::LeftButton);
    EXPECT_FALSE(app.SatPosition.Visible);
}

TEST_F(FormSatPositionTest, HasItsNamesAndRoom) {
    testing::ExpectNothingClipped(form);
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus) continue;
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
        EXPECT_FALSE(widget->toolTip().isEmpty()) << widget->objectName().toStdString();
    }
}

}  // namespace
}  // namespace glintara::desktop
