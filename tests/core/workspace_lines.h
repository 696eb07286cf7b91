#pragma once

// A writer of workspace files of its own, line by line, in any of the five formats: what the reader is held against.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace glintara::testing {

/// Two of the lines that a file holds, of the first Iridium that was flown.
inline const std::string kIridiumLine1 = "1 24793U 97020B   18020.90610358  .00000051  00000-0  11032-4 0  9993";
inline const std::string kIridiumLine2 = "2 24793  86.3955 227.9531 0002192  93.4632 266.6815 14.34242484 84173";

/// 46 boxes, `CSGP4` at place 40, then the three entries and the timer. All enabled, and set where named here.
inline std::string PlainOptions() {
    std::string text;
    for (int place = 0; place < 46; ++place) text += place == 40 ? "E1" : "E0";
    return text + "E0E0E0D0";
}

/// The formats by their age.
enum class FileAge { First, Lines, Pan, Height, Surfaces };

inline std::string TagOf(FileAge age) {
    const std::vector<std::string> tags = {"GLNTA11", "GLNTA12", "GLNTA12B", "GLNTA12C", "GLNTA13D"};
    return tags[static_cast<std::size_t>(age)];
}

struct WorkspaceLines {
    FileAge age = FileAge::Surfaces;
    std::vector<std::string> settings = {"-6", "28416", "6961680", "5921370", "7"};
    bool withSettings = true;
    std::string options = PlainOptions();
    std::vector<std::vector<std::string>> satellites;
    std::vector<std::vector<std::string>> views = std::vector<std::vector<std::string>>(10, {"0"});
    std::string lineEnd = "\r\n";

    bool Has(FileAge since) const { return age >= since; }

    /// Lines before the satellites.
    std::vector<std::string> Head() const {
        std::vector<std::string> lines = {TagOf(age)};
        const auto add = [&lines](const std::vector<std::string>& more) {
            lines.insert(lines.end(), more.begin(), more.end());
        };
        if (withSettings) {
            add({"/" + std::to_string(settings.size())});
            add(settings);
        }
        add({options});
        add({"2018", "1", "20", "17", "42", "9.5"});   // displayed
        add({"2018", "1", "19", "16", "41", "8.25"});  // base
        add({"0", "1", "1", "1", "1", "0"});           // month, day, minute, hour, second, year
        add({"0.125", "0.5", "-1.25", "30"});          // roll, latitude, longitude, zoom
        if (Has(FileAge::Pan)) add({"0.75", "-0.375"});
        add({"0.8", "0.2"});  // place
        if (Has(FileAge::Height)) add({"321.5", "-5", "2.5"});
        add({"7.25", "0.1", "0.3", "0.7"});  // stars, lock
        add({"0", "12", "9", "40", "41"});   // locked, turns, size, sky
        add({std::to_string(satellites.size())});
        return lines;
    }

    /// A satellite as this age writes it.
    std::vector<std::string> Satellite(const std::string& name, int orbitNumber) const {
        std::vector<std::string> lines = {"24793",
                                          "97020B  ",
                                          "18020.90610358",
                                          "1.5",
                                          "2.5",
                                          "0.25",
                                          "1.25",
                                          "4.5",
                                          "14.34242484",
                                          "999",
                                          "1.125",
                                          std::to_string(orbitNumber),
                                          "5.1e-07",
                                          "0",
                                          "1.1032e-05",
                                          name,
                                          "0100000000000000"};
        const auto add = [&lines](const std::vector<std::string>& more) {
            lines.insert(lines.end(), more.begin(), more.end());
        };
        if (Has(FileAge::Lines)) add({name + " as loaded", kIridiumLine1, kIridiumLine2});
        if (!Has(FileAge::Surfaces)) return lines;
        add({"1" + std::string(28, '0'), "2", "3"});  // flags, surfaces, attitude
        add({"25544", "0.25", "0.75", "1.5", "2.5", "3.5", "4.5", "5.5"});
        for (int number = 1; number <= 10; ++number) add({"Dummy" + std::to_string(number)});
        for (int mirror = 1; mirror <= 20; ++mirror) {
            add({"Panel " + std::to_string(mirror), "1", std::string(30, '0'), "24793_" + std::to_string(mirror)});
            add({std::to_string(mirror) + ".5", "40", "1", "0", "1", "2458139.25", "2"});
            for (int number = 2; number <= 10; ++number) add({"SubDummy" + std::to_string(number)});
        }
        return lines;
    }

    /// A view as this age writes it.
    std::vector<std::string> View() const {
        std::vector<std::string> lines = {"1",   options, "0.5", "0.11", "0.22", "0.33",
                                          "6.5", "18",    "0.4", "-0.6", "0.9"};
        const auto add = [&lines](const std::vector<std::string>& more) {
            lines.insert(lines.end(), more.begin(), more.end());
        };
        if (Has(FileAge::Pan)) add({"1.5", "2.5"});
        add({"1", "7", "33", "77"});
        for (int text = 1; text <= 18; ++text) add({std::to_string(text)});
        return lines;
    }

    std::vector<std::string> All() const {
        std::vector<std::string> lines = Head();
        for (const auto* groups : {&satellites, &views})
            for (const std::vector<std::string>& group : *groups) lines.insert(lines.end(), group.begin(), group.end());
        return lines;
    }

    std::string Text() const { return Joined(All()); }

    std::string Joined(const std::vector<std::string>& lines) const {
        std::string text;
        for (const std::string& line : lines) text += line + lineEnd;
        return text;
    }
};

}  // namespace glintara::testing
