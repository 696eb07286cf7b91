#pragma once

// The texts of the command line as numbers, with a clear word for each that is none.

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "engine/astro/geodesy.h"

namespace glintara::cli {

/// What the program answers to bad input: the text goes to standard error, the code to the caller.
class Failure : public std::runtime_error {
  public:
    Failure(int code, const std::string& text) : std::runtime_error(text), code_(code) {}
    int Code() const { return code_; }

  private:
    int code_;
};

/// Exit codes of the program.
inline constexpr int kSuccess = 0;   ///< also when there is no flare
inline constexpr int kBadData = 1;   ///< a file that cannot be read or used
inline constexpr int kBadUsage = 2;  ///< a wrong command line
inline constexpr int kInterrupted = 130;

enum class Format { Text, Csv, Json };

/// What all commands are told.
struct CommonOptions {
    std::vector<std::string> tleFiles;  ///< "-" is standard input
    std::string site;
    std::optional<std::string> from;  ///< an instant; none for now
    std::string name;                 ///< part of a satellite's name; empty for all
    Format format = Format::Text;
};

struct FlareOptions : CommonOptions {
    double hours = 24;
    double within = 30;  ///< kilometres
    double threads = 0;  ///< that search, a whole number; 0 is one for each core
    bool moon = false;
    bool transit = false;
};

/// What both commands about tracks are told. The site may be empty: tracks are the same for every observer.
struct TrackOptions : CommonOptions {
    double orbits = 1;  ///< revolutions
    bool transit = false;
    bool day = false;
    bool moon = false;
    std::optional<std::string> kml;    ///< file for the line
    std::optional<std::string> table;  ///< file for the table
    double population = 0;             ///< of the smallest city that is looked at
    std::string data;                  ///< folder of the cities; empty: where the program's data are
};

/// "LAT,LON" or "LAT,LON,HEIGHT": degrees, north and east positive, and metres. Throws `Failure`.
Geodetic ParseSite(std::string_view text);

/// Julian date of an instant in UTC: "2018-01-20", "2018-01-20T05:30", "2018-01-20T05:30:12.5", with a blank for the
/// "T" and with or without a "Z"; years 1900 to 2199. Throws `Failure`.
double ParseInstant(std::string_view text);

/// Julian date of the computer's clock.
double Now();

/// `text` with its ASCII capitals made small.
std::string LowerCase(std::string_view text);

/// The format of that name, in any case. Throws `Failure`.
Format ParseFormat(std::string_view text);

/// A number that the option `name` was given. Throws `Failure`.
double ParseNumber(const std::string& name, std::string_view text);

/// The instant of an option: now when it was not given. Throws `Failure`.
double InstantOf(const std::optional<std::string>& text);

}  // namespace glintara::cli
