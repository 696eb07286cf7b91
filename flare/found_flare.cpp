#include "flare/found_flare.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "orbit/satellite_table.h"
#include "orbit/sun_and_moon.h"

namespace glintara {

namespace {

/// A flare is over within seconds, a transit of a far satellite may take hours.
constexpr double kLongestPass = 0.25;

/// The search gives the beginning to a tenth of a second.
constexpr double kSameBeginning = 1 / kSecondsPerDay;

constexpr double kTenth = 0.1 / kSecondsPerDay;

std::string Degrees(double radians) { return CutNumberText(radians / kDegToRad, 1) + "\u00B0"; }

/// To the nearest tenth of a second.
std::string Instant(double jd) {
    CalendarFields fields = JDToDate(jd + kTenth / 2);
    fields.second = std::floor(fields.second * 10) / 10;
    return DateText(fields.year, fields.month, fields.day) + " " + TimeText(fields.hour, fields.minute, fields.second) +
           " UTC";
}

}  // namespace

std::optional<FlarePass> PassOfFoundFlare(const Application& app, int orbitNumber, int mirror, double jd,
                                          double maxDistance) {
    const int found = SearchOrbitNumber(app.Data, orbitNumber);
    if (found == 0) return std::nullopt;
    // The passes of that satellite alone.
    const auto alone = std::make_unique<CommonData>();
    alone->Site = app.Data.Site;
    alone->SatCount = 1;
    alone->Satellite(1) = app.Data.Satellite(found);
    PassQuest quest;
    quest.start = jd;
    quest.days = kLongestPass;
    quest.maxDistance = maxDistance;
    quest.moon = app.Main.CMoonFlares.Value;
    quest.transit = app.Main.MnuTransitMode[kTransitEntry].Checked;
    for (FlarePass pass : ListPasses(*alone, quest)) {
        if (pass.mirror != mirror || pass.begin - jd > kSameBeginning) continue;
        pass.satellite = found;
        return pass;
    }
    return std::nullopt;
}

void TellFoundFlare(Application& app, const std::optional<FlarePass>& pass) {
    FindFlareControls& form = app.FindFlare;
    if (!pass) {
        form.LFlareTime.Caption = std::string();
        form.LFlareSky.Caption = std::string();
        return;
    }
    const HorizonAngles sun = WorldToHorizon(app.Data.Site, SunPlace(app.Data, pass->closest));
    form.LFlareTime.Caption =
        "Nearest " + Instant(pass->closest) + ", " + CutNumberText(pass->distance / 1000, 2) + " km away";
    form.LFlareSky.Caption = "Azimuth " + Degrees(pass->sky.azimuth) + ", elevation " + Degrees(pass->sky.altitude) +
                             ", Sun at " + Degrees(sun.altitude);
}

}  // namespace glintara
