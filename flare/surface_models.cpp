#include "flare/surface_models.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

#include "engine/astro/calendar.h"
#include "engine/astro/number_text.h"
#include "engine/geometry/attitude_types.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

constexpr char kModelDefined = '1';
constexpr std::string_view kFamilyWord = "iridium";
constexpr std::string_view kFamilyMirrorStem = "IRIDIUM_";
constexpr std::string_view kUserMirrorMark = "_UM";

// Values of `MirrorOrigin`.
constexpr std::string_view kLaidByProgram = "0";
constexpr std::string_view kAddedByUser = "1";

// Identifier of a surface that has been cleared.
constexpr std::string_view kClearedMirrorID = "0";

// Spare texts of a surface: cleared by the program, and added by the user. The lengths differ in saved files.
constexpr std::size_t kClearedSpareLength = 28;
constexpr std::size_t kAddedSpareLength = 30;

// Scattering of a main mission antenna, which is less flat than a mirror.
constexpr double kAntennaScatter = 5;
constexpr double kAntennaTilt = 40;

// Numbers behind "_UM" above this one come from damaged files and are passed over.
constexpr double kLastUserMirrorNumber = 1e9;

struct FamilyMirror {
    std::string_view name;
    double angle;
};

// The antennas of an Iridium: forward, left and right as seen along the track.
constexpr std::array<FamilyMirror, 3> kFamilyMirrors{{{"F", 0}, {"L", 120}, {"R", -120}}};

// Letters of the Latin alphabet only, so that the answer does not hang on the locale.
constexpr char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

MirrorRecord FamilyMirrorRecord(const FamilyMirror& antenna) {
    MirrorRecord mirror;
    mirror.MirrorName = std::string(antenna.name);
    mirror.MirrorOrigin = std::string(kLaidByProgram);
    mirror.MirrorID = std::string(kFamilyMirrorStem);
    mirror.MirrorID += antenna.name;
    mirror.Angle = antenna.angle;
    mirror.Tilt = kAntennaTilt;
    mirror.ScatterFactor = kAntennaScatter;
    return mirror;
}

}  // namespace

void ResetModelHeader(SatRecord& satellite) {
    static const SurfaceModel defaults;
    SurfaceModel& model = satellite.Surface;
    model.ModelFlags = defaults.ModelFlags;
    model.OrientationType = defaults.OrientationType;
    model.ModelSpareA = defaults.ModelSpareA;
    model.ModelSpareB = defaults.ModelSpareB;
    model.ModelSpareC = defaults.ModelSpareC;
    model.RotAxisDEC = defaults.RotAxisDEC;
    model.RotAxisRA = defaults.RotAxisRA;
    model.ModelSpareD = defaults.ModelSpareD;
    model.TargetSatID = defaults.TargetSatID;
}

void ResetMirrors(SatRecord& satellite) {
    SurfaceModel& model = satellite.Surface;
    model.MirrorCount = 0;
    for (int index = 1; index <= kMirrorCapacity; ++index) {
        MirrorRecord& mirror = model.Mirror(index);
        mirror.MirrorOrigin = std::string(kLaidByProgram);
        mirror.MirrorSpare.assign(kClearedSpareLength, '0');
        mirror.MirrorID = std::string(kClearedMirrorID);
        mirror.Angle = 0;
        mirror.Tilt = 0;
        mirror.Spare1 = 1;
        mirror.Spare2 = 0;
        mirror.Spare3 = 1;
        mirror.ScatterFactor = kAntennaScatter;
    }
}

bool IsIridiumName(const SatRecord& satellite) {
    const std::string& name = satellite.Name;
    const auto same = [](char inName, char inWord) { return LowerCase(inName) == inWord; };
    return std::search(name.begin(), name.end(), kFamilyWord.begin(), kFamilyWord.end(), same) != name.end();
}

void ApplyIridiumModel(SatRecord& satellite) {
    SurfaceModel& model = satellite.Surface;
    model.OrientationType = 0;
    model.ModelFlags.replace(0, 1, 1, kModelDefined);
    for (const FamilyMirror& antenna : kFamilyMirrors) {
        if (model.MirrorCount >= kMirrorCapacity) return;
        ++model.MirrorCount;
        model.Mirror(model.MirrorCount) = FamilyMirrorRecord(antenna);
    }
}

void ApplyDefaultModel(SatRecord& satellite) {
    ResetModelHeader(satellite);
    ResetMirrors(satellite);
    if (IsIridiumName(satellite)) ApplyIridiumModel(satellite);
}

void InitMirrorRecord(MirrorRecord& mirror, double simTime) {
    mirror = MirrorRecord{};
    mirror.MirrorName = "User Defined";
    mirror.MirrorOrigin = std::string(kAddedByUser);
    mirror.MirrorSpare.assign(kAddedSpareLength, '0');
    mirror.MirrorJD = simTime;
}

std::string NextUserMirrorName(const SurfaceModel& model) {
    double greatest = 0;
    for (int index = 1; index <= model.MirrorCount; ++index) {
        const std::string_view id = model.Mirror(index).MirrorID;
        const std::size_t mark = id.find(kUserMirrorMark);
        if (mark == std::string_view::npos) continue;
        const double number = std::floor(LeadingNumber(id.substr(mark + kUserMirrorMark.size())));
        if (number > greatest && number <= kLastUserMirrorNumber) greatest = number;
    }
    return std::string("UM").append(PlainNumberText(greatest + 1));
}

void MakeMirrorID(SatRecord& satellite, int index) {
    MirrorRecord& mirror = satellite.Surface.Mirror(index);
    const std::size_t mark = mirror.MirrorID.find('_');
    const std::string stem = mark == std::string::npos ? std::string(TrimmedText(satellite.SatNumber)) + "_"
                                                       : mirror.MirrorID.substr(0, mark + 1);
    mirror.MirrorID = stem + mirror.MirrorName;
}

int CAddMirror(SatRecord& satellite, double simTime, MessageBoxes& boxes, UsageStats& usage) {
    SurfaceModel& model = satellite.Surface;
    if (model.MirrorCount >= kMirrorCapacity) {
        boxes.Tell("Already too many mirrors", MessageIcon::Warning);
        return 0;
    }
    const std::string name = NextUserMirrorName(model);
    const int index = ++model.MirrorCount;
    InitMirrorRecord(model.Mirror(index), simTime);
    model.Mirror(index).MirrorName = name;
    MakeMirrorID(satellite, index);
    ++usage.MirrorAddCount;
    return index;
}

std::string MakeMirrorIDS(const SurfaceModel& model, int index) {
    const MirrorRecord& mirror = model.Mirror(index);
    std::string line = index < 10 ? "M#0" : "M#";
    line += std::to_string(index) + " - ";
    if (mirror.MirrorJD != 0) line += JDToText(mirror.MirrorJD) + " - ";
    return line + mirror.MirrorName;
}

double ClampScatterFactor(double value) {
    if (std::isnan(value)) return kMinScatterFactor;
    return std::clamp(value, kMinScatterFactor, kMaxScatterFactor);
}

std::string SatelliteIdentityText(const SatRecord& satellite) { return SatelliteListLine(satellite); }

bool HasFlareModel(const SatRecord& satellite) {
    const SurfaceModel& model = satellite.Surface;
    const bool defined = !model.ModelFlags.empty() && model.ModelFlags.front() == kModelDefined;
    return defined && model.MirrorCount > 0 && OrientationTypeOf(model.OrientationType).has_value();
}

}  // namespace glintara
