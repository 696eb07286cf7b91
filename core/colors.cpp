#include "core/colors.h"

#include <algorithm>
#include <string>
#include <vector>

#include "engine/astro/number_text.h"

namespace glintara::form_colors {

namespace {

using Palette = std::array<PaletteEntry, kPaletteSize>;

constexpr int kDefaultLevel = 90;
constexpr double kDefaultDays = 3;

struct IntervalButton {
    OptionButton ColorControls::*button;
    double days;
};

constexpr std::array<IntervalButton, 4> kIntervals{{{&ColorControls::CKI0, 0},
                                                    {&ColorControls::CKI1, 1},
                                                    {&ColorControls::CKI3, kDefaultDays},
                                                    {&ColorControls::CKI7, 7}}};

int LevelOf(std::uint32_t color) {
    constexpr std::uint32_t kChannel = 0xFF;
    return static_cast<int>(((color & kChannel) + (color >> 8 & kChannel) + (color >> 16 & kChannel)) / 3);
}

void Choose(ListBox& list, const Palette& palette, std::uint32_t color) {
    const auto entry =
        std::find_if(palette.begin(), palette.end(), [color](const PaletteEntry& one) { return one.color == color; });
    const int line = entry == palette.end() ? kNoLine : static_cast<int>(entry - palette.begin());
    list.Current = line;
    list.Selected = line == kNoLine ? std::set<int>{} : std::set<int>{line};
}

void ShowInterval(Application& app) {
    ColorControls& form = app.Settings.Colors;
    const double days = app.Data.UpdateCheckDays;
    for (const IntervalButton& interval : kIntervals) (form.*interval.button).Value = interval.days == days;
    form.LCheckInt.Caption = "Days: " + PlainNumberText(days);
}

void ConnectList(Application& app, ListBox& list, const Palette& palette, std::uint32_t& color) {
    std::vector<std::string> names;
    for (const PaletteEntry& entry : palette) names.emplace_back(entry.name);
    list.Lines = std::move(names);
    list.Current.SetHandler([&app, &list, &palette, &color] {
        const int line = list.Current;
        if (line < 0 || line >= static_cast<int>(palette.size())) return;
        const std::uint32_t chosen = palette[static_cast<std::size_t>(line)].color;
        if (color == chosen) return;
        color = chosen;
        app.Windows.UpdateGraphicsLevel2();
    });
}

void ConnectShadow(Application& app) {
    ColorControls& form = app.Settings.Colors;
    form.SShadow.Value.SetHandler([&app, &form] {
        form.LShadowLevel.Caption = std::to_string(form.SShadow.Value);
        // A colour that is no grey is shown by its level, and stays until the slider is moved.
        if (LevelOf(app.Data.ShadowColor) == form.SShadow.Value) return;
        app.Data.ShadowColor = static_cast<std::uint32_t>(form.SShadow.Value) * kGreyStep;
        app.Windows.UpdateGraphicsLevel2();
    });
}

void ConnectIntervals(Application& app) {
    ColorControls& form = app.Settings.Colors;
    for (const IntervalButton& interval : kIntervals) {
        OptionButton& button = form.*interval.button;
        button.Value.SetHandler([&app, &button, days = interval.days] {
            const bool isInForce = app.Data.UpdateCheckDays == days;
            if (button.Value == isInForce) return;
            // Who is pressed while it is set stays set.
            if (button.Value) app.Data.UpdateCheckDays = days;
            ShowInterval(app);
        });
    }
}

}  // namespace

void WinDataUpdate(Application& app) {
    ColorControls& form = app.Settings.Colors;
    Choose(form.LSoilColor, kSoilPalette, app.Data.SoilColor);
    Choose(form.LSealColor, kSeaPalette, app.Data.SeaColor);
    form.SShadow.MoveTo(LevelOf(app.Data.ShadowColor));
    form.LShadowLevel.Caption = std::to_string(form.SShadow.Value);
    ShowInterval(app);
}

void CDefault_Click(Application& app) {
    CommonData& data = app.Data;
    data.ShadowColor = kDefaultLevel * kGreyStep;
    data.SoilColor = kSoilPalette[kDefaultSoil].color;
    data.SeaColor = kSeaPalette[kDefaultSea].color;
    data.UpdateCheckDays = kDefaultDays;
    WinDataUpdate(app);
    app.Windows.UpdateGraphicsLevel2();
}

void Open(Application& app) {
    WinDataUpdate(app);
    app.Settings.Colors.Visible = true;
}

void Connect(Application& app) {
    ColorControls& form = app.Settings.Colors;
    ConnectList(app, form.LSoilColor, kSoilPalette, app.Data.SoilColor);
    ConnectList(app, form.LSealColor, kSeaPalette, app.Data.SeaColor);
    ConnectShadow(app);
    ConnectIntervals(app);
    form.CDefault.SetClickHandler([&app] { CDefault_Click(app); });
    form.CClose.SetClickHandler([&form] { form.Visible = false; });
    WinDataUpdate(app);
}

}  // namespace glintara::form_colors
