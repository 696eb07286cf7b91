#pragma once

// The globe that turns on by itself: after the opening, after a drag, and by a key.

#include "state/application.h"

namespace glintara {

/// Turns the view a little with every tick of `TimerHRot`. The longitude at the centre moves by a quarter of
/// `RotIncLon` a tick. A drag meanwhile holds it. When it ends, a turning that lasts goes on with the drag's last
/// motion, or as before when the drag has not turned the globe; one that decays has ended with the first touch.
class GlobeTurning {
  public:
    explicit GlobeTurning(Application& app) : app_(app) {}

    /// Starts to turn. `AutoTurn` counts it.
    void Start(Turning how);

    /// Comes to rest.
    void Stop();

    /// Stops the idle turning that followed the opening, and only that, as any key and any touch of the picture does.
    /// True when it turned: the key that stopped it does not start it again.
    bool StopIdle();

    /// The key for it: starts the turning, or stops it. A turning that a drag has brought to a standstill starts with
    /// the motion of the program's start.
    void Toggle();

    /// A drag has ended in motion, at this change of the longitude a tick, radians: the view turns on, slower and
    /// slower until it rests after 1.5 seconds. A drag that ended without changing the longitude leaves it at rest.
    void DragReleased(double lonPerTick);

    /// The tick of `TimerHRot`.
    void Tick();

  private:
    void NoteDrag();
    void TakeDragMotion();

    Application& app_;
    Turning how_ = Turning::Lasting;
    int ticks_ = 0;        // since the start
    double decaying_ = 0;  // change of the longitude a tick when a decay began
    bool dragNoted_ = false;
    double dragStartLon_ = 0;  // as first noted in this drag
    double notedLat_ = 0;
    double notedLon_ = 0;
    double notedRoll_ = 0;
};

}  // namespace glintara
