#pragma once

// Whatever a file holds, the session after it is sound: it can be drawn, searched and saved.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/program.h"
#include "core/views.h"
#include "core/workspace_lines.h"
#include "flare/search.h"
#include "flare/surface_models.h"
#include "scene/stages.h"
#include "scene/surface/recording_surface.h"
#include "support/temporary_folder.h"

namespace glintara::testing {

/// A program into which one text after the other is loaded.
class WorkspaceTrial {
  public:
    WorkspaceTrial() { program_.Start({}); }

    /// Loads `text`; the first thing that is wrong afterwards, or an empty text.
    std::string Load(std::string_view text) {
        file_.Put(text);
        // What the file before has left must not carry over.
        app_.Data.SatCount = 0;
        loaded_ = program_.Files.LoadWorkspaceCommand(file_.Path(), false);
        return WhatIsWrong();
    }

    /// Draws the session, searches an hour of it, enters its views and writes it as a text; what is wrong then.
    std::string Use() {
        if (!IsDrawn()) return "nothing is drawn";
        for (int index = 1; index <= app_.Data.SatCount; ++index) app_.Data.Satellite(index).Selected = true;
        SearchFlares(app_, program_.Time, kReach, 0, SearchStart::First);
        for (int number = 1; number <= static_cast<int>(kViewCount); ++number) {
            if (!app_.Data.SavedViews[static_cast<std::size_t>(number)].Used) continue;
            EnterView(app_, program_.Time, number);
            const std::string wrong = IsDrawn() ? WhatIsWrong() : "nothing is drawn";
            if (!wrong.empty()) return "view " + std::to_string(number) + ": " + wrong;
        }
        const auto list = std::span(app_.Data.SatTable).subspan(1, static_cast<std::size_t>(app_.Data.SatCount));
        const std::string text = WorkspaceText(CaptureHead(app_), list, app_.Data.SavedViews);
        Workspace again;
        std::string why;
        if (ReadWorkspace(text, again, why) != WorkspaceReading::Whole) return "what would be saved: " + why;
        const bool same = again.Satellites.size() == static_cast<std::size_t>(app_.Data.SatCount);
        return same ? "" : "not all satellites were saved";
    }

    bool Loaded() const { return loaded_; }

  private:
    static constexpr double kReach = 1e6;  // metres

    /// A file that no disk has to turn for.
    class MemoryFile {
      public:
        MemoryFile() : number_(memfd_create("workspace", MFD_CLOEXEC)) {}
        MemoryFile(const MemoryFile&) = delete;
        MemoryFile& operator=(const MemoryFile&) = delete;
        ~MemoryFile() { close(number_); }

        void Put(std::string_view text) const {
            const bool put = ftruncate(number_, 0) == 0 &&
                             pwrite(number_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
            if (!put) std::abort();
        }

        std::filesystem::path Path() const { return "/proc/self/fd/" + std::to_string(number_); }

      private:
        int number_;
    };

    class Clock : public ComputerClock {
      public:
        CalendarFields ReadUtc() const override { return {2018, 1, 20, 17, 42, 9.5}; }
        CalendarFields ReadLocal() const override { return ReadUtc(); }
    };

    class Silent : public MessageBoxes {
      public:
        void Tell(std::string_view /*text*/, MessageIcon /*icon*/) override {}
        bool AskYesNo(std::string_view /*text*/) override { return true; }
    };

    class Nowhere : public Browser {
      public:
        void Open(const std::string& /*address*/, std::function<void()> /*failed*/) override {}
    };

    bool IsDrawn() {
        surface_.Forget();
        GlobeFrame(app_, surface_, frame_, stages_);
        return !surface_.Operations().empty() || app_.Main.MnuLib3D.Checked;
    }

    std::string WhatIsWrong() const {
        const CommonData& data = app_.Data;
        if (data.SatCount < 0 || data.SatCount > kSatCapacity) return "too many satellites";
        const ViewState& view = data.View;
        const std::array numbers = {data.SimTime,    data.SimSecond,      data.SunRA,         view.ViewLat,
                                    view.ViewLon,    view.ViewRoll,       view.ZoomFactor,    view.PanX,
                                    view.PanY,       view.SkyScale,       view.SkyScaleSaved, view.MaxStarMag,
                                    view.LockedLat,  data.TwilightSine,   data.RealTimeStep,  data.Site.SiteLat,
                                    view.LockedRoll, data.UpdateCheckDays};
        if (!std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); }))
            return "a number is not finite";
        std::vector<bool> seen(static_cast<std::size_t>(data.SatCount) + 1);
        for (int index = 1; index <= data.SatCount; ++index) {
            const SatRecord& satellite = data.Satellite(index);
            const int number = satellite.OrbitNumber;
            if (number < 1 || number > data.SatCount || seen[static_cast<std::size_t>(number)])
                return "list numbers are not sound";
            seen[static_cast<std::size_t>(number)] = true;
            const SurfaceModel& model = satellite.Surface;
            if (model.MirrorCount < 0 || model.MirrorCount > kMirrorCapacity) return "too many surfaces";
            if (!(satellite.Eccentricity >= 0 && satellite.Eccentricity < 1)) return "no ellipse";
        }
        if (app_.Main.CSGP1.Value == app_.Main.CSGP4.Value) return "not one orbit model";
        return "";
    }

    TemporaryFolder folder_;
    MemoryFile file_;
    Silent boxes_;
    Events events_;
    Clock clock_;
    Nowhere browser_;
    ProgramSignals signals_{app_, usage_};
    Application app_{boxes_, events_, signals_, ApplyDefaultModel};
    UsageRecord usage_{app_.Data.UsageStats, clock_, browser_, folder_.Path() / "glt.ini"};
    Program program_{app_, usage_, clock_, {}};
    SatelliteWorkspace satellites_;
    FrameStages stages_ = StagesOfProgram(satellites_);
    FrameMemory frame_;
    RecordingSurface surface_{9000, 6000};
    bool loaded_ = false;
};

/// Files of all formats that are whole.
inline std::vector<std::string> WholeWorkspaces() {
    std::vector<std::string> texts;
    for (const FileAge age : {FileAge::First, FileAge::Lines, FileAge::Pan, FileAge::Height, FileAge::Surfaces}) {
        WorkspaceLines lines;
        lines.age = age;
        lines.satellites = {lines.Satellite("IRIDIUM 7, in orbit", 1)};
        lines.views[2] = lines.View();
        texts.push_back(lines.Text());
        // Everything on: sky, orbits, locks, tracks.
        for (std::size_t place = 0; place < 46; ++place)
            if (place != 31 && place != 17) lines.options[2 * place + 1] = '1';
        lines.satellites.push_back(lines.Satellite("OTHER", 2));
        texts.push_back(lines.Text());
    }
    return texts;
}

/// Spoils files in the ways that disks, editors and evil minds do.
class Spoiler {
  public:
    explicit Spoiler(unsigned seed) : random_(seed) {}

    std::string Spoil(const std::string& text) {
        std::vector<std::string> lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = std::min(text.find("\r\n", at), text.size());
            lines.push_back(text.substr(at, end - at));
            at = end + 2;
        }
        for (std::size_t count = Below(4) + 1; count > 0 && !lines.empty(); --count) SpoilLine(lines);
        std::string spoilt;
        for (const std::string& line : lines) spoilt += line + "\r\n";
        if (Below(8) == 0) spoilt.resize(Below(spoilt.size() + 1));
        if (Below(8) == 0 && !spoilt.empty()) spoilt[Below(spoilt.size())] = static_cast<char>(Below(256));
        return spoilt;
    }

  private:
    std::size_t Below(std::size_t count) { return count == 0 ? 0 : random_() % count; }

    /// Most of the lines are placeholders of surfaces; the first hundred matter more.
    std::size_t AnyLine(const std::vector<std::string>& lines) {
        return Below(3) == 0 ? Below(lines.size()) : Below(std::min<std::size_t>(lines.size(), 100));
    }

    std::string AnyNumber() {
        static const std::vector<std::string> kNumbers = {
            "0",          "-0",     "1",      "-1",     "0.5",      "2",           "3000",        "3001", "32767",
            "-32768",     "32768",  "1e308",  "-1e308", "1e-308",   "2147483647",  "-2147483648", "nan",  "inf",
            "4294967296", "",       "word",   "12abc",  ",",        "1,2,3",       "1e15",        "-7.5", "90",
            "6.283",      "3.1416", "-1.571", "1e-20",  "0.999999", "99999999999", "5e-324",      "/3",   "GLNTA13D"};
        if (Below(3) != 0) return kNumbers[Below(kNumbers.size())];
        return std::to_string((static_cast<double>(random_()) / 2147483648.0 - 1) * std::pow(10, Below(12)));
    }

    void SpoilLine(std::vector<std::string>& lines) {
        const std::size_t at = AnyLine(lines);
        std::string& line = lines[at];
        switch (Below(9)) {
            case 0:
                lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at));
                return;
            case 1:
                lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), lines[AnyLine(lines)]);
                return;
            case 2:
                std::swap(line, lines[AnyLine(lines)]);
                return;
            case 3:
                if (!line.empty()) line[Below(line.size())] = static_cast<char>(Below(256));
                return;
            case 4:
                // An option here, a column of an element line there.
                if (!line.empty()) line[Below(line.size())] = "E01D .-9"[Below(8)];
                return;
            case 5:
                line += AnyNumber();
                return;
            default:
                line = AnyNumber();
                return;
        }
    }

    std::mt19937 random_;
};

}  // namespace glintara::testing
