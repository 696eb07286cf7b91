#pragma once

// Orbit Mean-Elements Messages written from two-line sets by another route than the reader goes: values are the columns
// of the lines with their implied points put in, as text, and instants go through the standard library's calendar.

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace glintara::testing {

/// Keywords and values of one record, in the order in which the public catalogue writes them.
using MessageFields = std::vector<std::pair<std::string, std::string>>;

inline std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

inline std::string TwoDigits(std::int64_t number) { return (number < 10 ? "0" : "") + std::to_string(number); }

/// "18020.45477549" as "2018-01-20T10:54:52.602336".
inline std::string InstantOf(const std::string& epochText) {
    using namespace std::chrono;
    const int digits = std::stoi(epochText.substr(0, 2));
    const sys_days newYear = year(digits > 50 ? 1900 + digits : 2000 + digits) / January / 1;
    const year_month_day date(newYear + days(std::stoi(epochText.substr(2, 3)) - 1));
    const std::int64_t micros = std::stoll(epochText.substr(6, 8)) * 864;
    const std::string fraction = std::to_string(1'000'000 + micros % 1'000'000).substr(1);
    const std::int64_t seconds = micros / 1'000'000;
    return std::to_string(static_cast<int>(date.year())) + "-" + TwoDigits(static_cast<unsigned>(date.month())) + "-" +
           TwoDigits(static_cast<unsigned>(date.day())) + "T" + TwoDigits(seconds / 3600) + ":" +
           TwoDigits(seconds / 60 % 60) + ":" + TwoDigits(seconds % 60) + "." + fraction;
}

/// " 13161-4" as "0.13161E-4".
inline std::string ScaledOf(const std::string& columns) {
    return (columns[0] == '-' ? "-0." : "0.") + columns.substr(1, 5) + "E" + columns.substr(6, 2);
}

inline std::string DesignatorOf(const std::string& columns) {
    return (columns.substr(0, 2) > "50" ? "19" : "20") + columns.substr(0, 2) + "-" + Trimmed(columns.substr(2));
}

inline MessageFields FieldsOf(const std::string& name, const std::string& line1, const std::string& line2) {
    const std::string dot = Trimmed(line1.substr(33, 10));
    return {{"OBJECT_NAME", name},
            {"OBJECT_ID", DesignatorOf(line1.substr(9, 8))},
            {"EPOCH", InstantOf(line1.substr(18, 14))},
            {"MEAN_MOTION", Trimmed(line2.substr(52, 11))},
            {"ECCENTRICITY", "." + line2.substr(26, 7)},
            {"INCLINATION", Trimmed(line2.substr(8, 8))},
            {"RA_OF_ASC_NODE", Trimmed(line2.substr(17, 8))},
            {"ARG_OF_PERICENTER", Trimmed(line2.substr(34, 8))},
            {"MEAN_ANOMALY", Trimmed(line2.substr(43, 8))},
            {"EPHEMERIS_TYPE", line1.substr(62, 1)},
            {"CLASSIFICATION_TYPE", line1.substr(7, 1)},
            {"NORAD_CAT_ID", std::to_string(std::stoi(line1.substr(2, 5)))},
            {"ELEMENT_SET_NO", Trimmed(line1.substr(64, 4))},
            {"REV_AT_EPOCH", Trimmed(line2.substr(63, 5))},
            {"BSTAR", ScaledOf(line1.substr(53, 8))},
            {"MEAN_MOTION_DOT", dot[0] == '-' ? "-0" + dot.substr(1) : "0" + dot},
            {"MEAN_MOTION_DDOT", ScaledOf(line1.substr(44, 8))}};
}

inline std::string TableOf(const std::vector<MessageFields>& records) {
    std::string text;
    for (const auto& [key, value] : records.at(0)) text += (text.empty() ? "" : ",") + key;
    for (const MessageFields& record : records) {
        std::string row;
        for (const auto& [key, value] : record) row += (row.empty() ? "\r\n" : ",") + value;
        text += row;
    }
    return text + "\r\n";
}

/// Numbers as numbers when they are such in JSON, which knows none that begin with a point, else as texts.
inline std::string JsonOf(const std::vector<MessageFields>& records, bool numbersAsTexts) {
    std::string text;
    for (const MessageFields& record : records) {
        std::string object;
        for (const auto& [key, value] : record) {
            const bool isText = key == "OBJECT_NAME" || key == "OBJECT_ID" || key == "EPOCH" ||
                                key == "CLASSIFICATION_TYPE" || value.empty();
            // Neither begins with a point there nor with a zero before another digit.
            std::string number = value[0] == '.' ? "0" + value : value;
            while (number.size() > 1 && number[0] == '0' && number[1] != '.') number.erase(0, 1);
            object += (object.empty() ? "" : ",") + ("\"" + key + "\":") +
                      (isText || numbersAsTexts ? "\"" + value + "\"" : number);
        }
        text += (text.empty() ? "[{" : ",{") + object + "}";
    }
    return text + "]";
}

inline std::string XmlOf(const std::vector<MessageFields>& records) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ndm xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n";
    for (const MessageFields& record : records) {
        text +=
            "<omm id=\"CCSDS_OMM_VERS\" version=\"2.0\"><header><CREATION_DATE/><ORIGINATOR/></header><body><segment>";
        for (std::size_t i = 0; i < record.size(); ++i) {
            if (i == 0) text += "<metadata>";
            if (i == 2) text += "<TIME_SYSTEM>UTC</TIME_SYSTEM></metadata><data><meanElements>";
            if (i == 9) text += "</meanElements><tleParameters>";
            const auto& [key, value] = record[i];
            text += "<" + key + ">" + value + "</" + key + ">";
        }
        text += "</tleParameters></data></segment></body></omm>\n";
    }
    return text + "</ndm>\n";
}

inline std::string NotationOf(const std::vector<MessageFields>& records) {
    std::string text;
    for (const MessageFields& record : records) {
        text += "CCSDS_OMM_VERS = 2.0\nCREATION_DATE = 2018-01-22T00:00:00\n";
        for (const auto& [key, value] : record)
            text += key + " = " + value + (key == "INCLINATION" ? " [deg]" : "") + "\n";
        text += "\n";
    }
    return text;
}

}  // namespace glintara::testing
