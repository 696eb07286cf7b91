#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "orbit/message_forms.h"

namespace glintara {

namespace {

// A message is five deep; what is deeper than this is none.
constexpr std::size_t kDeepest = 32;

// Names of the objects that a message is divided into.
bool IsPartOfRecord(std::string_view name) {
    constexpr std::array<std::string_view, 7> kParts = {"header", "body",         "segment",      "metadata",
                                                        "data",   "meanElements", "tleParameters"};
    return std::find(kParts.begin(), kParts.end(), name) != kParts.end();
}

// Goes through the characters of a text and tells how far.
struct TextCursor {
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    const char* at;
    const char** furthest;

    const char& operator*() const { return *at; }
    TextCursor& operator++() {
        *furthest = ++at;
        return *this;
    }
    bool operator==(const TextCursor& other) const { return at == other.at; }
};

// Collects records while the text is read; no tree is built, so neither depth nor size of a text costs more than its
// bytes.
class JsonRecords : public nlohmann::json_sax<nlohmann::json> {
  public:
    explicit JsonRecords(const TakeRecord& take) : take_(take) {}

    bool TooDeep() const { return tooDeep_; }

    // Reads one value, `offset` characters from the start of the text; what is wrong with it, or nothing.
    std::string Read(TextCursor first, TextCursor last, std::size_t offset) {
        levels_.clear();
        name_.clear();
        damage_.clear();
        offset_ = offset;
        nlohmann::json::sax_parse(first, last, this, nlohmann::json::input_format_t::json, false);
        return damage_;
    }

    bool null() override { return Value({}); }
    bool boolean(bool value) override { return Value(value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override { return Value(std::to_string(value)); }
    bool number_unsigned(number_unsigned_t value) override { return Value(std::to_string(value)); }
    // The number as it is written.
    bool number_float(number_float_t /*value*/, const string_t& text) override { return Value(text); }
    bool string(string_t& text) override { return Value(text); }
    bool binary(binary_t& /*bytes*/) override { return true; }

    bool key(string_t& name) override {
        name_ = name;
        return true;
    }

    bool start_object(std::size_t /*size*/) override { return Open(true); }
    bool start_array(std::size_t /*size*/) override { return Open(false); }

    bool end_object() override {
        Level level = std::move(levels_.back());
        levels_.pop_back();
        const auto around =
            std::find_if(levels_.rbegin(), levels_.rend(), [](const Level& outer) { return outer.isObject; });
        if (IsPartOfRecord(level.name) && around != levels_.rend())
            MergeInto(around->record, level.record);
        else if (level.record.known >= kFewestKeywords)
            take_(level.record);
        spare_ = std::move(level.record);
        return true;
    }

    bool end_array() override {
        levels_.pop_back();
        return true;
    }

    bool parse_error(std::size_t position, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return BreakOff("this is no JSON at character " + std::to_string(offset_ + position));
    }

  private:
    // An object or an array that is open.
    struct Level {
        bool isObject = false;
        std::string name;
        MessageRecord record;
    };

    bool Open(bool isObject) {
        tooDeep_ = levels_.size() == kDeepest;
        if (tooDeep_) return BreakOff("it is nested too deeply");
        const bool named = levels_.empty() || levels_.back().isObject;
        Level level{isObject, named ? name_ : levels_.back().name, std::move(spare_)};
        level.record.Clear();
        levels_.push_back(std::move(level));
        return true;
    }

    bool Value(std::string_view text) {
        if (levels_.empty() || !levels_.back().isObject) return true;
        if (const std::optional<MessageKey> key = FindMessageKey(name_)) levels_.back().record.Set(*key, text);
        return true;
    }

    static void MergeInto(MessageRecord& record, const MessageRecord& part) {
        for (std::size_t i = 0; i < kMessageKeys; ++i)
            if (!part.values[i].empty()) record.values[i] = part.values[i];
        record.known += part.known;
    }

    // What is open stays incomplete: its record is told, but not used.
    bool BreakOff(std::string reason) {
        damage_ = std::move(reason);
        MessageRecord open;
        for (const Level& level : levels_) MergeInto(open, level.record);
        open.fault = damage_;
        if (open.known >= kFewestKeywords) take_(open);
        return false;
    }

    const TakeRecord& take_;
    std::vector<Level> levels_;
    std::string name_;
    MessageRecord spare_;  // its memory serves the next object
    std::string damage_;
    std::size_t offset_ = 0;
    bool tooDeep_ = false;
};

}  // namespace

std::string ReadMessageJson(std::string_view text, const TakeRecord& take) {
    JsonRecords records(take);
    std::string damage;
    // What is wrong in one object, be it a "NaN", costs that object; the next brace begins another.
    for (std::size_t start = 0; start != std::string_view::npos && !records.TooDeep();) {
        const char* furthest = text.data() + start;
        damage = records.Read({furthest, &furthest}, {text.data() + text.size(), &furthest}, start);
        start = text.find('{', static_cast<std::size_t>(furthest - text.data()));
    }
    return damage;
}

}  // namespace glintara
