#include <algorithm>

#include "engine/astro/number_text.h"
#include "orbit/message_forms.h"

namespace glintara {

namespace {

constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kFirstKeyword = "CCSDS_OMM_VERS";

std::string_view TakeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find_first_of(kLineEnds));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    return TrimmedText(line, kBlanks);
}

struct Assignment {
    std::string_view keyword;
    std::string_view value;
};

// "KEYWORD = value [unit]". A name may end in brackets, so only a unit behind a number is taken off.
Assignment ReadAssignment(std::string_view line) {
    const std::size_t sign = line.find('=');
    if (sign == std::string_view::npos) return {};
    Assignment read{TrimmedText(line.substr(0, sign), kBlanks), TrimmedText(line.substr(sign + 1), kBlanks)};
    const std::size_t unit = read.value.ends_with(']') ? read.value.rfind('[') : std::string_view::npos;
    if (unit == std::string_view::npos) return read;
    const std::string_view number = TrimmedText(read.value.substr(0, unit), kBlanks);
    if (StrictNumber(number)) read.value = number;
    return read;
}

}  // namespace

bool IsMessageNotation(std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (!line.empty() && !line.starts_with("COMMENT")) return ReadAssignment(line).keyword == kFirstKeyword;
    }
    return false;
}

std::string ReadMessageNotation(std::string_view text, const TakeRecord& take) {
    MessageRecord record;
    bool begun = false;
    const auto finish = [&] {
        if (begun) take(record);
        record.Clear();
    };
    while (!text.empty()) {
        const Assignment read = ReadAssignment(TakeLine(text));
        if (read.keyword == kFirstKeyword) {
            finish();
            begun = true;
        } else if (const std::optional<MessageKey> key = FindMessageKey(read.keyword)) {
            record.Set(*key, read.value);
        }
    }
    finish();
    return {};
}

}  // namespace glintara
