#include "orbit/download_answer.h"

#include <algorithm>
#include <cstddef>

#include "engine/astro/number_text.h"
#include "orbit/element_sets.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

constexpr int kFirstErrorStatus = 400;
constexpr int kTooManyRequests = 429;
constexpr int kUnavailable = 503;
constexpr std::string_view kBlanks = " \t\r\n";

char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Whether `text` holds `part`, given in small letters, in letters of any kind.
bool Holds(std::string_view text, std::string_view part) {
    const auto same = [](char a, char b) { return Small(a) == b; };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
}

/// Whether a line 1 is followed by a line 2.
bool HoldsElementSet(std::string_view text) {
    bool line1 = false;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty()) continue;
        if (line1 && line.starts_with("2 ")) return true;
        line1 = line.starts_with("1 ");
    }
    return false;
}

bool IsWebPage(std::string_view text) {
    constexpr std::size_t kBeginning = 1024;
    const std::string_view beginning = text.substr(0, kBeginning);
    return beginning.starts_with('<') && (Holds(beginning, "<html") || Holds(beginning, "<!doctype html"));
}

/// Whether the catalogue's query says that it has no such group.
bool DeniesGroup(std::string_view text) {
    return text.starts_with("Invalid query") || (text.starts_with("GROUP") && Holds(text, "does not exist"));
}

/// The first words of an answer that was meant for people, in quotation marks; empty when there are none.
std::string Quoted(std::string_view text) {
    constexpr std::size_t kMostOfLine = 120;
    std::string_view line = TrimmedText(text.substr(0, text.find_first_of("\r\n")), kBlanks);
    const bool cut = line.size() > kMostOfLine;
    if (cut) {
        line = line.substr(0, kMostOfLine);
        // Not through the middle of a character.
        constexpr unsigned char kContinued = 0x80;
        constexpr unsigned char kKindBits = 0xC0;
        while (!line.empty() && (static_cast<unsigned char>(text[line.size()]) & kKindBits) == kContinued)
            line.remove_suffix(1);
    }
    const std::string shown = ShownName(line);
    return shown.empty() ? shown : "\"" + shown + (cut ? "..." : "") + "\"";
}

std::string StatusText(int status) {
    switch (status) {
        case 401:
        case 407:
            return "a password is asked for";
        case 403:
            return "the server refuses to give it";
        case 404:
        case 410:
            return "the server has no such file";
        case kTooManyRequests:
            return "the server is asked too often; try again in two hours";
        case kUnavailable:
            return "the server is too busy; try again later";
        default:
            return "the server cannot give it";
    }
}

}  // namespace

DownloadAnswer ReadAnswer(std::string_view whole, int status) {
    DownloadAnswer answer;
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (whole.starts_with(kByteOrderMark)) whole.remove_prefix(kByteOrderMark.size());
    const std::string_view text = TrimmedText(whole, kBlanks);
    const bool page = IsWebPage(text);
    answer.last = status == kTooManyRequests || status == kUnavailable || DeniesGroup(text);
    if (status >= kFirstErrorStatus) {
        answer.problem = StatusText(status) + " (" + std::to_string(status) + ")";
        if (const std::string said = page ? "" : Quoted(text); !said.empty()) answer.problem += ": it says " + said;
    } else if (text.empty()) {
        answer.problem = "the answer is empty";
    } else if (page) {
        answer.problem = "the answer is a web page, not element sets";
    } else if (HoldsElementSet(text)) {
        answer.elements = BoxText(whole);
    } else {
        answer.problem = "the answer holds no element sets";
        if (const std::string said = Quoted(text); !said.empty()) answer.problem += ": it says " + said;
    }
    return answer;
}

}  // namespace glintara
