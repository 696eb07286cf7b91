#pragma once

// One run of a command: the program's state without a window, filled from the command line.

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "cli/arguments.h"
#include "flare/surface_models.h"
#include "state/application.h"

namespace glintara::cli {

/// No message boxes on a terminal: what they would tell is in the outcome of what was done.
class NoBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view /*text*/, MessageIcon /*icon*/) override {}
    bool AskYesNo(std::string_view /*text*/) override { return false; }
};

/// The state with its services.
class Session {
  public:
    Session() : app_(boxes_, events_, windows_, ApplyDefaultModel) {}

    /// Sets the place, loads the files, and disables the satellites whose name does not fit. Warnings go to standard
    /// error. Throws `Failure`.
    void Prepare(const CommonOptions& options, double jd);

    Application& App() { return app_; }

  private:
    void LoadFile(const std::string& file);
    void KeepNames(const std::string& part);

    NoBoxes boxes_;
    Events events_;
    WindowSignals windows_;
    Application app_;
};

/// A warning on standard error.
void Warn(const std::string& text);

/// Shows how far long work is on standard error, when that is a terminal; true until the user has pressed Ctrl-C.
class Progress {
  public:
    explicit Progress(std::string what);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { Clear(); }

    /// `done` from 0 to 1.
    bool operator()(double done);

    /// Takes the line off the terminal.
    void Clear();

    static bool Interrupted();

  private:
    std::string what_;
    bool terminal_;
    bool shown_ = false;
    double startTime_;
    int lastPercent_ = -1;
};

}  // namespace glintara::cli
