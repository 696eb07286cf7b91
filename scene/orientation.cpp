#include "scene/orientation.h"

#include <string>
#include <string_view>

#include "engine/astro/constants.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "engine/astro/trigonometry.h"
#include "scene/view_geometry.h"

namespace glintara {
namespace {

struct Angles {
    double lat = 0;
    double lon = 0;
};

/// East longitude, 0 to 2 pi, below a right ascension at the displayed instant.
double LongitudeBelow(const CommonData& data, double ra) {
    return WrapTwoPi(EastLongitudeOf(ra, SiderealFromDate(data.SimFields())));
}

/// Where the normal of an orbit pierces the sky: a quarter turn behind the ascending node, as far from the pole as the
/// orbit is inclined.
Angles OrbitNormal(const CommonData& data, const SatRecord& satellite) {
    return {kPi / 2 - satellite.Inclination, LongitudeBelow(data, satellite.RaanAngle - kPi / 2)};
}

Angles AnglesOf(const CommonData& data, Orientation orientation) {
    const ObserverSite& site = data.Site;
    switch (orientation) {
        case Orientation::Zero:
            return {0, 0};
        case Orientation::Zenith:
            return {site.SiteGeoLat, site.SiteLon};
        case Orientation::Up:
            return {site.SiteGeoLat - kPi / 2, site.SiteLon};
        case Orientation::Noon:
            return {data.SunDec, LongitudeBelow(data, data.SunRA)};
        case Orientation::Night:
            return {-data.SunDec, LongitudeBelow(data, data.SunRA + kPi)};
        case Orientation::Orbit:
            return OrbitNormal(data, data.Satellite(data.WorkingSat()));
    }
    return {};
}

void Press(Application& app, Orientation orientation, std::string_view text) {
    if (!Orient(app.Data, orientation)) return;
    app.Main.LCommandOutput.Caption = std::string(text);
    app.Windows.UpdateGraphicsLevel2();
}

}  // namespace

CameraView CaptureCamera(const ViewState& view) {
    return {.ViewRoll = view.ViewRoll,
            .ViewLat = view.ViewLat,
            .ViewLon = view.ViewLon,
            .ZoomFactor = view.ZoomFactor,
            .PanX = view.PanX,
            .PanY = view.PanY};
}

void ApplyCamera(ViewState& view, const CameraView& camera) {
    view.ViewRoll = camera.ViewRoll;
    view.ViewLat = camera.ViewLat;
    view.ViewLon = camera.ViewLon;
    view.ZoomFactor = camera.ZoomFactor;
    view.PanX = camera.PanX;
    view.PanY = camera.PanY;
    HoldView(view);
    RefreshViewCache(view);
}

void TakeSkyLock(CommonData& data) {
    ViewState& view = data.View;
    view.LockedLat = view.ViewLat;
    view.LockedAngle = WrapTwoPi(SiderealPlusAngle(data.SimFields(), view.ViewLon));
    view.LockedRoll = view.ViewRoll;
}

bool Orient(CommonData& data, Orientation orientation) {
    if (orientation == Orientation::Orbit && data.SatCount == 0) return false;
    ViewState& view = data.View;
    const Angles angles = AnglesOf(data, orientation);
    view.ViewRoll = 0;
    view.ViewLat = angles.lat;
    view.ViewLon = angles.lon;
    if (orientation == Orientation::Zero) {
        view.PanX = 0;
        view.PanY = 0;
    }
    HoldView(view);
    TakeSkyLock(data);
    RefreshViewCache(view);
    return true;
}

void CZeroOrientation_Click(Application& app) { Press(app, Orientation::Zero, "Zero Angle Orientation"); }

void CZenith_Click(Application& app) { Press(app, Orientation::Zenith, "Local Zenith Orientation"); }

void CUpOrientation_Click(Application& app) { Press(app, Orientation::Up, "Up Orientation"); }

void CNoon_Click(Application& app) { Press(app, Orientation::Noon, "Noon Orientation"); }

void CNightOrientation_Click(Application& app) { Press(app, Orientation::Night, "MidNight Orientation"); }

void COrbitOrient_Click(Application& app) { Press(app, Orientation::Orbit, "Orbit Orientation"); }

}  // namespace glintara
