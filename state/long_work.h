#pragma once

// Work that takes its time: the program lives on meanwhile, but its clock stands still.

#include "state/application.h"

namespace glintara {

/// A search, a scan or a download is under way as long as one of these stands. The clock does not move meanwhile, and
/// the window closes only after the last of them.
class LongWork {
  public:
    explicit LongWork(Application& app) : run_(app.Run) { run_.LongLoops = run_.LongLoops + 1; }
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;
    ~LongWork() { run_.LongLoops = run_.LongLoops - 1; }

  private:
    RunState& run_;
};

}  // namespace glintara
