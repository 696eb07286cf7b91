#pragma once

// Satellites over a recording picture.

#include "flare/observed_night.h"
#include "scene/flare_marks.h"
#include "scene/satellites.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {

using observed_night::kTurin;
using observed_night::Observatory;

inline NameWish Wish(double x, double y, double range, std::string_view name, NameRank rank = NameRank::Other) {
    NameWish wish;
    wish.x = x;
    wish.y = y;
    wish.range = range;
    wish.name = name;
    wish.rank = rank;
    return wish;
}

struct SatellitesTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;
    MainControls& main = o.app.Main;
    RecordingSurface surface{600, 400};
    PolygonBuffer polygon;
    SceneContext scene{o.app, surface, polygon};
    SatelliteWorkspace work;

    void SetUp() override { data.SunDir = {0, 0, 1}; }

    /// METEOSAT-10 works; it stands over Greenwich. Only its mark is shown.
    SatRecord& LoadMeteosat() {
        o.LoadOne("geo.tle", "METEOSAT-10 (MSG-3)");
        main.CPlotOrbit.Value = false;
        main.CSatNames.Value = false;
        return data.Satellite(data.SatCount);
    }

    void LookAt(double lat, double lon, double zoom) {
        data.View.ViewLat = lat * kDegree;
        data.View.ViewLon = lon * kDegree;
        data.View.ZoomFactor = zoom;
        RefreshViewCache(data.View);
    }

    /// 800 by 600 pixels, where words have room.
    void Enlarge() {
        surface.ScaleWidth = 12000;
        surface.ScaleHeight = 9000;
    }

    void Draw() {
        surface.Forget();
        DrawSatellites(scene, work);
    }

    /// What a board writes.
    std::vector<RecordedOperation> Written(NameBoard& board) {
        surface.Forget();
        board.Draw(scene);
        return surface.OperationsOf(DrawOperation::Print);
    }

    /// The area of a written name; its first character is a blank.
    BoxArea AreaOf(const RecordedOperation& name) {
        const double width = surface.TextWidth(name.text);
        const double height = surface.TextHeight(name.text);
        return {name.state.CurrentX, name.state.CurrentY, name.state.CurrentX + width, name.state.CurrentY + height};
    }

    std::vector<RecordedOperation> Circles() {
        Draw();
        return surface.OperationsOf(DrawOperation::Circle);
    }

    /// The marks of `flares`, then the names.
    void DrawMarks(const SatRecord& satellite, const LiveFlares& flares) {
        surface.Forget();
        work.names.Clear();
        DrawFlareMarks(scene, satellite, flares, work.names);
        work.names.Draw(scene);
    }

    std::vector<RecordedOperation> Names() {
        Draw();
        return surface.OperationsOf(DrawOperation::Print);
    }
};

}  // namespace glintara::testing
