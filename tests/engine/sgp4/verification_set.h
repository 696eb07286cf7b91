#pragma once

// The published verification set of SGP4: element sets and the states that the code of the 2006 revision computed from
// them (AIAA 2006-6753, files of the paper). Read where Debian's package python3-sgp4 puts it.

#include <charconv>
#include <cstddef>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace glintara {

/// One line of the table: minutes from epoch, kilometres, kilometres per second.
struct VerificationState {
    double minutes;
    double position[3];
    double velocity[3];
};

/// An element set with the times that it is run for and its lines of the table.
struct VerificationCase {
    std::string line1;
    std::string line2;  ///< cut behind column 69
    double stop;        ///< minutes from epoch of the last state that was asked for
    double step;        ///< minutes
    std::vector<VerificationState> states;
};

inline std::vector<double> NumbersIn(std::string_view text) {
    std::vector<double> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        double value = 0;
        const auto [stop, error] = std::from_chars(at, end, value);
        if (error == std::errc{}) numbers.push_back(value);
        at = error == std::errc{} ? stop : at + 1;
    }
    return numbers;
}

inline std::vector<std::string> FileLines(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

/// All cases in the order of the files. Throws when the files are missing or do not belong together.
inline std::vector<VerificationCase> ReadVerificationSet() {
    const std::string folder = "/usr/lib/python3/dist-packages/sgp4/";
    std::vector<VerificationCase> cases;
    for (const std::string& line : FileLines(folder + "SGP4-VER.TLE")) {
        if (line.starts_with('1')) cases.push_back({.line1 = line, .line2 = {}, .stop = 0, .step = 0, .states = {}});
        if (!line.starts_with('2')) continue;
        const std::vector<double> run = NumbersIn(std::string_view(line).substr(69));
        cases.back().line2 = line.substr(0, 69);
        cases.back().stop = run.at(1);
        cases.back().step = run.at(2);
    }

    std::size_t begun = 0;
    for (const std::string& line : FileLines(folder + "tcppver.out")) {
        if (line.ends_with("xx")) {
            ++begun;
            continue;
        }
        const std::vector<double> n = NumbersIn(line);
        cases.at(begun - 1).states.push_back({n.at(0), {n.at(1), n.at(2), n.at(3)}, {n.at(4), n.at(5), n.at(6)}});
    }
    if (begun != cases.size()) throw std::runtime_error("element sets and table differ in number");
    return cases;
}

}  // namespace glintara
