#pragma once

// Making and naming surface models: the defaults, the model of the Iridium family, and the identifiers of surfaces.

#include <string>

#include "state/application.h"

namespace glintara {

/// Bounds of a surface's scattering factor.
inline constexpr double kMinScatterFactor = 1;
inline constexpr double kMaxScatterFactor = 50;

/// Sets all of the satellite's model but its surfaces to the defaults: undefined, attitude type 0.
void ResetModelHeader(SatRecord& satellite);

/// Empties the satellite's list of surfaces and clears its records, from index 1; their names and dates stay as they
/// are.
void ResetMirrors(SatRecord& satellite);

/// Whether the satellite's name says that it is of the Iridium family: it contains "iridium" in any case.
bool IsIridiumName(const SatRecord& satellite);

/// Gives the satellite the model of the first generation of Iridium: attitude type 0 and the three main mission
/// antennas, 120 degrees apart and tilted by 40 degrees. The surfaces are appended; those that find no room are left
/// out.
void ApplyIridiumModel(SatRecord& satellite);

/// The model of a satellite that enters the list: the defaults, and for an Iridium the family's surfaces.
void ApplyDefaultModel(SatRecord& satellite);

/// A surface as the user adds it, named "User Defined", without an identifier yet, fitted at Julian date `simTime`.
void InitMirrorRecord(MirrorRecord& mirror, double simTime);

/// "UM" with the number after the greatest that an identifier in the model bears behind "_UM"; "UM1" when there is
/// none.
std::string NextUserMirrorName(const SurfaceModel& model);

/// Gives surface `index` its identifier: the satellite's number, "_", and the surface's name. One that has an
/// identifier keeps the part up to the "_", so that a copied model stays tied to the satellite on which it was made.
void MakeMirrorID(SatRecord& satellite, int index);

/// Adds a surface at the end of the satellite's list, fitted at Julian date `simTime`, and counts it. Returns its
/// index, or 0 when the list is full: then a warning is shown and the model stays as it is.
int CAddMirror(SatRecord& satellite, double simTime, MessageBoxes& boxes, UsageStats& usage);

/// Line of surface `index` in lists: "M#03 - ", the date and time of its fit with " - " when it has one, and its name.
std::string MakeMirrorIDS(const SurfaceModel& model, int index);

/// `value` held between `kMinScatterFactor` and `kMaxScatterFactor`. What is no number gives the lower bound.
double ClampScatterFactor(double value);

/// Heading of the working satellite: the same text as its line in the list.
std::string SatelliteIdentityText(const SatRecord& satellite);

/// Whether the satellite takes part in flares: its model is defined, has surfaces, and an attitude type that exists.
bool HasFlareModel(const SatRecord& satellite);

}  // namespace glintara
