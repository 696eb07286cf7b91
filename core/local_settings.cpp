#include "core/local_settings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "core/box_numbers.h"
#include "core/zone_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/astro/trigonometry.h"
#include "orbit/floating_site.h"
#include "orbit/location.h"

namespace glintara {

void SetStationCode(CommonData& data, std::string_view text) {
    const double number =
        std::clamp(Truncate(LeadingNumber(text)), 0.0, static_cast<double>(std::numeric_limits<std::int32_t>::max()));
    data.StationNumber = static_cast<std::int32_t>(number);
    data.StationCode = PlainNumberText(number);
}

namespace local_settings {

namespace {

constexpr double kMostOffsetHours = 24;
constexpr int kMinutesPerHour = 60;

LocalSettingsControls& Form(Application& app) { return app.Settings.Local; }

BoxNumber ReadLat(const LocalSettingsControls& form) { return ReadBoxAngle(form.TLAT.Text.Get(), 'N', 'S'); }
BoxNumber ReadLon(const LocalSettingsControls& form) { return ReadBoxAngle(form.TLON.Text.Get(), 'E', 'W'); }

std::string DegreesText(double radians) { return PlainNumberText(radians / kDegToRad); }

/// What the boxes say of the place. A text that stands as it was filled in means the value itself, whatever digits the
/// text leaves out.
Geodetic PlaceInBoxes(const LocalSettingsControls& form, const ObserverSite& site) {
    const auto valueOf = [](const TextBox& box, const std::string& filledIn, double value, double read) {
        return box.Text.Get() == filledIn ? value : read;
    };
    return {valueOf(form.TLAT, DegreesText(site.SiteLat), site.SiteLat, ReadLat(form).value * kDegToRad),
            valueOf(form.TLON, DegreesText(site.SiteLon), site.SiteLon, ReadLon(form).value * kDegToRad),
            valueOf(form.TALT, PlainNumberText(site.SiteAlt), site.SiteAlt, ReadBoxNumber(form.TALT.Text.Get()).value)};
}

void ShowPlaceAsRead(LocalSettingsControls& form) {
    const auto passedOver = [](BoxNumber read) { return read.whole ? "" : " (?)"; };
    const BoxNumber lat = ReadLat(form);
    const BoxNumber lon = ReadLon(form);
    const BoxNumber height = ReadBoxNumber(form.TALT.Text.Get());
    form.LPlace.Caption = AngleText(lat.value, 'N', 'S') + passedOver(lat) + "   " + AngleText(lon.value, 'E', 'W') +
                          passedOver(lon) + "   " + PlainNumberText(height.value) + " m" + passedOver(height);
}

int ComputerOffset(const CommonData& data, const SimulatedTime& time) {
    return time.ComputerOffsetMinutes(DateToJD(data.SimFields()));
}

void ShowComputerZone(Application& app, const SimulatedTime& time) {
    const int minutes = ComputerOffset(app.Data, time);
    CheckBox& box = Form(app).CComputerZone;
    box.Caption = "As this computer: UTC" + ZoneText(minutes);
    std::string tip =
        "Local time is that of this computer's time zone, with its summer time as the displayed date has it";
    if (minutes % kMinutesPerHour != 0)
        tip += ".\nThe " + PlainNumberText(std::abs(minutes % kMinutesPerHour)) +
               " minutes count; a number that is typed instead is whole hours";
    box.ToolTip = std::move(tip);
}

std::string WholeHours(int minutes) { return std::to_string(minutes / kMinutesPerHour); }

void ConnectZone(Application& app, const SimulatedTime& time) {
    LocalSettingsControls& form = Form(app);
    form.TUTC.Text.SetHandler([&app, &form, &time] {
        if (form.TUTC.Text.Get() != WholeHours(ComputerOffset(app.Data, time))) form.CComputerZone.Value = false;
    });
    form.CComputerZone.Value.SetHandler([&app, &form, &time] {
        if (form.CComputerZone.Value) form.TUTC.Text = WholeHours(ComputerOffset(app.Data, time));
    });
}

}  // namespace

void WinDataUpdate(Application& app) {
    LocalSettingsControls& form = Form(app);
    const CommonData& data = app.Data;
    form.TLAT.Text = DegreesText(data.Site.SiteLat);
    form.TLON.Text = DegreesText(data.Site.SiteLon);
    form.TALT.Text = PlainNumberText(data.Site.SiteAlt);
    form.TUTC.Text = std::to_string(data.UTCOffsetHours);
    form.CComputerZone.Value = !app.Run.Zone.chosen;
    form.TStationCode.Text = data.StationCode;
    form.LTimeZone.Caption = std::string();
}

void Open(Application& app, const SimulatedTime& time) {
    if (Form(app).Visible) return;
    WinDataUpdate(app);
    ShowComputerZone(app, time);
    Form(app).Visible = true;
}

void COk_Click(Application& app, SimulatedTime& time, const Hooks& hooks) {
    LocalSettingsControls& form = Form(app);
    CommonData& data = app.Data;
    const double hours = Truncate(ReadBoxNumber(form.TUTC.Text.Get()).value);
    if (!(hours >= -kMostOffsetHours && hours <= kMostOffsetHours)) {
        app.Boxes.Tell("Invalid Time Zone", MessageIcon::Critical);
        return;
    }
    data.UTCOffsetHours = static_cast<std::int16_t>(hours);
    app.Run.Zone = {!form.CComputerZone.Value, data.UTCOffsetHours};
    const std::string code = data.StationCode;
    SetStationCode(data, form.TStationCode.Text.Get());
    if (form.TStationCode.Text.Get() != code && hooks.keepStationCode) hooks.keepStationCode(data.StationCode);
    const ObserverSite before = data.Site;
    const Geodetic place = PlaceInBoxes(form, before);
    SetLocation(data, place);
    if (place.lat != before.SiteLat || place.lon != before.SiteLon || place.height != before.SiteAlt)
        EndFloatingSite(app, "that you typed");
    time.TimeSyncronize();
    app.Windows.UpdateGraphicsLevel2();
    form.Visible = false;
}

void CFromTimeZone_Click(Application& app, const TimeZoneSources& sources) {
    LocalSettingsControls& form = Form(app);
    const TimeZonePlace place = FindTimeZonePlace(sources);
    form.LTimeZone.Caption = place.words;
    if (!place.found) return;
    form.TLAT.Text = CutNumberText(place.lat + 0.00005, 4);
    form.TLON.Text = CutNumberText(place.lon + 0.00005, 4);
}

void Connect(Application& app, SimulatedTime& time, const Hooks& hooks) {
    LocalSettingsControls& form = Form(app);
    const auto showPlace = [&form] { ShowPlaceAsRead(form); };
    for (TextBox* box : {&form.TLAT, &form.TLON, &form.TALT}) box->Text.SetHandler(showPlace);
    ShowPlaceAsRead(form);
    ConnectZone(app, time);
    form.CFromTimeZone.SetClickHandler([&app, hooks] { CFromTimeZone_Click(app, hooks.timeZone()); });
    form.COk.SetClickHandler([&app, &time, hooks] { COk_Click(app, time, hooks); });
    form.CCancel.SetClickHandler([&form] { form.Visible = false; });
}

}  // namespace local_settings

}  // namespace glintara
