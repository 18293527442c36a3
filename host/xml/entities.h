#pragma once

#include <optional>

#include "xml/text_source.h"

namespace host::detail {

/// Replaces references to the entities that the document type of `text` declares as plain characters.
///
/// Does nothing to a text that declares none. An entity whose value holds markup or refers to other entities
/// is a fault where it is used, and so is more than 64 KiB plus the length of the text of replacements: no
/// text can swell. References to entities that are not declared, or declared outside the text, are left as
/// they stand.
std::optional<XmlTextFault> ExpandXmlEntities(XmlText& text);

}  // namespace host::detail
