#pragma once

// The reflecting surfaces of a satellite, as data. Both records own their texts: assignment is a deep copy.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace glintara {

/// Surfaces that one satellite can have.
inline constexpr int kMirrorCapacity = 20;

/// One flat surface. A fresh record is blank; `InitMirrorRecord` and `ResetMirrors` fill it.
struct MirrorRecord {
    std::string MirrorName;    ///< name shown in lists
    std::string MirrorOrigin;  ///< "1" when the user added it, "0" when the program laid it
    std::string MirrorSpare;   ///< carried and saved, without meaning
    std::string MirrorID;  ///< identifier shared by the satellites of one model: where it was made, "_", and the name
    double Angle = 0;      ///< degrees: azimuth in the body frame, or right ascension under attitude type 1
    double Tilt = 0;       ///< degrees: depression below the local horizontal, or declination under attitude type 1
    double Spare1 = 1;     ///< carried and saved, without meaning
    double Spare2 = 0;     ///< carried and saved, without meaning
    double Spare3 = 1;     ///< carried and saved, without meaning
    double MirrorJD = 0;   ///< Julian date at which it was fitted; 0 for none
    double ScatterFactor = 1;  ///< widening of the light's disc in the footprint, 1 to 50

    friend bool operator==(const MirrorRecord&, const MirrorRecord&) = default;
};

/// All surfaces of a satellite and how they are carried around the orbit. A fresh one is undefined and empty.
///
/// It takes part in flares only when it passes `HasFlareModel`.
struct SurfaceModel {
    std::string ModelFlags = std::string(29, '0');  ///< first place "1": the model is defined; the rest is carried
    std::int32_t OrientationType = 0;               ///< attitude type, 0 to 4
    std::array<double, 4> ModelSpareA{1, 1, 1, 1};  ///< carried and saved, without meaning
    double ModelSpareB = 0;                         ///< carried and saved, without meaning
    double ModelSpareC = 1;                         ///< carried and saved, without meaning
    double RotAxisDEC = 1;                          ///< declination of the rotation axis, radians; attitude type 2
    double RotAxisRA = 1;                           ///< right ascension of the rotation axis, radians; attitude type 2
    double ModelSpareD = 1;                         ///< carried and saved, without meaning
    double TargetSatID = 0;                         ///< catalogue number of the target; attitude type 3
    std::int32_t MirrorCount = 0;                   ///< live surfaces, 0 to `kMirrorCapacity`
    std::array<MirrorRecord, kMirrorCapacity + 1> Mirrors;  ///< from index 1; index 0 stays empty

    /// Surface `index`, 1 to `kMirrorCapacity`.
    MirrorRecord& Mirror(int index) { return Mirrors[static_cast<std::size_t>(index)]; }
    const MirrorRecord& Mirror(int index) const { return Mirrors[static_cast<std::size_t>(index)]; }

    friend bool operator==(const SurfaceModel&, const SurfaceModel&) = default;
};

}  // namespace glintara
