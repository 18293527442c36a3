#include "xml/unique_attributes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <pugixml.hpp>
#include <string_view>
#include <vector>

namespace host::detail {
namespace {

/// So many names are compared each with each.
constexpr std::size_t kFew = 16;

const char* FindAmongMany(const pugi::xml_node& element) {
    std::vector<const char*> names;
    for (pugi::xml_attribute at = element.first_attribute(); at; at = at.next_attribute())
        names.push_back(at.name());
    std::stable_sort(names.begin(), names.end(),
                     [](const char* a, const char* b) { return std::string_view(a) < b; });
    const auto found = std::adjacent_find(
        names.begin(), names.end(), [](const char* a, const char* b) { return std::string_view(a) == b; });
    return found == names.end() ? nullptr : *std::next(found);
}

const char* FindIn(const pugi::xml_node& element) {
    std::array<std::string_view, kFew> names;
    auto end = names.begin();
    for (pugi::xml_attribute at = element.first_attribute(); at; at = at.next_attribute()) {
        const std::string_view name = at.name();
        if (std::find(names.begin(), end, name) != end) return name.data();
        if (end == names.end()) return FindAmongMany(element);
        *end++ = name;
    }
    return nullptr;
}

/// The node after `node` in the order of the text; null after the last one below `root`.
pugi::xml_node NextInText(pugi::xml_node node, const pugi::xml_node& root) {
    if (const pugi::xml_node child = node.first_child()) return child;
    for (; node != root; node = node.parent()) {
        if (const pugi::xml_node next = node.next_sibling()) return next;
    }
    return {};
}

}  // namespace

const char* FindRepeatedAttribute(const pugi::xml_node& root) {
    for (pugi::xml_node node = root; node; node = NextInText(node, root)) {
        if (const char* const repeated = FindIn(node)) return repeated;
    }
    return nullptr;
}

}  // namespace host::detail
