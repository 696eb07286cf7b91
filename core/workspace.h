#pragma once

// Loading and saving the workspace: the session as a file.
//
// A file is read as a whole before the session is touched. One that is no workspace, or whose head is broken, changes
// nothing. One that breaks later gives back its complete satellites and views, and the session then belongs to no file.

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/simulated_time.h"
#include "core/workspace_text.h"
#include "state/application.h"

namespace glintara {

/// The workspace beside the program that start-up loads.
inline constexpr std::string_view kStartUpWorkspace = "startup.cst";

/// The end of the name of every workspace.
inline constexpr std::string_view kWorkspaceEnding = ".cst";

/// Whether a file bears the name of a workspace: its last four characters are `kWorkspaceEnding`, in any case.
bool IsWorkspaceName(const std::filesystem::path& file);

/// What a file dialog shows.
struct FileQuestion {
    std::string_view title;
    std::string_view filter;
    bool toSave = false;
};

inline constexpr std::string_view kWorkspaceFilter = "Configuration Files (*.cst)";
inline constexpr FileQuestion kOpenWorkspace{"Open Glintara Configuration", kWorkspaceFilter, false};
inline constexpr FileQuestion kSaveWorkspace{"Save Glintara Configuration", kWorkspaceFilter, true};

/// What the workspace asks of other rooms. What is empty is not asked.
struct WorkspaceHooks {
    std::function<void()> showLoadingNotice;  ///< clears the picture on show and writes the notice into it
    std::function<std::optional<std::filesystem::path>(const FileQuestion&)> askForFile;  ///< nothing when cancelled
};

/// Why a file was not loaded, as far as it was looked at.
enum class LoadFailure {
    None = 0,          ///< it is a workspace
    OtherFile = 1,     ///< its tag is that of something else
    OtherVersion = 2,  ///< its tag is that of a workspace of another version
};

class WorkspaceFiles {
  public:
    /// `app` and `time` must outlive it.
    WorkspaceFiles(Application& app, SimulatedTime& time, WorkspaceHooks hooks);
    WorkspaceFiles(const WorkspaceFiles&) = delete;
    WorkspaceFiles& operator=(const WorkspaceFiles&) = delete;

    /// Hangs the commands on `MnuLoad`, `MnuOpenAs`, `MnuSave`, `MnuSaveAs` and `MnuSaveStartUp`.
    void Connect();

    /// Reads a file into the session. With `verbose` a notice is shown first. False when the file was not read to its
    /// end.
    bool LoadWorkspace(const std::filesystem::path& file, bool verbose);

    /// The same, and all that follows from another session, or from a failure; with `verbose` a failure is told, with
    /// its cause. Nothing inside of a load that is under way.
    bool LoadWorkspaceCommand(const std::filesystem::path& file, bool verbose);

    /// Writes the session to a file, which becomes the current one.
    bool SaveWorkspace(const std::filesystem::path& file);

    /// Loads `kStartUpWorkspace` of the current folder without a word, unless a workspace is at hand already. Whether
    /// one is then.
    bool LoadStartUp();

    /// Loads a file that the user has chosen or dropped, unless there are changes that are not to be lost.
    void Open(const std::filesystem::path& file);

    /// Whether the session may be given up: no changes that no file holds, or the user has saved them now or wants them
    /// lost. Asks when there are some, unless the user has said not to.
    bool MayDiscard();

    /// Whether satellites, surfaces, views or the place are others than after the last load or save. The order of the
    /// list does not count, nor does a place that follows the view.
    bool HasChanges() const;

    /// Of the last load.
    LoadFailure Failure() const { return failure_; }

  private:
    /// What a change is measured by.
    struct Marks {
        std::size_t content = 0;
        Geodetic place;
    };

    Marks TakeMarks() const;

    bool WriteTo(const std::filesystem::path& file);
    void BecomeCurrent(const std::filesystem::path& file);
    void BelongToNoFile();

    void Put(Workspace& workspace);
    void PutHead(const WorkspaceHead& head);
    void PutSatellites(std::vector<SatRecord>& satellites);
    void ShowSession();
    void TellLoadFailure(const std::filesystem::path& file) const;

    void Reload();
    bool Save(const std::filesystem::path& file);
    bool SaveAs();
    void SaveStartUp();
    bool ConfirmSave(const std::filesystem::path& file) const;
    bool TellSaved(bool saved, const std::filesystem::path& file) const;

    Application& app_;
    SimulatedTime& time_;
    WorkspaceHooks hooks_;
    LoadFailure failure_ = LoadFailure::None;
    std::string why_;             // of the last failure, in words
    bool put_ = false;            // the last load has changed the session
    bool loading_ = false;        // a load is under way, and may serve events
    std::optional<Marks> saved_;  // nothing when no file holds the session
};

/// The head of the session as it stands.
WorkspaceHead CaptureHead(const Application& app);

}  // namespace glintara
