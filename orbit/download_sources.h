#pragma once

// Where element sets are downloaded from: the one table of sources, and what their addresses are.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace glintara {

/// The two sites, without a path. A test has others.
struct DownloadHosts {
    std::string catalogue = "https://celestrak.org";  ///< of all sources but the last
    std::string personal = "https://mmccants.org";    ///< of the last
};

/// A text file of element sets.
struct DownloadSource {
    std::string_view label;
    std::string_view path;
};

inline constexpr std::size_t kSourceCount = 26;

/// The sources in the order in which the window lists them.
std::span<const DownloadSource, kSourceCount> DownloadSources();

/// The lines of the list: label, padded to 13 characters, "- ", address.
std::vector<std::string> SourceLines(const DownloadHosts& hosts);

/// The address of a line: what stands behind its first "-" and one more character. Empty when there is none.
std::string AddressOfLine(std::string_view line);

/// The label of a line, without the blanks behind it.
std::string LabelOfLine(std::string_view line);

/// What is asked for, one after the other, until an answer holds element sets: the address itself; for a file of the
/// catalogue then the catalogue's query for the same group in the two-line form, and last the same as a table, in which
/// numbers of six digits have room.
std::vector<std::string> AddressesToTry(const std::string& address);

/// The host of an address, for messages; the address itself when it has none.
std::string HostOf(std::string_view address);

}  // namespace glintara
