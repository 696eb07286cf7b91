// Random bytes as element sets: whatever a file, a download or a paste holds, admission leaves a sound list of
// satellites and the engine answers with finite numbers.
//
// An input is text up to its first zero byte; what follows are raw doubles, taken as instants, angles and distances.
// So an ordinary element-set file is an input too. Any pair of neighbouring lines is offered to the engine as the two
// lines of a set. The bytes are read as a message, too, in whatever form they begin as.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/astro/constants.h"
#include "engine/glintcore.h"
#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "state/application.h"

namespace glintara {
namespace {

/// More sets than these in one input show nothing new and make each input slow.
constexpr std::size_t kMaxPairs = 8;

/// More raw doubles than these add nothing either.
constexpr std::size_t kMaxNumbers = 12;

/// Midnight that begins 20 January 2018, near the epochs of the seed texts.
constexpr double kSeedJD = 2458138.5;

/// Distance from the Earth's centre given to the engine, metres.
constexpr double kSiteRadius = 6371000;

/// Longest search window tried, days. The program's own are of this length.
constexpr double kWindow = 1 / kHoursPerDay;

/// From further than this, in units of the Earth's radius (the Moon is at 60), the foot of a ray is a small difference
/// of large numbers and merely finite.
constexpr double kFarAway = 100;

constexpr double kDefaultResolution = 0.1 / kSecondsPerDay;

struct Input {
    std::string bytes;
    std::string text;
    std::vector<std::string> lines;
    std::vector<double> numbers;

    /// The raw double at `index`, or `fallback` when the input is not that long.
    double Number(std::size_t index, double fallback) const {
        return index < numbers.size() ? numbers[index] : fallback;
    }
};

void Require(bool holds, const char* fact) {
    if (holds) return;
    std::fprintf(stderr, "Does not hold: %s\n", fact);
    std::abort();
}

bool AllFinite(std::span<const double> values) {
    return std::ranges::all_of(
        values, [](double value) { return std::isfinite(value); });
}

std::vector<std::string> SplitLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

Input ReadInput(std::string_view bytes) {
    Input input;
    input.bytes = bytes;
    const std::size_t textLength = std::min(bytes.find('\0'), bytes.size());
    input.text = bytes.substr(0, textLength);
    input.lines = SplitLines(input.text);
    std::string_view rest = bytes.substr(std::min(textLength + 1, bytes.size()));
    while (rest.size() >= sizeof(double) && input.numbers.size() < kMaxNumbers) {
        double number = 0;
        std::memcpy(&number, rest.data(), sizeof number);
        input.numbers.push_back(number);
        rest.remove_prefix(sizeof number);
    }
    return input;
}

/// The instants to propagate to: a few near and absurd ones, then those of the input.
std::vector<double> Instants(const Input& input) {
    std::vector<double> instants = {kSeedJD,
                                    kSeedJD + 10 * kDaysPerCentury,
                                    kJ2000,
                                    0,
                                    -1e12,
                                    1e300,
                                    std::numeric_limits<double>::infinity(),
                                    std::numeric_limits<double>::quiet_NaN()};
    instants.insert(instants.end(), input.numbers.begin(), input.numbers.end());
    return instants;
}

/// Any flare of a mirror of the satellite at `position` and `velocity`, which need not be sensible.
void TryFlare(double jd, std::int32_t source, std::int32_t geometry, std::span<const double, 3> position,
              std::span<const double, 3> velocity, double angle, double tilt) {
    std::array<double, 3> centre{};
    std::array<double, 5> result{};
    const std::int32_t found =
        Satellite_CalcFlare(jd, source, geometry, position[0], position[1], position[2], velocity[0], velocity[1],
                            velocity[2], angle, tilt, centre.data(), result.data());
    if (found == 0) {
        Require(std::ranges::count(centre, 0.0) == 3 && std::ranges::count(result, 0.0) == 5,
                "without a flare the results are left alone");
        return;
    }
    Require(AllFinite(centre) && AllFinite(result), "a flare has finite numbers");
    if (std::hypot(position[0], position[1], position[2]) > kFarAway) return;
    constexpr double kSlack = 1e-5;
    Require(std::abs(std::hypot(centre[0], centre[1], centre[2]) - 1) < kSlack, "a flare falls on the unit sphere");
    Require(std::abs(result[1]) <= 1 + kSlack && std::abs(result[2]) <= 1 + kSlack, "sine and cosine are within 1");
}

void TrySearch(const Input& input, EngineBlock& block, double start, double length, std::int32_t source,
               std::int32_t geometry) {
    constexpr double kUntouched = -12345;
    double found = kUntouched;
    const EngineBlock before = block;
    const std::int8_t skip = input.text.size() % 2 == 0 ? 0 : 1;
    const std::int32_t hit =
        Satellite_FindFlare(start, length, source, input.Number(3, kDefaultResolution), kSiteRadius, &block, geometry,
                            input.Number(1, 0), input.Number(2, 40 * kDegToRad), input.Number(4, 1e6), skip, &found);
    Require(std::ranges::equal(std::as_bytes(std::span(&before, 1)), std::as_bytes(std::span(&block, 1))),
            "a search does not change the block");
    if (hit == 0) {
        Require(found == kUntouched, "a search without result leaves it alone");
        return;
    }
    // Instants are no finer than a double of a Julian date is.
    const double slack = 1e-8 + 1e-15 * std::abs(start);
    Require(found >= start - slack && found <= start + length + slack, "a found instant lies in its window");
}

constexpr std::array<std::int32_t, 5> kGeometries = {GLINTCORE_ALONG_TRACK, GLINTCORE_INERTIAL, GLINTCORE_VERTICAL_SUN,
                                                     GLINTCORE_TRANSIT, 77};

void TryElementSet(const Input& input, const std::string& line1, const std::string& line2) {
    EngineBlock block;
    // What lay there before must not matter.
    std::memset(&block, 0xA5, sizeof block);
    const char mode = input.text.size() % 3 == 0 ? 'a' : 'i';
    const std::int32_t refused = SatelliteInit(line1.c_str(), line2.c_str(), mode, &block);

    std::array<double, 3> position{};
    std::array<double, 3> velocity{};
    Satellite_SGP4(&block, kSeedJD, position.data(), velocity.data());
    const std::array<double, 3> first = position;
    for (const double jd : Instants(input)) {
        const std::int32_t error = Satellite_SGP4(&block, jd, position.data(), velocity.data());
        Require(AllFinite(position) && AllFinite(velocity), "a propagated position is finite");
        if (refused != 0)
            Require(error != 0 && std::ranges::count(position, 0.0) == 3, "a refused set gives an error and zeros");
    }
    Satellite_SGP4(&block, kSeedJD, position.data(), velocity.data());
    Require(position == first, "a position does not depend on what was asked before");

    std::array<double, 3> onUnitSphere = position;
    for (double& component : onUnitSphere) component *= 1000 / kSiteRadius;
    const double jd = input.Number(0, kSeedJD);
    for (const std::int32_t geometry : kGeometries)
        for (const std::int32_t source : {GLINTCORE_SUN, GLINTCORE_MOON})
            TryFlare(jd, source, geometry, onUnitSphere, velocity, input.Number(1, 0), input.Number(2, 0));
    for (const std::int32_t geometry : kGeometries) {
        TrySearch(input, block, kSeedJD, kWindow, GLINTCORE_SUN, geometry);
        TrySearch(input, block, jd, std::min(input.Number(5, kWindow), kWindow), GLINTCORE_MOON, geometry);
    }
}

/// Flares of places and directions that no propagation would give.
void TryRawFlare(const Input& input) {
    if (input.numbers.size() < 9) return;
    const std::span<const double> numbers = input.numbers;
    for (const std::int32_t geometry : kGeometries) {
        TryFlare(numbers[0], GLINTCORE_SUN, geometry, numbers.subspan<3, 3>(), numbers.subspan<6, 3>(), numbers[1],
                 numbers[2]);
    }
}

/// A block that no element set was ever read into.
void TryEmptyBlock(const Input& input) {
    EngineBlock block{};
    std::array<double, 3> position{};
    std::array<double, 3> velocity{};
    Require(Satellite_SGP4(&block, input.Number(0, kSeedJD), position.data(), velocity.data()) != 0,
            "an empty block is an error");
    Require(AllFinite(position) && AllFinite(velocity), "an empty block gives finite numbers");
    TrySearch(input, block, kSeedJD, kWindow, GLINTCORE_SUN, GLINTCORE_ALONG_TRACK);
}

/// Reads every box by itself.
class SilentBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view /*text*/, MessageIcon /*icon*/) override {}
    bool AskYesNo(std::string_view /*text*/) override { return true; }
};

void RequireSoundList(const CommonData& data) {
    Require(data.SatCount >= 0 && data.SatCount <= kSatCapacity,
            "the list holds as many satellites as it has room for");
    for (int i = 1; i <= data.SatCount; ++i) {
        const SatRecord& satellite = data.Satellite(i);
        const std::array elements = {satellite.Inclination, satellite.RaanAngle,   satellite.Eccentricity,
                                     satellite.ArgPerigee,  satellite.MeanAnomaly, satellite.MeanMotion,
                                     satellite.MeanRadiusA, EpochToJD(satellite)};
        Require(AllFinite(elements), "an admitted satellite has finite elements");
        Require(satellite.MeanMotion > 0 && satellite.Eccentricity >= 0 && satellite.Eccentricity < 1,
                "an admitted satellite is on an ellipse");
        Require(satellite.Line1.size() <= kElementLineLength && satellite.Line2.size() <= kElementLineLength,
                "lines of elements are no longer than such lines are");
        Require(satellite.Surface.MirrorCount == 0 || satellite.Surface.MirrorCount == 3,
                "a new satellite has the surfaces of its family or none");
        EngineBlock block = satellite.EngineBlock;
        std::array<double, 3> position{};
        std::array<double, 3> velocity{};
        Satellite_SGP4(&block, kSeedJD, position.data(), velocity.data());
        Require(AllFinite(position) && AllFinite(velocity), "an admitted satellite has a finite position");
    }
}

/// Text into the box, then the list by one of the ways.
void Admit(Application& app, const Input& input, TLEMode mode, bool onlyNewer) {
    EnterTLEText(app, input.bytes);
    const std::string before = app.Main.TTLE.Text;
    const int count = app.Data.SatCount;
    const AdmissionOutcome outcome = CApplyTLEOrbitFnct(app, mode, onlyNewer, false);
    Require(outcome.fromMessage || before.ends_with(app.Main.TTLE.Text.Get()), "the box keeps the end of its text");
    Require(app.Data.SatCount >= count, "admission takes no satellite away");
    if (mode == TLEMode::UpdateExisting) Require(app.Data.SatCount == count, "an update adds no satellite");
    RequireSoundList(app.Data);
}

/// The bytes as a message in any of the forms.
void TryMessage(const Input& input) {
    const ElementText read = ReadElementText(input.bytes);
    if (!read.IsMessage()) return;
    Require(read.records == read.sets + read.LeftOut(), "every record is a set or left out");
    Require(read.LeftOut() == 0 || !LeftOutText(read).empty(), "what is left out is told");
    const ElementText again = ReadElementText(read.text);
    Require(!again.IsMessage() && again.sets == read.sets, "a message becomes sets of two lines");
    Require(again.text == read.text, "its text is as the box takes it");
}

void TryAdmission(const Input& input) {
    // The tables are large: one list serves all inputs, emptied for each.
    static SilentBoxes boxes;
    static Events events;
    static WindowSignals windows;
    static Application app(boxes, events, windows, ApplyDefaultModel);
    app.Data.SatCount = 0;
    const bool onlyNewer = input.text.size() % 2 == 0;
    Admit(app, input, TLEMode::Add, false);
    Admit(app, input, TLEMode::UpdateExisting, onlyNewer);
    Admit(app, input, TLEMode::AddAndUpdate, onlyNewer);
}

void TryInput(const Input& input) {
    TryMessage(input);
    TryAdmission(input);
    Satellite_SetSiteGeoPosition(kSiteRadius * 0.6, 0, kSiteRadius * 0.8, kSiteRadius);
    TryEmptyBlock(input);
    TryRawFlare(input);
    for (std::size_t i = 0; i + 1 < input.lines.size() && i < kMaxPairs; ++i)
        TryElementSet(input, input.lines[i], input.lines[i + 1]);
}

}  // namespace
}  // namespace glintara

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The raw pointer is null for an empty input.
    const std::string bytes(data, data + size);
    glintara::TryInput(glintara::ReadInput(bytes));
    return 0;
}
