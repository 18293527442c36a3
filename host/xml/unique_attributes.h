#pragma once

namespace pugi {
class xml_node;
}

namespace host::detail {

/// The name of an attribute of `root` or an element below it whose element has another one of that name
/// further ahead; null when there is none. The parser itself takes such elements.
const char* FindRepeatedAttribute(const pugi::xml_node& root);

}  // namespace host::detail
