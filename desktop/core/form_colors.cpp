#include "desktop/core/form_colors.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"

namespace glintara::desktop {

namespace {

constexpr QSize kSwatch(36, 16);
/// Swatches are painted finely enough for any display.
constexpr int kSwatchRatio = 4;
constexpr double kSwatchRadius = 3;
constexpr int kListWidth = 170;
constexpr int kLevelPixels = 12;
constexpr int kLevelPage = 16;

QColor ColorOf(std::uint32_t color) {
    constexpr std::uint32_t kChannel = 0xFF;
    return QColor(static_cast<int>(color & kChannel), static_cast<int>(color >> 8 & kChannel),
                  static_cast<int>(color >> 16 & kChannel));
}

QIcon SwatchOf(std::uint32_t color) {
    QPixmap image(kSwatch * kSwatchRatio);
    image.setDevicePixelRatio(kSwatchRatio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColorOf(color));
    painter.drawRoundedRect(QRectF(QPointF(0, 0), QSizeF(kSwatch)), kSwatchRadius, kSwatchRadius);
    QIcon icon;
    // A selected line shows the colour as it is.
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected, QIcon::Active}) icon.addPixmap(image, mode);
    return icon;
}

QListWidget* MakeSwatchList(ListBox& control, const std::array<PaletteEntry, kPaletteSize>& palette, const char* name,
                            const QString& words) {
    auto* list = new QListWidget;
    list->setObjectName(name);
    list->setAccessibleName(words);
    list->setToolTip(words);
    list->setIconSize(kSwatch);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setFixedWidth(kListWidth);
    for (std::size_t i = 0; i < palette.size(); ++i)
        list->addItem(new QListWidgetItem(SwatchOf(palette[i].color), ToQt(control.Lines.Get()[i])));
    const int edge = 2 * (list->frameWidth() + kControlGap);
    list->setFixedHeight(list->sizeHintForRow(0) * list->count() + edge);
    const auto show = [list, &control] {
        const QSignalBlocker quiet(*list);
        if (list->currentRow() != control.Current) list->setCurrentRow(control.Current);
    };
    control.Watch(show);
    show();
    QObject::connect(list, &QListWidget::currentRowChanged, list, [&control](int row) { control.Current = row; });
    return list;
}

}  // namespace

FormColors::FormColors(Application& app, QWidget* parent)
    : SettingsForm(app.Settings.Colors.Visible, "FormColors", "Colors and other Settings", parent),
      form_(app.Settings.Colors) {
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    column->addLayout(BuildLists());
    column->addLayout(BuildShadow());
    column->addWidget(BuildInterval());
    column->addStretch(1);
    column->addLayout(BuildButtons());
}

QLayout* FormColors::BuildLists() {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameGap);
    const auto add = [&](int place, Label& caption, const char* labelName, QListWidget* list) {
        QLabel* const label = MakeLabel(caption, labelName);
        label->setBuddy(list);
        grid->addWidget(label, 0, place);
        grid->addWidget(list, 1, place);
    };
    add(0, form_.LSoilCaption, "LSoilCaption",
        MakeSwatchList(form_.LSoilColor, kSoilPalette, "LSoilColor", "Color of the land"));
    add(1, form_.LSeaCaption, "LSeaCaption",
        MakeSwatchList(form_.LSealColor, kSeaPalette, "LSealColor", "Color of the sea"));
    return grid;
}

QLayout* FormColors::BuildShadow() {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameGap);
    QLabel* const caption = MakeLabel(form_.LShadow, "LShadow");
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName("SShadow");
    slider->setAccessibleName("Light of the night side");
    slider->setPageStep(kLevelPage);
    Bind(*slider, form_.SShadow);
    caption->setBuddy(slider);
    QLabel* const level = MakeLabel(form_.LShadowLevel, "LShadowLevel");
    level->setFont(NumberFont(kLevelPixels));
    level->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    level->setMinimumWidth(level->fontMetrics().horizontalAdvance("000"));
    grid->addWidget(caption, 0, 0);
    grid->addWidget(slider, 0, 1);
    grid->addWidget(level, 0, 2);
    return grid;
}

QWidget* FormColors::BuildInterval() {
    QGroupBox* const frame = MakeFrame(form_.FrameUpdate, "FrameUpdate");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameMargin);
    const std::array<std::pair<OptionButton*, const char*>, 4> buttons{
        {{&form_.CKI0, "CKI0"}, {&form_.CKI1, "CKI1"}, {&form_.CKI3, "CKI3"}, {&form_.CKI7, "CKI7"}}};
    int place = 0;
    for (const auto& [control, name] : buttons) {
        auto* button = new QRadioButton;
        button->setObjectName(name);
        // Who clears the others is the control; an interval that no button stands for leaves them all clear.
        button->setAutoExclusive(false);
        Bind(*button, *control);
        grid->addWidget(button, place / 2, place % 2);
        ++place;
    }
    QLabel* const days = MakeLabel(form_.LCheckInt, "LCheckInt");
    days->setProperty("quiet", true);
    grid->addWidget(days, 0, 2, 2, 1, Qt::AlignRight | Qt::AlignVCenter);
    grid->setColumnStretch(2, 1);
    return frame;
}

QLayout* FormColors::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    row->addWidget(MakePlainButton(form_.CDefault, "CDefault"));
    row->addStretch(1);
    row->addWidget(MakeDefaultButton(form_.CClose, "CClose"));
    return row;
}

}  // namespace glintara::desktop
