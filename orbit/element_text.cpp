#include "orbit/element_text.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "engine/astro/number_text.h"
#include "orbit/mean_elements.h"
#include "orbit/message_forms.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Pairs of a line 1 and a line 2 in text as the box takes it.
int CountSets(std::string_view text) {
    int sets = 0;
    bool line1 = false;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find(kLineEnd));
        text.remove_prefix(std::min(text.size(), line.size() + kLineEnd.size()));
        if (line1 && line.starts_with("2 ")) ++sets;
        line1 = line.starts_with("1 ");
    }
    return sets;
}

void AppendUtf8(std::string& text, char32_t code) {
    const auto add = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto addRest = [&add, code](int bits) { add(0x80 | ((code >> bits) & 0x3F)); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0 | (code >> 6));
        addRest(0);
    } else if (code < 0x10000) {
        add(0xE0 | (code >> 12));
        addRest(6);
        addRest(0);
    } else {
        add(0xF0 | (code >> 18));
        addRest(12);
        addRest(6);
        addRest(0);
    }
}

std::string_view WithoutStart(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(" \t\r\n")));
    return text;
}

// The form that the beginning of the text promises; a name line may promise what the text does not hold.
ElementForm PromisedForm(std::string_view text) {
    if (text.starts_with('{') || text.starts_with('[')) return ElementForm::Json;
    if (text.starts_with('<')) return ElementForm::Xml;
    if (IsMessageTable(text)) return ElementForm::Table;
    if (IsMessageNotation(text)) return ElementForm::Notation;
    return ElementForm::TwoLine;
}

std::string ReadRecords(ElementForm form, std::string_view text, const TakeRecord& take) {
    switch (form) {
        case ElementForm::Table:
            return ReadMessageTable(text, take);
        case ElementForm::Json:
            return ReadMessageJson(text, take);
        case ElementForm::Xml:
            return ReadMessageXml(text, take);
        case ElementForm::Notation:
            return ReadMessageNotation(text, take);
        case ElementForm::TwoLine:
            break;
    }
    return {};
}

// A value of a record, as far as it may be shown.
std::string Shown(const MessageRecord& record, MessageKey key) {
    constexpr std::size_t kMostShown = 40;
    return ShownName(TrimmedText(record.Value(key)).substr(0, kMostShown));
}

// Gathers the sets of a message, and what is to be told of the others.
class MessageCollector {
  public:
    explicit MessageCollector(ElementText& read) : read_(read) {}

    void Take(const MessageRecord& record) {
        ++read_.records;
        RecordFault fault;
        if (const std::optional<ElementLines> lines = LinesOfRecord(record, fault)) {
            for (const std::string* line : {&lines->name, &lines->line1, &lines->line2}) {
                read_.text += *line;
                read_.text += kLineEnd;
            }
            ++read_.sets;
        } else if (fault.numberTooHigh) {
            if (read_.tooHigh++ == 0)
                read_.firstTooHigh =
                    Shown(record, MessageKey::ObjectName) + " (" + Shown(record, MessageKey::NoradCatId) + ")";
        } else if (read_.unusable++ == 0) {
            const std::string name = Shown(record, MessageKey::ObjectName);
            read_.firstUnusable = "record " + std::to_string(read_.records) + (name.empty() ? "" : " (" + name + ")") +
                                  ": " + fault.reason;
        }
    }

  private:
    ElementText& read_;
};

}  // namespace

ElementText ReadElementText(std::string_view text) {
    if (const std::optional<std::string> decoded = TextOfUtf16(text)) return ReadElementText(*decoded);
    ElementText read;
    const std::string_view start = WithoutStart(text);
    const ElementForm form = PromisedForm(start);
    MessageCollector collector(read);
    read.damage = ReadRecords(form, start, [&collector](const MessageRecord& record) { collector.Take(record); });
    if (read.records > 0) {
        read.form = form;
        return read;
    }
    read = {};
    read.text = BoxText(text);
    read.sets = CountSets(read.text);
    return read;
}

std::string LeftOutText(const ElementText& read) {
    if (read.LeftOut() == 0 && read.damage.empty()) return {};
    if (read.LeftOut() == 0)
        return "the text breaks off behind record " + std::to_string(read.records) + ": " + read.damage;
    std::string text = std::to_string(read.LeftOut()) + " of " + std::to_string(read.records) +
                       (read.records == 1 ? " record" : " records") + " left out";
    std::string separator = ": ";
    const auto add = [&](const std::string& what) {
        text += separator + what;
        separator = "; ";
    };
    if (read.tooHigh > 0)
        add(std::to_string(read.tooHigh) + (read.tooHigh == 1 ? " has a number" : " have numbers") + " above 339999, " +
            (read.tooHigh == 1 ? "" : "the first is ") + read.firstTooHigh);
    if (read.unusable > 0)
        add(std::to_string(read.unusable) + " cannot be used, " + (read.unusable == 1 ? "" : "the first is ") +
            read.firstUnusable);
    // A record in which the text breaks off says so itself.
    if (read.firstUnusable.find(read.damage) == std::string::npos) add(read.damage);
    return text;
}

std::optional<std::string> TextOfUtf16(std::string_view text) {
    constexpr std::size_t kUnit = 2;
    const bool littleEndian = text.starts_with("\xFF\xFE");
    if (!(littleEndian || text.starts_with("\xFE\xFF")) || text.size() < 2 * kUnit) return std::nullopt;
    const auto unitAt = [text, littleEndian](std::size_t at) {
        const char32_t first = static_cast<unsigned char>(text[at]);
        const char32_t second = static_cast<unsigned char>(text[at + 1]);
        return littleEndian ? first | second << 8 : first << 8 | second;
    };
    if (const char32_t begins = unitAt(kUnit); begins == 0 || begins > 0x7F) return std::nullopt;

    constexpr char32_t kHalfBits = 0xFC00;
    constexpr char32_t kFirstHalf = 0xD800;
    constexpr char32_t kSecondHalf = 0xDC00;
    std::string result;
    result.reserve(text.size() / kUnit);
    for (std::size_t at = kUnit; at + 1 < text.size(); at += kUnit) {
        char32_t code = unitAt(at);
        const char32_t next = at + kUnit + 1 < text.size() ? unitAt(at + kUnit) : 0;
        if ((code & kHalfBits) == kFirstHalf && (next & kHalfBits) == kSecondHalf) {
            code = 0x10000 + ((code - kFirstHalf) << 10) + (next - kSecondHalf);
            at += kUnit;
        } else if ((code & kHalfBits) == kFirstHalf || (code & kHalfBits) == kSecondHalf) {
            code = 0xFFFD;
        }
        AppendUtf8(result, code);
    }
    return result;
}

std::string BoxText(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());

    std::string result;
    result.reserve(text.size() + text.size() / 32);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\r' && c != '\n') {
            result += c;
            continue;
        }
        const std::string_view rest = text.substr(i);
        for (const std::string_view end : {std::string_view("\r\r\n"), kLineEnd})
            if (rest.starts_with(end)) {
                i += end.size() - 1;
                break;
            }
        while (!result.empty() && (result.back() == ' ' || result.back() == '\t')) result.pop_back();
        result += kLineEnd;
    }
    return result;
}

}  // namespace glintara
