#include "core/map_tools.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "scene/map_files.h"
#include "scene/map_text.h"
#include "scene/view_geometry.h"

namespace glintara {

namespace {

/// The program works in the folder where its data stand.
constexpr auto kProgramFolder = ".";

void Say(Application& app, std::string text) { app.Main.LCommandOutput.Caption = std::move(text); }

void SayWritten(Application& app, const std::string& file, bool written) {
    Say(app, written ? file + " written" : "Cannot write " + file);
}

void SaveBinaries(Application& app) {
    const CommonData& data = app.Data;
    const std::vector<std::string> failed = SaveMapFiles(kProgramFolder, data.Map, data.Stars, data.Cities);
    std::string names;
    for (const std::string& file : failed) names += (names.empty() ? "" : ", ") + file;
    Say(app, failed.empty() ? "Map files written" : "Cannot write " + names);
}

void SaveSeaSpots(Application& app) {
    // The spots have no other home than the text: where it could not be read, an empty one must not take its place.
    if (app.Data.Map.SeaSpots.size() <= 1) {
        Say(app, "No sea spots");
        return;
    }
    SayWritten(app, kSeaSpotFile, CSaveDbg(kProgramFolder, app.Data.Map));
}

/// The place of the Earth on which the mouse was last seen.
std::optional<LatLon> PlaceUnderMouse(const Application& app) {
    const RunState& run = app.Run;
    if (run.LastPictureWidth <= 0 || run.LastPictureHeight <= 0 || app.Main.CSkyOnly.Value) return std::nullopt;
    const ViewState& view = app.Data.View;
    const WindowScale window = GetWindowScale(view, run.LastPictureWidth, run.LastPictureHeight);
    const ScenePoint point{SceneFromBoxX(window, view, run.LastMouseX), SceneFromBoxY(window, view, run.LastMouseY)};
    return EarthPlaceAt(view, app.Main.CPlaniSphere.Value, point);
}

void ShowSelection(Application& app) {
    const auto selected = static_cast<std::size_t>(app.Run.BorderTool.Selected);
    Say(app, "Vertex " + std::to_string(selected) + ", polygon " + std::to_string(app.Data.Map.Border.Id[selected]));
    app.Windows.UpdateGraphicsLevel2();
}

void SelectUnderMouse(Application& app) {
    const std::optional<LatLon> place = PlaceUnderMouse(app);
    if (place && CPolDbg(app.Data.Map, app.Run.BorderTool, *place)) ShowSelection(app);
}

void MoveSelection(Application& app, std::int32_t step) {
    if (MoveBorderDbg(app.Data.Map, app.Run.BorderTool, step)) ShowSelection(app);
}

void AddVertex(Application& app) {
    std::string told = AddPolygonDbg(app.Data.Map, app.Run.BorderTool);
    if (told.empty()) {
        Say(app, "No vertex selected");
        return;
    }
    Say(app, std::move(told));
    app.Windows.UpdateGraphicsLevel2();
}

}  // namespace

void ConnectMapTools(Application& app) {
    MainControls& main = app.Main;
    main.CSaveBinDbg.SetClickHandler([&app] { SaveBinaries(app); });
    main.CSavePolDbg.SetClickHandler(
        [&app] { SayWritten(app, kCountryZipFile, CSavePolDbg(kProgramFolder, app.Data.Map)); });
    main.CSaveDbg.SetClickHandler([&app] { SaveSeaSpots(app); });
    main.CPolDbg.SetClickHandler([&app] { SelectUnderMouse(app); });
    main.CPrevBorderDbg.SetClickHandler([&app] { MoveSelection(app, -1); });
    main.CNextBorderDbg.SetClickHandler([&app] { MoveSelection(app, 1); });
    main.CNewPolDbg.SetClickHandler([&app] {
        CNewPolDbg(app.Run.BorderTool);
        Say(app, "The next vertex begins a polygon");
    });
    main.CAddPolDbg.SetClickHandler([&app] { AddVertex(app); });
}

}  // namespace glintara
