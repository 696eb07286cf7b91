#include "orbit/download_sources.h"

#include <array>
#include <utility>

namespace glintara {

namespace {

constexpr std::size_t kLabelWidth = 13;
constexpr std::string_view kFiles = "/NORAD/elements/";
constexpr std::string_view kFileEnd = ".txt";
constexpr std::string_view kQuery = "/NORAD/elements/gp.php?GROUP=";

constexpr std::array<DownloadSource, kSourceCount> kSources = {{
    {"IRIDIUM", "/NORAD/elements/iridium.txt"},
    {"ISS", "/NORAD/elements/stations.txt"},
    {"GPS", "/NORAD/elements/gps-ops.txt"},
    {"VISUAL", "/NORAD/elements/visual.txt"},
    {"FENGYUN DEB", "/NORAD/elements/1999-025.txt"},
    {"NEW TLE", "/NORAD/elements/tle-new.txt"},
    {"GEO", "/NORAD/elements/geo.txt"},
    {"WEATHER", "/NORAD/elements/weather.txt"},
    {"CUBESAT", "/NORAD/elements/cubesat.txt"},
    {"NOAA", "/NORAD/elements/noaa.txt"},
    {"GOES", "/NORAD/elements/goes.txt"},
    {"EARTH RES", "/NORAD/elements/resource.txt"},
    {"SARSAT", "/NORAD/elements/sarsat.txt"},
    {"DMC", "/NORAD/elements/dmc.txt"},
    {"TDRSS", "/NORAD/elements/tdrss.txt"},
    {"INTELSAT", "/NORAD/elements/intelsat.txt"},
    {"GORIZONT", "/NORAD/elements/gorizont.txt"},
    {"RADUGA", "/NORAD/elements/raduga.txt"},
    {"MOLNIYA", "/NORAD/elements/molniya.txt"},
    {"ORBCOMM", "/NORAD/elements/orbcomm.txt"},
    {"GLOBALSTAR", "/NORAD/elements/globalstar.txt"},
    {"AMATEUR", "/NORAD/elements/amateur.txt"},
    {"X COMM", "/NORAD/elements/x-comm.txt"},
    {"GLO OPS", "/NORAD/elements/glo-ops.txt"},
    {"NNSS", "/NORAD/elements/nnss.txt"},
    {"CLASSFD", "/tle/classfd.tle"},
}};

/// Groups that the catalogue's query knows by another name than that of their old file.
constexpr std::array<std::pair<std::string_view, std::string_view>, 2> kGroupNames = {{
    {"1999-025", "fengyun-1c-debris"},
    {"tle-new", "last-30-days"},
}};

std::string_view GroupOfFile(std::string_view name) {
    for (const auto& [file, group] : kGroupNames)
        if (file == name) return group;
    return name;
}

}  // namespace

std::span<const DownloadSource, kSourceCount> DownloadSources() { return kSources; }

std::vector<std::string> SourceLines(const DownloadHosts& hosts) {
    std::vector<std::string> lines;
    lines.reserve(kSources.size());
    for (const DownloadSource& source : kSources) {
        std::string line(source.label);
        line.resize(kLabelWidth, ' ');
        line += "- ";
        line += &source == &kSources.back() ? hosts.personal : hosts.catalogue;
        line += source.path;
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string AddressOfLine(std::string_view line) {
    const std::size_t mark = line.find('-');
    constexpr std::size_t kMarkAndBlank = 2;
    if (mark == std::string_view::npos || mark + kMarkAndBlank > line.size()) return {};
    return std::string(line.substr(mark + kMarkAndBlank));
}

std::string LabelOfLine(std::string_view line) {
    const std::string_view label = line.substr(0, line.find('-'));
    return std::string(label.substr(0, label.find_last_not_of(' ') + 1));
}

std::vector<std::string> AddressesToTry(const std::string& address) {
    std::vector<std::string> addresses{address};
    const std::size_t files = address.find(kFiles);
    if (files == std::string::npos || !address.ends_with(kFileEnd)) return addresses;
    std::string_view name = std::string_view(address).substr(files + kFiles.size());
    name.remove_suffix(kFileEnd.size());
    const std::string query =
        address.substr(0, files) + std::string(kQuery) + std::string(GroupOfFile(name)) + "&FORMAT=";
    addresses.push_back(query + "tle");
    addresses.push_back(query + "csv");
    return addresses;
}

std::string HostOf(std::string_view address) {
    constexpr std::string_view kBehindScheme = "://";
    const std::size_t scheme = address.find(kBehindScheme);
    if (scheme == std::string_view::npos) return std::string(address);
    const std::string_view host = address.substr(scheme + kBehindScheme.size());
    return std::string(host.substr(0, host.find('/')));
}

}  // namespace glintara
