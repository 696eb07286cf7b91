#include "orbit/download_answer.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "engine/astro/element_fields.h"
#include "engine/astro/number_text.h"
#include "orbit/element_text.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

constexpr int kFirstErrorStatus = 400;
constexpr int kForbidden = 403;
constexpr int kTooManyRequests = 429;
constexpr int kUnavailable = 503;
constexpr std::string_view kBlanks = " \t\r\n";

char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Whether `text` holds `part`, given in small letters, in letters of any kind.
bool Holds(std::string_view text, std::string_view part) {
    const auto same = [](char a, char b) { return Small(a) == b; };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
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

/// Whether the text ends in the middle of its last line. A connection may break off unnoticed when nobody has told the
/// length of the answer, and what is left of a number would be another number. A last line without a line end is good
/// when it is as long as a line 2, or has as many fields as the head of its table. Messages in the other forms tell by
/// themselves that they break off.
bool BreaksOff(std::string_view text, ElementForm form) {
    if (text.ends_with('\n') || text.ends_with('\r')) return false;
    const std::string_view last = text.substr(text.find_last_of("\r\n") + 1);
    if (form == ElementForm::TwoLine) return !last.starts_with("2 ") || last.size() < kElementLineLength;
    if (form != ElementForm::Table) return false;
    const auto separators = [](std::string_view line) {
        return std::count_if(line.begin(), line.end(), [](char c) { return c == ',' || c == ';' || c == '\t'; });
    };
    return separators(last) < separators(text.substr(0, text.find_first_of("\r\n")));
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
        case kForbidden:
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
    const std::optional<std::string> decoded = TextOfUtf16(whole);
    if (decoded) whole = *decoded;
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (whole.starts_with(kByteOrderMark)) whole.remove_prefix(kByteOrderMark.size());
    const std::string_view text = TrimmedText(whole, kBlanks);
    const bool page = IsWebPage(text);
    answer.last = status == kTooManyRequests || status == kUnavailable || DeniesGroup(text);
    answer.unchanged = status == kForbidden && !page && Holds(text, "has not updated");
    if (status >= kFirstErrorStatus) {
        answer.problem = StatusText(status) + " (" + std::to_string(status) + ")";
        if (const std::string said = page ? "" : Quoted(text); !said.empty()) answer.problem += ": it says " + said;
    } else if (text.empty()) {
        answer.problem = "the answer is empty";
    } else if (page) {
        answer.problem = "the answer is a web page, not element sets";
    } else {
        ElementText read = ReadElementText(whole);
        answer.leftOut = LeftOutText(read);
        answer.damaged = !read.damage.empty();
        if (read.sets > 0 && BreaksOff(whole, read.form)) {
            answer.problem = "the answer breaks off in the middle of a line";
        } else if (read.sets > 0) {
            answer.elements = std::move(read.text);
        } else if (read.IsMessage()) {
            answer.problem = std::move(answer.leftOut);
            answer.leftOut.clear();
        } else {
            answer.problem = "the answer holds no element sets";
            if (const std::string said = Quoted(text); !said.empty()) answer.problem += ": it says " + said;
        }
    }
    return answer;
}

}  // namespace glintara
