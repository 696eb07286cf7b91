#include <algorithm>
#include <array>
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

// Collects records while the text is read; no tree is built, so neither depth nor size of a text costs more than its
// bytes.
class JsonRecords : public nlohmann::json_sax<nlohmann::json> {
  public:
    explicit JsonRecords(const TakeRecord& take) : take_(take) {}

    const std::string& Damage() const { return damage_; }

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
        return BreakOff("the text cannot be read on from character " + std::to_string(position));
    }

  private:
    // An object or an array that is open.
    struct Level {
        bool isObject = false;
        std::string name;
        MessageRecord record;
    };

    bool Open(bool isObject) {
        if (levels_.size() == kDeepest) return BreakOff("it is nested too deeply");
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
};

}  // namespace

std::string ReadMessageJson(std::string_view text, const TakeRecord& take) {
    JsonRecords records(take);
    nlohmann::json::sax_parse(text.begin(), text.end(), &records);
    return records.Damage();
}

}  // namespace glintara
