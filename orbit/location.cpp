#include "orbit/location.h"

#include "engine/astro/constants.h"
#include "engine/glintcore.h"
#include "orbit/element_sets.h"

namespace glintara {

void SetLocation(CommonData& data, const Geodetic& place) {
    data.Site = MakeObserverSite(place);
    const double radius = data.Site.SiteRadius;
    const Vector3 observer = radius * ObserverOnUnitSphere(data.Site);
    Satellite_SetSiteGeoPosition(observer.x, observer.y, observer.z, radius);
    for (int i = 1; i <= data.SatCount; ++i) {
        SatRecord& satellite = data.Satellite(i);
        if (satellite.MeanMotion > 0) satellite.MeanRadiusA = MeanRadiusOf(satellite.MeanMotion, radius);
    }
}

void SetLocationDegrees(CommonData& data, double lat, double lon) {
    SetLocation(data, {lat * kDegToRad, lon * kDegToRad, kDefaultSiteHeight});
}

void RefreshLocation(CommonData& data) { SetLocation(data, {data.Site.SiteLat, data.Site.SiteLon, data.Site.SiteAlt}); }

}  // namespace glintara
