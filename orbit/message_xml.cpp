#include <pugixml.hpp>

#include "orbit/message_forms.h"

namespace glintara {

namespace {

// The name without the prefix of its namespace.
std::string_view LocalName(const pugi::xml_node& node) {
    const std::string_view name = node.name();
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// The next node of the document's order; no recursion, for a text may be nested as deeply as it is long.
pugi::xml_node NextNode(pugi::xml_node node) {
    if (const pugi::xml_node child = node.first_child(); !child.empty()) return child;
    while (!node.empty() && node.next_sibling().empty()) node = node.parent();
    return node.next_sibling();
}

}  // namespace

std::string ReadMessageXml(std::string_view text, const TakeRecord& take) {
    // Entities that a document defines for itself are not expanded.
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(text.data(), text.size());
    std::string damage;
    if (!result) damage = "the text cannot be read on from character " + std::to_string(result.offset);

    MessageRecord record;
    bool begun = false;
    for (pugi::xml_node node = document.first_child(); !node.empty(); node = NextNode(node)) {
        if (node.type() != pugi::node_element) continue;
        const std::string_view name = LocalName(node);
        if (name == "omm") {
            if (begun) take(record);
            record.Clear();
            begun = true;
        } else if (const std::optional<MessageKey> key = begun ? FindMessageKey(name) : std::nullopt) {
            record.Set(*key, node.child_value());
        }
    }
    // The last may have lost its end, even within a number.
    record.fault = damage;
    if (begun) take(record);
    return damage;
}

}  // namespace glintara
