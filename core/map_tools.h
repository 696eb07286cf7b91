#pragma once

// The buttons by which developers look through the borders, make a reduced table by hand and write the map files. What
// they did stands in `LCommandOutput`.

#include "state/application.h"

namespace glintara {

/// Wires the buttons. Files are written in the current directory, which is the program's folder: `CSaveBinDbg` writes
/// the five map files, `CSavePolDbg` and `CSaveDbg` their texts. `CPolDbg` selects the fine vertex that is nearest to
/// the place under the mouse; with the mouse off the Earth the selection stays. `CPrevBorderDbg` and `CNextBorderDbg`
/// move it, `CAddPolDbg` adds the vertex to the reduced table, after `CNewPolDbg` as the first of a polygon.
void ConnectMapTools(Application& app);

}  // namespace glintara
