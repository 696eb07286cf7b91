#include "scene/mouse_text.h"

#include <cmath>
#include <optional>

#include "engine/astro/angle_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/astro/trigonometry.h"
#include "scene/mouse_place.h"
#include "scene/star_places.h"
#include "scene/sundial.h"

namespace glintara {

namespace {

std::string Degrees(double radians) { return FourDecimals(radians / kDegToRad); }

std::string PlaceText(const LatLon& place) {
    return "Latitude= " + Degrees(place.lat) + "\u00B0 N, " + " N,  Longitude= " + Degrees(place.lon) + "\u00B0 E, ";
}

std::string EarthText(const CommonData& data, const LatLon& place) {
    const double ra = WrapTwoPi(place.lon + GreenwichOfPicture(data));
    return "EARTH: " + PlaceText(place) + "RA= " + HoursToText(ra) + ": DEC= " + DegreesToText(place.lat);
}

/// The chart read backwards: where the Sun stands when the shadow ends under the mouse.
std::string SundialText(const Application& app, const ScenePoint& place) {
    const std::optional<ShadowTip> tip = TipAt(app, place);
    if (!tip) return "SUNDIAL";
    const HorizonAngles sun = SunCasting(*tip);
    return "SUNDIAL: shadow " + FourDecimals(std::hypot(tip->east, tip->north)) +
           " of the gnomon's height, with the Sun at Az:" + Degrees(sun.azimuth) +
           "\u00B0, El:" + Degrees(sun.altitude) + "\u00B0";
}

std::string SkyText(const Application& app, const Vector3& direction) {
    const LatLonRadius place = XYZToLatLon(direction);
    std::string text = "SKY: DEC= " + Degrees(place.lat) + "\u00B0 (" + DegreesToText(place.lat) +
                       ")  RA= " + HoursToText(WrapTwoPi(place.lon));
    if (!app.Main.CLocalSky.Value) return text;
    const HorizonAngles horizon = SkyToHorizon(app.Data.Site, GreenwichOfPicture(app.Data), direction);
    return text + ", Az:" + Degrees(horizon.azimuth) + "\u00B0, El:" + Degrees(horizon.altitude);
}

}  // namespace

std::string FourDecimals(double value) {
    constexpr double kParts = 10000;
    return PlainNumberText(std::round(value * kParts) / kParts + 0.0);  // no minus before a zero
}

std::string MouseText(const Application& app, const ScenePoint& place) {
    if (ShowsSundial(app.Run)) return SundialText(app, place);
    std::string text;
    if (app.Main.MnuFloatingSite.Checked) {
        const ObserverSite& site = app.Data.Site;
        text = std::string("FLOATING: ") + "FLOATING SITE: " + PlaceText({site.SiteLat, site.SiteLon}) + "\n";
    }
    if (const std::optional<LatLon> earth = EarthAt(app, place)) return text + EarthText(app.Data, *earth);
    if (const std::optional<Vector3> sky = SkyAt(app, place)) return text + SkyText(app, *sky);
    return text + "SPACE";
}

void ShowMouseText(Application& app) {
    if (const std::optional<ScenePoint> place = MouseOnPicture(app)) app.Main.LStatus.Caption = MouseText(app, *place);
}

}  // namespace glintara
