#pragma once

#include "host/xml/xml_node.h"

namespace svg {

/// Visits the elements below and including `root` in document order, without recursion.
/// `visit(element, depth)` answers whether to go into the element; depth counts from 0 at `root`.
template <class Visit>
void WalkElements(host::XmlNode root, Visit&& visit) {
    host::XmlNode node = root;
    unsigned depth = 0;
    while (node) {
        if (visit(node, depth)) {
            if (const host::XmlNode child = node.FirstElement()) {
                node = child;
                ++depth;
                continue;
            }
        }
        for (;;) {
            if (node == root) return;
            if (const host::XmlNode next = node.NextElement()) {
                node = next;
                break;
            }
            node = node.Parent();
            --depth;
        }
    }
}

}  // namespace svg
