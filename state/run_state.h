#pragma once

// What the main window remembers while the program runs: where it is in its life, how it shows itself, and what a frame
// left for the clock.

#include <cstdint>
#include <optional>
#include <string>

#include "engine/astro/constants.h"
#include "engine/astro/horizon.h"
#include "state/finder.h"
#include "state/map_tables.h"
#include "state/observed.h"
#include "state/satellite_record.h"
#include "state/saved_view.h"

namespace glintara {

/// What the splash over the picture shows.
enum class Splash {
    None,   ///< nothing: the opening is over
    Title,  ///< title and version
    Final,  ///< the same with its last line
};

/// How the globe turns on by itself.
enum class Turning {
    Lasting,   ///< until somebody stops it
    Decaying,  ///< after a drag: slower and slower, until it rests
};

/// Change of an angle, radians, by which the cursor keys turn the view and the globe turns at first.
inline constexpr double kStartRotation = kPi / 72;

/// `LastTickSecond` when no picture has been asked for in the present second.
inline constexpr std::int16_t kNoTickSecond = -1;

/// Where the working satellite stands in the observer's sky, as the last satellite pass left it.
class WorkingDirection {
  public:
    double LastAzimuth = 0;    ///< radians, from north through east
    double LastElevation = 0;  ///< radians

    /// Keeps the direction of `satellite`.
    void Keep(const SatRecord& satellite, const HorizonAngles& direction) {
        LastAzimuth = direction.azimuth;
        LastElevation = direction.altitude;
        known_ = true;
        orbitNumber_ = satellite.OrbitNumber;
        satNumber_ = satellite.SatNumber;
    }

    /// No satellite's direction is known: the instant has been exchanged.
    void Forget() { known_ = false; }

    /// Whether the direction is that of `satellite`. After another one has begun to work there is none until the next
    /// pass.
    bool IsOf(const SatRecord& satellite) const {
        return known_ && orbitNumber_ == satellite.OrbitNumber && satNumber_ == satellite.SatNumber;
    }

  private:
    bool known_ = false;
    std::int16_t orbitNumber_ = 0;
    std::string satNumber_;
};

/// The camera by itself.
struct CameraView {
    double ViewRoll = 0;
    double ViewLat = 0;
    double ViewLon = 0;
    double ZoomFactor = 0;
    double PanX = 0;
    double PanY = 0;

    friend bool operator==(const CameraView&, const CameraView&) = default;
};

/// What decides which boxes can be used.
struct UsableInputs {
    bool known = false;       ///< false before they have been worked out for the first time
    bool satellites = false;  ///< the list holds one
    bool orbit = false;       ///< the orbit in space is drawn
    bool projection = false;  ///< the orbit on the ground is drawn
    bool flares = false;      ///< flares are shown, as they stand or as tracks
    bool tracks = false;      ///< tracks of flares are shown

    friend bool operator==(const UsableInputs&, const UsableInputs&) = default;
};

/// The camera that a floating site stands under, radians.
struct FloatingCamera {
    double lat = 0;
    double lon = 0;

    friend bool operator==(const FloatingCamera&, const FloatingCamera&) = default;
};

/// Whose time zone local time is. As long as the user has chosen none, `UTCOffsetHours` follows the computer's own.
struct LocalZone {
    bool chosen = false;     ///< the user's: typed, or come with a workspace
    std::int16_t hours = 0;  ///< `UTCOffsetHours` as it was left; another value has come with a workspace
    int shownMinutes = 0;    ///< how far the time that the date label shows is ahead of UTC; the clock alone writes it
};

struct RunState {
    // Pictures.
    std::int32_t FrameCounter = 0;  ///< coarse pictures since the last reading of the rate
    bool FinePass = false;          ///< a fine picture is being made: fine borders, fine steps
    bool FrameBusy = false;         ///< a picture is being made; only the run loop writes it
    Splash SplashShown = Splash::None;
    std::int16_t PendingView = 0;  ///< number of the view that was entered last; 0 for none
    SavedView StartView;           ///< the view at the end of the opening; not used before

    // The boxes.
    UsableInputs UsableSeen;       ///< what `RefreshEnabled` went by last
    bool OptionsFromText = false;  ///< an option string is being read: pictures and ticks wait for its end

    // Clock.
    std::int16_t LastTickSecond = kNoTickSecond;  ///< second of the last picture that the tick asked for
    WorkingDirection Working;
    LocalZone Zone;

    // The window.
    bool FullScreen = false;
    bool PanelsHidden = false;
    bool MenusShown = true;
    double ClientWidth = 0;  ///< inside of the window, twips; written by the window before `ReSizeWindow`
    double ClientHeight = 0;
    int PanelGroup = 0;    ///< 0: time, stars, orbit, satellite; 1: drawing and views
    bool KeyLock = false;  ///< a text field has the focus: the keys are its own

    // The mouse.
    double LastMouseX = 0;  ///< where it was last seen over the picture, twips
    double LastMouseY = 0;
    double LastPictureWidth = 0;  ///< size of the picture then, twips; 0 before the mouse has been over it
    double LastPictureHeight = 0;

    FinderState Finder;
    SkyPointerState SkyPointer;

    PolygonTool BorderTool;  ///< of the map tools

    /// The camera under which the floating site was last moved; none while the site does not float.
    std::optional<FloatingCamera> SiteFloatedAt;

    // The workspace.
    Observed<std::string> WorkspaceFile;  ///< the file that was loaded or saved last, UTF-8; empty for none
    Observed<bool> AskToSave{true};       ///< changes that would be lost are asked about

    // Tracks.
    bool ExportPending = false;    ///< the track of the working satellite is to be written to files
    bool CityScanPending = false;  ///< the cities along it are to be found
    bool TrackBusy = false;        ///< one of both is under way

    // Turning.
    bool DragActive = false;            ///< a drag is under way
    double RotIncLat = kStartRotation;  ///< last change of the angles in one tick of the turning, radians
    double RotIncLon = kStartRotation;
    double RotIncRoll = kStartRotation;
    int AutoTurn = 0;  ///< times that the globe was set turning; 1: it is the idle turning after the opening

    // Long work.
    Observed<int> LongLoops;  ///< searches, scans and downloads under way; the clock stands still meanwhile
    bool Opening = false;     ///< the opening sequence is under way
    bool OpeningCut = false;  ///< a key or a click has ended it early
    bool Closing = false;     ///< the window is to close; long work ends at its next look
};

}  // namespace glintara
