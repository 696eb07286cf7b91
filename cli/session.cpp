#include "cli/session.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <iostream>
#include <optional>

#include "cli/texts.h"
#include "engine/astro/constants.h"
#include "orbit/element_age.h"
#include "orbit/element_sets.h"
#include "orbit/files.h"
#include "orbit/location.h"
#include "orbit/satellite_table.h"

namespace glintara::cli {

namespace {

constexpr std::string_view kStandardInput = "-";

/// Work that takes less than this shows no progress, seconds.
constexpr double kPatience = 0.4;

volatile std::sig_atomic_t interrupted = 0;

double Seconds() {
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    return now.count();
}

}  // namespace

void Warn(const std::string& text) { std::cerr << "glint: warning: " << text << '\n'; }

void Session::Prepare(const CommonOptions& options, double jd) {
    if (options.site.empty())
        SetLocationDegrees(app_.Data, 0, 0);
    else
        SetLocation(app_.Data, ParseSite(options.site));
    for (const std::string& file : options.tleFiles) LoadFile(file);
    KeepNames(options.name);

    const ElementAge age = ElementAgeAt(app_.Data, jd);
    if (std::abs(age.farthest) > kUsefulDays)
        Warn("element sets are up to " + FixedText(std::abs(age.farthest), 0) +
             " days away from that date; predictions will be off");
    if (jd < kJ2000) Warn("before noon of 1 January 2000 places on the ground are not the true ones");
}

void Session::LoadFile(const std::string& file) {
    const bool standardInput = file == kStandardInput;
    const std::string shown = standardInput ? "standard input" : ShownName(file);
    std::string why;
    const std::optional<std::string> text =
        standardInput ? ReadToEnd(STDIN_FILENO, kLargestTLEFile, &why) : ReadWholeFile(file, kLargestTLEFile, &why);
    if (!text) throw Failure(kBadData, shown + ": " + why);
    const ElementText read = EnterTLEText(app_, *text);
    const std::string leftOut = LeftOutText(read);
    if (read.IsMessage() && read.sets == 0) throw Failure(kBadData, shown + ": " + leftOut);
    if (!leftOut.empty()) Warn(shown + ": " + leftOut);
    const AdmissionOutcome outcome = CApplyTLEOrbit_click(app_);
    if (!outcome.Failed()) return;
    std::string answer = shown + ": " + AdmissionLabel(outcome);
    if (const std::string refusal = RefusalText(outcome); !refusal.empty()) answer += ". " + refusal;
    throw Failure(kBadData, answer);
}

void Session::KeepNames(const std::string& part) {
    if (part.empty()) return;
    const std::string wanted = LowerCase(part);
    int kept = 0;
    for (int i = 1; i <= app_.Data.SatCount; ++i) {
        SatRecord& satellite = app_.Data.Satellite(i);
        const bool fits = LowerCase(satellite.Name).find(wanted) != std::string::npos;
        satellite.OptionFlags[kDisabledPlace] = fits ? '0' : '1';
        kept += fits ? 1 : 0;
    }
    if (kept == 0) throw Failure(kBadData, "no satellite's name contains \"" + ShownName(part) + "\"");
}

Progress::Progress(std::string what)
    : what_(std::move(what)), terminal_(isatty(STDERR_FILENO) == 1), startTime_(Seconds()) {
    std::signal(
        SIGINT, [](int) { interrupted = 1; });
}

bool Progress::Interrupted() { return interrupted != 0; }

bool Progress::operator()(double done) {
    const int percent = static_cast<int>(100 * std::clamp(done, 0.0, 1.0));
    if (terminal_ && percent != lastPercent_ && Seconds() - startTime_ > kPatience) {
        std::cerr << '\r' << what_ << ' ' << percent << " %" << std::flush;
        lastPercent_ = percent;
        shown_ = true;
    }
    return !Interrupted();
}

void Progress::Clear() {
    if (shown_) {
        std::cerr << "\r\033[K" << std::flush;
        shown_ = false;
    }
}

}  // namespace glintara::cli
