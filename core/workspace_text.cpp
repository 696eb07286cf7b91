#include "core/workspace_text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

#include "core/satellite_panel.h"
#include "core/value_text.h"
#include "engine/astro/number_text.h"
#include "flare/surface_models.h"
#include "scene/view_geometry.h"

namespace glintara {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kTagStem = "GLNTA";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Settings that the head names in its second line.
constexpr int kSettingCount = 5;

constexpr int kModelDummies = 10;
constexpr int kFirstMirrorDummy = 2;
constexpr int kLastMirrorDummy = 10;

// Ranges of the head.
constexpr double kMostTwilight = 90;
constexpr std::uint32_t kMostColor = 0xFFFFFF;
constexpr double kMostCheckDays = 7;
constexpr std::int16_t kMostUtcOffset = 24;
constexpr double kLeastStarMag = -5;
constexpr double kMostStarMag = 15;
constexpr int kMostStarSize = 30;

/// The largest eccentricity that an element set can tell.
constexpr double kMostEccentricity = 0.9999999;

constexpr std::int32_t kLastOrientationType = 4;

/// Scattering of a surface whose file holds none: that of a cleared record.
constexpr double kDefaultScatter = 5;

/// What a tag's format holds.
struct Format {
    bool lines = false;     ///< the lines of each satellite's element set
    bool pan = false;       ///< the shift of the picture
    bool height = false;    ///< height of the place, its time zone, the step of the running clock
    bool surfaces = false;  ///< the surfaces of each satellite
};

struct TaggedFormat {
    std::string_view tag;
    Format format;
};

constexpr TaggedFormat kFormats[] = {
    {"GLNTA11", {}},
    {"GLNTA12", {.lines = true}},
    {"GLNTA12B", {.lines = true, .pan = true}},
    {"GLNTA12C", {.lines = true, .pan = true, .height = true}},
    {kWorkspaceTag, {.lines = true, .pan = true, .height = true, .surfaces = true}},
};

constexpr Format kNewestFormat = kFormats[std::size(kFormats) - 1].format;

// The order of the file, once for both ways. `Io` is the writer or the reader; each call gives whether it went well.

template <class Io, class Date>
bool ExchangeDate(Io& io, Date& date) {
    return io.Number(date.year) && io.Number(date.month) && io.Number(date.day) && io.Number(date.hour) &&
           io.Number(date.minute) && io.Number(date.second);
}

template <class Io, class Offset>
bool ExchangeOffset(Io& io, Offset& offset) {
    return io.Number(offset.MonthOffset) && io.Number(offset.DayOffset) && io.Number(offset.MinuteOffset) &&
           io.Number(offset.HourOffset) && io.Number(offset.SecondOffset) && io.Number(offset.YearOffset);
}

/// The head from the option string on.
template <class Io, class Head>
bool ExchangeHead(Io& io, Head& head, const Format& format) {
    return io.Text(head.Options) && ExchangeDate(io, head.Sim) && ExchangeDate(io, head.Base) &&
           ExchangeOffset(io, head.TimeOffset) && io.Number(head.ViewRoll) && io.Number(head.ViewLat) &&
           io.Number(head.ViewLon) && io.Number(head.ZoomFactor) &&
           (!format.pan || (io.Number(head.PanX) && io.Number(head.PanY))) && io.Number(head.SiteLat) &&
           io.Number(head.SiteLon) &&
           (!format.height ||
            (io.Number(head.SiteAlt) && io.Number(head.UTCOffsetHours) && io.Number(head.RealTimeStep))) &&
           io.Number(head.MaxStarMag) && io.Number(head.LockedLat) && io.Number(head.LockedAngle) &&
           io.Number(head.LockedRoll) && io.Flag(head.SkyLocked) && io.Number(head.OrbitTurns) &&
           io.Number(head.StarSizeScale) && io.Number(head.SkyScale) && io.Number(head.SkyScaleSaved) &&
           io.Number(head.SatCount);
}

template <class Io, class Mirror>
bool ExchangeMirror(Io& io, Mirror& mirror) {
    const bool fields = io.Text(mirror.MirrorName) && io.Text(mirror.MirrorOrigin) && io.Text(mirror.MirrorSpare) &&
                        io.Text(mirror.MirrorID) && io.Number(mirror.Angle) && io.Number(mirror.Tilt) &&
                        io.Number(mirror.Spare1) && io.Number(mirror.Spare2) && io.Number(mirror.Spare3) &&
                        io.Number(mirror.MirrorJD) && io.Number(mirror.ScatterFactor);
    return fields && io.Placeholders("SubDummy", kFirstMirrorDummy, kLastMirrorDummy);
}

template <class Io, class Model>
bool ExchangeModel(Io& io, Model& model) {
    const bool header = io.Text(model.ModelFlags) && io.Number(model.MirrorCount) && io.Number(model.OrientationType) &&
                        io.Number(model.TargetSatID) && io.Number(model.RotAxisDEC) && io.Number(model.RotAxisRA) &&
                        io.Number(model.ModelSpareD) && io.Number(model.ModelSpareB) &&
                        io.Number(model.ModelSpareA[1]) && io.Number(model.ModelSpareA[2]) &&
                        io.Number(model.ModelSpareA[3]) && io.Placeholders("Dummy", 1, kModelDummies);
    if (!header) return false;
    for (int index = 1; index <= kMirrorCapacity; ++index)
        if (!ExchangeMirror(io, model.Mirror(index))) return false;
    return true;
}

template <class Io, class Satellite>
bool ExchangeSatellite(Io& io, Satellite& satellite, const Format& format) {
    const bool elements =
        io.Text(satellite.SatNumber) && io.Text(satellite.Designator) && io.Text(satellite.EpochText) &&
        io.Number(satellite.Inclination) && io.Number(satellite.RaanAngle) && io.Number(satellite.Eccentricity) &&
        io.Number(satellite.ArgPerigee) && io.Number(satellite.MeanAnomaly) && io.Number(satellite.MeanMotion) &&
        io.Number(satellite.ElementSetNumber) && io.Number(satellite.MeanRadiusA) && io.Number(satellite.OrbitNumber) &&
        io.Number(satellite.MeanMotionDot) && io.Number(satellite.MeanMotionDDot) && io.Number(satellite.BStar) &&
        io.Text(satellite.Name) && io.Text(satellite.OptionFlags);
    if (!elements) return false;
    if (format.lines && !(io.Text(satellite.TitleLine) && io.Text(satellite.Line1) && io.Text(satellite.Line2)))
        return false;
    return !format.surfaces || ExchangeModel(io, satellite.Surface);
}

/// A view. One that is not used has no fields.
template <class Io, class View>
bool ExchangeView(Io& io, View& view, const Format& format) {
    if (!io.Flag(view.Used)) return false;
    if (!view.Used) return true;
    const bool fields = io.Text(view.Options) && io.Number(view.Spare) && io.Number(view.LockedLat) &&
                        io.Number(view.LockedAngle) && io.Number(view.LockedRoll) && io.Number(view.MaxStarMag) &&
                        io.Number(view.OrbitTurns) && io.Number(view.ViewLat) && io.Number(view.ViewLon) &&
                        io.Number(view.ViewRoll) && (!format.pan || (io.Number(view.PanX) && io.Number(view.PanY))) &&
                        io.Flag(view.SkyLocked) && io.Number(view.StarSizeScale) && io.Number(view.SkyScale) &&
                        io.Number(view.ZoomFactor);
    if (!fields) return false;
    for (auto& text : view.TimeText)
        if (!io.Text(text)) return false;
    return true;
}

/// Writes one value a line.
class FieldWriter {
  public:
    bool Text(std::string_view text) {
        const std::size_t start = text_.size();
        text_ += text;
        std::replace_if(
            text_.begin() + static_cast<std::ptrdiff_t>(start), text_.end(),
            [](char c) { return c == '\r' || c == '\n'; }, ' ');
        text_ += kLineEnd;
        return true;
    }

    bool Number(double value) { return Text(std::isfinite(value) ? ValueToText(value) : "0"); }
    bool Number(std::integral auto value) { return Text(std::to_string(value)); }
    bool Flag(bool flag) { return Text(flag ? "1" : "0"); }

    bool Placeholders(const char* stem, int first, int last) {
        for (int number = first; number <= last; ++number) Text(stem + std::to_string(number));
        return true;
    }

    std::string Take() { return std::move(text_); }

  private:
    std::string text_;
};

/// Reads field by field, and keeps why it could not go on.
class FieldReader {
  public:
    explicit FieldReader(std::string_view text) : rest_(text) {}

    /// The rest of the line.
    bool Line(std::string_view& line) { return Cut("\r\n", line); }

    bool Text(std::string& text) {
        std::string_view line;
        if (!Line(line)) return false;
        text = line;
        return true;
    }

    /// What stands before the next comma, or the rest of the line.
    bool Field(std::string_view& field) { return Cut(",\r\n", field); }

    bool Number(double& value) {
        std::string_view field;
        if (!Field(field)) return false;
        const std::optional<double> number = StrictNumber(field);
        if (!number) return Break("there is no number");
        value = *number;
        return true;
    }

    template <std::integral Whole>
    bool Number(Whole& value) {
        double number = 0;
        if (!Number(number)) return false;
        number = std::nearbyint(number);
        if (number < static_cast<double>(std::numeric_limits<Whole>::min()) ||
            number > static_cast<double>(std::numeric_limits<Whole>::max()))
            return Break("the number is too large");
        value = static_cast<Whole>(number);
        return true;
    }

    bool Flag(bool& flag) {
        std::int32_t number = 0;
        if (!Number(number)) return false;
        flag = number == 1;
        return true;
    }

    bool Placeholders(const char* /*stem*/, int first, int last) {
        std::string_view line;
        for (int number = first; number <= last; ++number)
            if (!Line(line)) return false;
        return true;
    }

    /// Ends the reading at the field that was read last.
    bool Break(std::string_view reason) {
        why_ = "line " + std::to_string(line_) + ": " + std::string(reason);
        return false;
    }

    const std::string& Why() const { return why_; }

  private:
    /// Cuts off what stands before the first of `ends`.
    bool Cut(const char* ends, std::string_view& field) {
        if (rest_.empty()) {
            why_ = "it ends too early";
            return false;
        }
        if (newLine_) ++line_;
        const std::size_t end = std::min(rest_.find_first_of(ends), rest_.size());
        field = rest_.substr(0, end);
        rest_.remove_prefix(end);
        newLine_ = !rest_.starts_with(',');
        rest_.remove_prefix(std::min<std::size_t>(rest_.starts_with(kLineEnd) ? kLineEnd.size() : 1, rest_.size()));
        return true;
    }

    std::string_view rest_;
    std::string why_;
    std::size_t line_ = 0;
    bool newLine_ = true;
};

// Bringing numbers into their ranges. All are finite.

void HoldHead(WorkspaceHead& head) {
    head.TwilightAngle = std::clamp(head.TwilightAngle, -kMostTwilight, kMostTwilight);
    head.UpdateCheckDays = std::clamp(head.UpdateCheckDays, 0.0, kMostCheckDays);
    head.UTCOffsetHours = std::clamp<std::int16_t>(head.UTCOffsetHours, -kMostUtcOffset, kMostUtcOffset);
    head.ZoomFactor = std::clamp(head.ZoomFactor, kLeastZoom, kMostZoom);
    head.PanX = std::clamp(head.PanX, -kMostPan, kMostPan);
    head.PanY = std::clamp(head.PanY, -kMostPan, kMostPan);
    head.MaxStarMag = std::clamp(head.MaxStarMag, kLeastStarMag, kMostStarMag);
    head.OrbitTurns = std::clamp(head.OrbitTurns, kLeastOrbitTurns, kMostOrbitTurns);
    head.StarSizeScale = std::clamp<std::int16_t>(head.StarSizeScale, 0, kMostStarSize);
}

void HoldView(SavedView& view) {
    view.ZoomFactor = std::clamp(view.ZoomFactor, kLeastZoom, kMostZoom);
    view.PanX = std::clamp(view.PanX, -kMostPan, kMostPan);
    view.PanY = std::clamp(view.PanY, -kMostPan, kMostPan);
    view.MaxStarMag = std::clamp(view.MaxStarMag, kLeastStarMag, kMostStarMag);
    view.OrbitTurns = std::clamp(view.OrbitTurns, static_cast<std::int16_t>(kLeastOrbitTurns),
                                 static_cast<std::int16_t>(kMostOrbitTurns));
    view.StarSizeScale = std::clamp<double>(view.StarSizeScale, 0, kMostStarSize);
}

/// Switches are read by their place, so there must be all.
void FillUp(std::string& flags, std::size_t length) {
    if (flags.size() < length) flags.append(length - flags.size(), '0');
}

void HoldSatellite(SatRecord& satellite) {
    satellite.Eccentricity = std::clamp(satellite.Eccentricity, 0.0, kMostEccentricity);
    FillUp(satellite.OptionFlags, kNewOptionFlags.size());
    SurfaceModel& model = satellite.Surface;
    FillUp(model.ModelFlags, SurfaceModel().ModelFlags.size());
    model.MirrorCount = std::clamp<std::int32_t>(model.MirrorCount, 0, kMirrorCapacity);
    model.OrientationType = std::clamp<std::int32_t>(model.OrientationType, 0, kLastOrientationType);
    for (int index = 1; index <= kMirrorCapacity; ++index) {
        double& scatter = model.Mirror(index).ScatterFactor;
        scatter = scatter == 0 ? kDefaultScatter : ClampScatterFactor(scatter);
    }
}

/// Rows of the list are found by these numbers.
void NumberAnew(std::vector<SatRecord>& satellites) {
    std::vector<bool> seen(satellites.size() + 1);
    const bool sound = std::ranges::all_of(satellites, [&seen](const SatRecord& satellite) {
        const auto number = static_cast<std::size_t>(satellite.OrbitNumber);
        if (satellite.OrbitNumber < 1 || number >= seen.size() || seen[number]) return false;
        seen[number] = true;
        return true;
    });
    if (sound) return;
    std::int16_t number = 0;
    for (SatRecord& satellite : satellites) satellite.OrbitNumber = ++number;
}

/// The second line: how many settings follow.
bool ReadSettingCount(FieldReader& reader, std::string_view line, int& count) {
    const std::optional<double> number = StrictNumber(line.substr(1));
    if (!number || *number < 0 || *number > std::numeric_limits<std::int16_t>::max())
        return reader.Break("there is no number of settings");
    count = static_cast<int>(std::nearbyint(*number));
    return true;
}

/// A colour; older programs kept them with a sign.
bool ReadColor(FieldReader& reader, std::uint32_t& color) {
    std::int32_t number = 0;
    if (!reader.Number(number)) return false;
    color = static_cast<std::uint32_t>(std::clamp<std::int32_t>(number, 0, kMostColor));
    return true;
}

bool ReadSetting(FieldReader& reader, int number, WorkspaceHead& head) {
    switch (number) {
        case 1:
            return reader.Number(head.TwilightAngle);
        case 2:
            return ReadColor(reader, head.SoilColor);
        case 3:
            return ReadColor(reader, head.SeaColor);
        case 4:
            return ReadColor(reader, head.ShadowColor);
        case 5:
            return reader.Number(head.UpdateCheckDays);
        default:
            std::string_view unknown;
            return reader.Field(unknown);
    }
}

bool ReadHead(FieldReader& reader, const Format& format, WorkspaceHead& head) {
    FieldReader ahead = reader;
    std::string_view line;
    if (ahead.Line(line) && line.starts_with('/')) {
        reader.Line(line);
        int count = 0;
        if (!ReadSettingCount(reader, line, count)) return false;
        for (int number = 1; number <= count; ++number)
            if (!ReadSetting(reader, number, head)) return false;
    }
    if (!ExchangeHead(reader, head, format)) return false;
    if (head.SatCount < 0 || head.SatCount > kSatCapacity) return reader.Break("there cannot be so many satellites");
    HoldHead(head);
    return true;
}

bool ReadSatellites(FieldReader& reader, const Format& format, Workspace& workspace) {
    for (int number = 1; number <= workspace.Head.SatCount; ++number) {
        SatRecord satellite;
        ResetModelHeader(satellite);
        ResetMirrors(satellite);
        if (!ExchangeSatellite(reader, satellite, format)) return false;
        if (!format.surfaces) ApplyDefaultModel(satellite);
        HoldSatellite(satellite);
        workspace.Satellites.push_back(std::move(satellite));
    }
    return true;
}

bool ReadViews(FieldReader& reader, const Format& format, Workspace& workspace) {
    for (std::size_t number = 1; number <= kViewCount; ++number) {
        SavedView view;
        if (!ExchangeView(reader, view, format)) return false;
        if (view.Used) HoldView(view);
        workspace.Views[number] = std::move(view);
    }
    return true;
}

}  // namespace

std::string WorkspaceText(const SatRecord& satellite) {
    FieldWriter writer;
    ExchangeSatellite(writer, satellite, kNewestFormat);
    return writer.Take();
}

std::string WorkspaceText(const SavedView& view) {
    FieldWriter writer;
    ExchangeView(writer, view, kNewestFormat);
    return writer.Take();
}

std::string WorkspaceText(const WorkspaceHead& head, std::span<const SatRecord> satellites,
                          std::span<const SavedView, kViewCount + 1> views) {
    WorkspaceHead counted = head;
    counted.SatCount = static_cast<std::int16_t>(satellites.size());
    FieldWriter writer;
    writer.Text(kWorkspaceTag);
    writer.Text("/" + std::to_string(kSettingCount));
    writer.Number(head.TwilightAngle);
    writer.Number(head.SoilColor);
    writer.Number(head.SeaColor);
    writer.Number(head.ShadowColor);
    writer.Number(head.UpdateCheckDays);
    ExchangeHead(writer, counted, kNewestFormat);
    for (const SatRecord& satellite : satellites) ExchangeSatellite(writer, satellite, kNewestFormat);
    for (const SavedView& view : views.subspan<1>()) ExchangeView(writer, view, kNewestFormat);
    return writer.Take();
}

WorkspaceReading ReadWorkspace(std::string_view text, Workspace& workspace, std::string& why) {
    // An editor may have put a byte order mark before the first line.
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    FieldReader reader(text);
    std::string_view tag;
    const bool anyLine = reader.Line(tag);
    const auto format = std::ranges::find(kFormats, tag, &TaggedFormat::tag);
    if (!anyLine || format == std::end(kFormats)) {
        why = "it is no workspace";
        return tag.starts_with(kTagStem) ? WorkspaceReading::OtherVersion : WorkspaceReading::OtherFile;
    }
    workspace.Satellites.clear();
    workspace.Views = {};
    const bool head = ReadHead(reader, format->format, workspace.Head);
    const bool rest =
        head && ReadSatellites(reader, format->format, workspace) && ReadViews(reader, format->format, workspace);
    why = reader.Why();
    NumberAnew(workspace.Satellites);
    if (rest) return WorkspaceReading::Whole;
    return head ? WorkspaceReading::Broken : WorkspaceReading::HeadBroken;
}

}  // namespace glintara
