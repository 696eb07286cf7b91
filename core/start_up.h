#pragma once

// How the program comes up.

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/simulated_time.h"
#include "core/usage_record.h"
#include "state/application.h"
#include "state/version.h"

namespace glintara {

/// Title of the main window: program and version, and before them the name of the workspace at hand, if there is one.
inline std::string WindowTitle(const std::string& workspace = "") {
    const std::string program = "Glintara - " + VersionLabel();
    return workspace.empty() ? program : workspace + " - " + program;
}

/// What start-up asks of other rooms. What is empty is left out.
struct StartUpHooks {
    /// Reads borders, stars and constellations; gives the names of the files that could not be read.
    std::function<std::vector<std::string>()> loadMap;
    std::function<bool()> loadSites;        ///< reads cities and sites; whether they could be read
    std::function<void()> rebuildStarList;  ///< after a change of `MaxStarMag`
    /// The observer's code as it was kept at an earlier start; empty for none.
    std::function<std::string()> keptStationCode;
};

/// Brings the state to where the program starts, loads the data files, counts the start, and arms the opening. The
/// controls must have their handlers already. Data files that cannot be read give one message box, "Error Loading
/// Database" with their names, and the program goes on with what there is. `programFolder` becomes the current
/// directory, unless it is empty.
void Form_Load(Application& app, SimulatedTime& time, UsageRecord& usage, const StartUpHooks& hooks,
               const std::filesystem::path& programFolder);

}  // namespace glintara
