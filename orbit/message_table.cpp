#include <algorithm>
#include <optional>
#include <vector>

#include "engine/astro/number_text.h"
#include "orbit/message_forms.h"

namespace glintara {

namespace {

constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kBlanks = " \t";

// Takes the next line, without its end, off the front of `text`; blank lines are passed over.
std::string_view TakeFilledLine(std::string_view& text) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find_first_of(kLineEnds));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (!TrimmedText(line, kBlanks).empty()) return line;
    }
    return {};
}

// One row of a table as fields.
class TableRow {
  public:
    std::size_t Count() const { return count_; }
    const std::string& Field(std::size_t index) const { return fields_[index]; }

    // False when a quote is not closed.
    bool Split(std::string_view line, char separator) {
        count_ = 0;
        for (;;) {
            std::string& field = NextField();
            if (line.starts_with('"')) {
                if (!TakeQuoted(line, field)) return false;
            }
            const std::string_view plain = line.substr(0, line.find(separator));
            field += plain;
            line.remove_prefix(plain.size());
            if (line.empty()) return true;
            line.remove_prefix(1);
        }
    }

  private:
    // Used again from row to row, so that thirty thousand of them are quick.
    std::string& NextField() {
        if (count_ == fields_.size()) fields_.emplace_back();
        fields_[count_].clear();
        return fields_[count_++];
    }

    static bool TakeQuoted(std::string_view& line, std::string& field) {
        line.remove_prefix(1);
        for (;;) {
            const std::size_t quote = line.find('"');
            if (quote == std::string_view::npos) return false;
            field += line.substr(0, quote);
            line.remove_prefix(quote + 1);
            if (!line.starts_with('"')) return true;
            field += '"';
            line.remove_prefix(1);
        }
    }

    std::vector<std::string> fields_;
    std::size_t count_ = 0;
};

// Which keyword stands in which column.
struct TableHead {
    char separator = ',';
    std::vector<std::optional<MessageKey>> columns;
    int known = 0;
};

TableHead ReadHead(std::string_view line) {
    TableHead head;
    for (const char separator : {';', '\t'})
        if (std::count(line.begin(), line.end(), separator) > std::count(line.begin(), line.end(), head.separator))
            head.separator = separator;
    TableRow row;
    row.Split(line, head.separator);
    for (std::size_t i = 0; i < row.Count(); ++i) {
        const std::optional<MessageKey> key = FindMessageKey(TrimmedText(row.Field(i), kBlanks));
        const bool again = key && std::find(head.columns.begin(), head.columns.end(), key) != head.columns.end();
        head.columns.push_back(again ? std::nullopt : key);
        if (key && !again) ++head.known;
    }
    return head;
}

// No line of data is a head, so few lines are looked at closely.
bool MayBeHead(std::string_view line) { return line.find("EPOCH") != std::string_view::npos; }

bool IsHead(std::string_view line) { return MayBeHead(line) && ReadHead(line).known >= kFewestKeywords; }

}  // namespace

bool IsMessageTable(std::string_view text) { return IsHead(TakeFilledLine(text)); }

std::string ReadMessageTable(std::string_view text, const TakeRecord& take) {
    TableHead head = ReadHead(TakeFilledLine(text));
    TableRow row;
    MessageRecord record;
    for (std::string_view line = TakeFilledLine(text); !line.empty(); line = TakeFilledLine(text)) {
        if (IsHead(line)) {
            head = ReadHead(line);
            continue;
        }
        record.Clear();
        const bool closed = row.Split(line, head.separator);
        for (std::size_t i = 0; i < std::min(row.Count(), head.columns.size()); ++i)
            if (head.columns[i]) record.Set(*head.columns[i], row.Field(i));
        if (!closed)
            record.fault = "a quote is not closed";
        else if (row.Count() != head.columns.size())
            // A separator too many or too few shifts all that stands behind it.
            record.fault = "the line has " + std::to_string(row.Count()) + " fields, the first line " +
                           std::to_string(head.columns.size());
        take(record);
    }
    return {};
}

}  // namespace glintara
