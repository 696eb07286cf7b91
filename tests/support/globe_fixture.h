#pragma once

// Whole frames over a recording picture.

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "scene/globe.h"
#include "scene/scene_fixture.h"

namespace glintara {

/// A picture of 800 by 600 pixels with a square of land, 20 degrees wide, round (0, 0); in the fine table it is 10.
struct GlobeTest : testing::SceneFixture {
    FrameMemory memory;
    FrameStages stages;
    std::vector<std::string> called;

    GlobeTest() {
        surface.ScaleWidth = 12000;
        surface.ScaleHeight = 9000;
        LookAt(0, 0);
        app.Data.SunDir = {0, 1, 0};
        AddSquare(app.Data.Map.Zip, 10);
        AddSquare(app.Data.Map.Border, 5);
    }

    static void AddSquare(BorderTable& table, double half) {
        const double corners[5][2] = {{-half, -half}, {-half, half}, {half, half}, {half, -half}, {-half, -half}};
        for (const auto& corner : corners) {
            table.Lat.push_back(corner[0]);
            table.Lon.push_back(corner[1]);
            table.Id.push_back(1);
        }
    }

    Stage Notes(const char* name) {
        return [this, name](const SceneContext&) { called.emplace_back(name); };
    }

    void NoteAllStages() {
        stages.skyBackground = Notes("background");
        stages.cities = Notes("cities");
        stages.site = Notes("site");
        stages.sunAndMoon = Notes("sun");
        stages.ariesLine = Notes("aries");
        stages.satellites = Notes("satellites");
        stages.orbitDetails = Notes("orbit details");
        stages.stars = Notes("stars");
        stages.constellations = Notes("constellations");
        stages.astroDetails = Notes("astro details");
        stages.skyPointer = Notes("pointer");
    }

    void Frame() {
        called.clear();
        surface.Forget();
        GlobeFrame(app, surface, memory, stages);
    }

    /// Fills in one colour, of any kind.
    std::vector<RecordedOperation> FillsIn(Color color) const {
        std::vector<RecordedOperation> found;
        for (const RecordedOperation& operation : surface.Operations()) {
            const bool shape =
                operation.operation == DrawOperation::PolyPolygon || operation.operation == DrawOperation::Circle;
            const bool filled = operation.state.FillStyle == FillPattern::Solid;
            if (shape && filled && operation.state.FillColor == color) found.push_back(operation);
        }
        return found;
    }

    std::vector<RecordedOperation> RowsIn(Color color) const {
        std::vector<RecordedOperation> found;
        for (const RecordedOperation& row : surface.OperationsOf(DrawOperation::CoverRow))
            if (row.state.FillColor == color) found.push_back(row);
        return found;
    }

    /// Lines in one colour: `Polyline` on the globe, `Line` on the map.
    std::vector<RecordedOperation> LinesIn(Color color, DrawOperation kind) const {
        std::vector<RecordedOperation> found;
        for (const RecordedOperation& line : surface.OperationsOf(kind))
            if (line.state.ForeColor == color) found.push_back(line);
        return found;
    }

    std::vector<RecordedOperation> GridLines() const { return LinesIn(0x202020, DrawOperation::Polyline); }
    std::vector<RecordedOperation> MapGridLines() const { return LinesIn(0x202020, DrawOperation::Line); }

    std::vector<RecordedOperation> BorderLines() const {
        std::vector<RecordedOperation> found;
        for (const RecordedOperation& line : surface.OperationsOf(DrawOperation::Polyline))
            if (line.state.ForeColor == 0xAAAAAA) found.push_back(line);
        return found;
    }

    /// How far a shape in pixels reaches from the centre of the picture, to either side.
    static double HalfWidth(const RecordedOperation& shape) {
        double farthest = 0;
        for (std::size_t i = 0; i < shape.numbers.size(); i += 2)
            farthest = std::max(farthest, std::fabs(shape.numbers[i] - 400));
        return farthest;
    }

    std::string Words() const {
        std::string words;
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print)) words += print.text + "|";
        return words;
    }
};

}  // namespace glintara
