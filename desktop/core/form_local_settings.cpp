#include "desktop/core/form_local_settings.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "core/box_numbers.h"
#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"

namespace glintara::desktop {

namespace {

constexpr int kPlaceCharacters = 18;
constexpr int kShortCharacters = 6;
constexpr int kDetailPixels = 11;
/// The longest way in which a place is read back, so that nothing moves while it is typed.
constexpr auto kWidestPlace = "89°59'59.9\" N (?)   179°59'59.9\" W (?)   10000.00 m (?)";
constexpr int kFoundLines = 2;

QGridLayout* GridIn(QWidget& frame) {
    auto* grid = new QGridLayout(&frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameGap);
    grid->setColumnStretch(1, 1);
    return grid;
}

QLineEdit* AddField(QGridLayout& grid, int row, Label& caption, const char* labelName, TextBox& box, const char* name,
                    int characters) {
    QLabel* const label = MakeLabel(caption, labelName);
    QLineEdit* const field = MakeNumberField(box, name, caption, characters);
    label->setBuddy(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1, Qt::AlignLeft);
    return field;
}

}  // namespace

FormLocalSettings::FormLocalSettings(Application& app, QWidget* parent)
    : SettingsForm(app.Settings.Local.Visible, "FormLocalSettings", "Local Settings", parent),
      form_(app.Settings.Local) {
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    column->addWidget(BuildPlace());
    column->addWidget(BuildTime());
    column->addStretch(1);
    column->addLayout(MakeOkAndCancel(form_.COk, form_.CCancel));
}

QWidget* FormLocalSettings::BuildPlace() {
    QGroupBox* const frame = MakeFrame(form_.FramePlace, "FramePlace");
    QGridLayout* const grid = GridIn(*frame);
    QLineEdit* const lat = AddField(*grid, 0, form_.LLAT, "LLAT", form_.TLAT, "TLAT", kPlaceCharacters);
    MarkUnless(*lat, [](const std::string& text) { return ReadBoxAngle(text, 'N', 'S').whole; });
    BeginWith(*lat);
    QLineEdit* const lon = AddField(*grid, 1, form_.LLON, "LLON", form_.TLON, "TLON", kPlaceCharacters);
    MarkUnless(*lon, [](const std::string& text) { return ReadBoxAngle(text, 'E', 'W').whole; });
    QLineEdit* const height = AddField(*grid, 2, form_.LALT, "LALT", form_.TALT, "TALT", kPlaceCharacters);
    MarkUnless(*height, [](const std::string& text) { return ReadBoxNumber(text).whole; });
    grid->addWidget(MakePlainButton(form_.CFromTimeZone, "CFromTimeZone"), 0, 2);
    grid->setColumnStretch(2, 1);

    QLabel* const place = MakeLabel(form_.LPlace, "LPlace");
    place->setFont(NumberFont(kDetailPixels));
    place->setProperty("quiet", true);
    place->setMinimumWidth(place->fontMetrics().horizontalAdvance(kWidestPlace));
    grid->addWidget(place, 3, 0, 1, 3);
    QLabel* const found = MakeLabel(form_.LTimeZone, "LTimeZone");
    found->setProperty("accent", true);
    found->setWordWrap(true);
    found->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    found->setMinimumHeight(kFoundLines * found->fontMetrics().lineSpacing());
    grid->addWidget(found, 4, 0, 1, 3);
    return frame;
}

QWidget* FormLocalSettings::BuildTime() {
    QGroupBox* const frame = MakeFrame(form_.FrameTime, "FrameTime");
    QGridLayout* const grid = GridIn(*frame);
    QLineEdit* const zone = AddField(*grid, 0, form_.LUTC, "LUTC", form_.TUTC, "TUTC", kShortCharacters);
    MarkUnless(*zone, [](const std::string& text) { return ReadBoxNumber(text).whole; });
    auto* computer = new QCheckBox;
    computer->setObjectName("CComputerZone");
    Bind(*computer, form_.CComputerZone);
    grid->addWidget(computer, 0, 2);
    QLineEdit* const code =
        AddField(*grid, 1, form_.LStationCode, "LStationCode", form_.TStationCode, "TStationCode", kShortCharacters);
    MarkUnless(*code, [](const std::string& text) { return ReadBoxNumber(text).whole; });
    grid->setColumnStretch(2, 1);
    return frame;
}

}  // namespace glintara::desktop
