#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "fom/instance_kinds.h"

namespace command {

/// Decides which instances show the elements of a drawing as they stand in its text and which need copies: an
/// element has one paint, and a "use" leads to one element.
class InstanceVersions {
public:
    /// What the element in the drawing's own text is to be.
    struct Original {
        InstancePart part;
        /// How many shapes it is drawn as.
        std::size_t shapes = 0;
        /// Why it must stay what it is, with several paints; empty when it need not.
        std::string_view dispute;
    };
    /// Why there can be no copy for a kind, in words that last; empty when there can, which then is made. No
    /// kind is asked for twice.
    using Obstacle = std::function<std::string_view(const InstanceKind&)>;

    /// Without `sharesOriginals` instances get copies even where the drawing's own elements would do.
    InstanceVersions(const InstanceKinds& kinds, bool sharesOriginals, const Obstacle& obstacle);

    /// Null for an element that is neither a shape nor leads to one.
    const Original* Find(host::XmlNode element) const;
    bool IsCopied(std::size_t kind) const { return m_versions[kind] == Version::Copy; }

private:
    enum class Version : unsigned char { Open, Original, Copy };

    bool Fits(const InstanceKind& kind) const;
    void Keep(std::size_t kind, std::string_view reason);
    void Write(const InstancePart& part, std::size_t times, std::string_view reason);

    const InstanceKinds& m_kinds;
    std::vector<Version> m_versions;
    std::unordered_map<const void*, Original> m_originals;
    std::vector<std::size_t> m_kept;
};

}  // namespace command
