#pragma once

// The track of a flare as two files: a table to read, and a line for maps in the Keyhole Markup Language.

#include <filesystem>
#include <string>
#include <string_view>

#include "engine/astro/geodesy.h"
#include "flare/tracks.h"

namespace glintara {

/// Date of an instant as "DD/MM/YYYY", UTC.
std::string TrackDateText(double jd);

/// Time of day as an angle text in hours, cut to whole seconds: 05h03'23".
std::string TrackTimeText(double jd);

/// Name of the files of a track that begins at `jd`, without what stands behind the point. A text of the shape
/// ":name:..." in the box of element sets names them: `name`, "_" and the last four digits of the day; characters that a
/// file's name cannot hold become "_". Any other text: "Track".
std::string TrackFileStem(std::string_view boxText, double jd);

/// Both files while they are written. Lines end in CR LF.
class TrackFiles {
  public:
    explicit TrackFiles(bool transit);

    /// One more point. The first one, and the first after a gap, opens a placemark of its own.
    void Add(const TrackPoint& point) { Add(point, GroundPlaceOf(point)); }

    /// The same at a place that is given: radians, any longitude.
    void Add(const TrackPoint& point, const Geodetic& place);

    /// A step without a point, or the end of a surface's pass: an open placemark is closed.
    void Gap();

    /// Closes what is open. Nothing is to be added then.
    void End();

    /// The files as they stand.
    const std::string& Table() const { return table_; }
    const std::string& Kml() const { return kml_; }

  private:
    void OpenPlacemark(double jd);

    bool transit_;
    bool first_ = true;  // no placemark has been opened yet
    bool open_ = false;
    std::string table_;
    std::string kml_;
};

/// Adds all points of `track` and its gaps. A surface's pass ends with a gap.
void AddTrack(FlareTrack& track, TrackFiles& files);

/// Writes both files, `stem` with ".txt" and ".kml", in the place of those that are there. Returns what is to be said of
/// one that could not be written, its name and the reason; empty when all is well.
std::string WriteTrackFiles(const std::filesystem::path& stem, const TrackFiles& files);

}  // namespace glintara
