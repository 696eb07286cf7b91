#pragma once

// What the tests of the scene share: a program without a window, a picture of 600 by 400 twips that writes down what is
// drawn on it, and a camera.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "flare/surface_models.h"
#include "scene/surface/recording_surface.h"
#include "scene/view_geometry.h"
#include "state/application.h"
#include "state/recording_services.h"

namespace glintara::testing {

constexpr double kPiExact = 3.14159265358979323846;
constexpr double kDegree = kPiExact / 180;

struct SceneFixture : ::testing::Test {
    RecordingBoxes boxes;
    Events events;
    RecordingWindows windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
    RecordingSurface surface{600, 400};
    PolygonBuffer polygon;
    SceneContext scene{app, surface, polygon};
    ViewState& view = app.Data.View;

    /// Zoom 64 (200 twips to the unit on this picture), no pan, looking at (`lat`, `lon`), degrees.
    void LookAt(double lat, double lon, double roll = 0) {
        view.ViewLat = lat * kDegree;
        view.ViewLon = lon * kDegree;
        view.ViewRoll = roll * kDegree;
        view.ZoomFactor = 64;
        RefreshViewCache(view);
    }

    void Pan(double x, double y) {
        view.PanX = x;
        view.PanY = y;
    }

    std::vector<RecordedOperation> Lines() const { return surface.OperationsOf(DrawOperation::Line); }
};

inline void ExpectNumbers(const RecordedOperation& operation, const std::vector<double>& numbers,
                          double tolerance = 1e-9) {
    ASSERT_EQ(operation.numbers.size(), numbers.size()) << OperationText(operation);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        EXPECT_NEAR(operation.numbers[i], numbers[i], tolerance)
            << "number " << i << " of " << OperationText(operation);
    }
}

inline void ExpectVector(const Vector3& found, const Vector3& expected, double tolerance = 1e-12) {
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

/// Numbers for random cameras and places, the same in every run.
class Dice {
  public:
    double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine_); }

    /// A point of a ball of radius 3 without its core.
    Vector3 Point() {
        for (;;) {
            const Vector3 point{Between(-3, 3), Between(-3, 3), Between(-3, 3)};
            if (Length(point) > 0.1) return point;
        }
    }

    void Camera(ViewState& view) {
        view.ViewLat = Between(-4, 4);
        view.ViewLon = Between(-7, 7);
        view.ViewRoll = Between(-4, 4);
        view.ZoomFactor = std::exp(Between(std::log(0.1), std::log(5000)));
        view.PanX = Between(-3, 3);
        view.PanY = Between(-3, 3);
        RefreshViewCache(view);
    }

  private:
    std::mt19937_64 engine_{20100103};
};

}  // namespace glintara::testing
