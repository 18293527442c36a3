#pragma once

#include <string_view>
#include <unordered_map>

#include "svg/definition.h"
#include "svg/gradients.h"
#include "svg/patterns.h"
#include "svg/style.h"

namespace svg {

/// Looks up the paints of a document by reference; each definition becomes one paint, made when first asked
/// for.
class PaintServers {
public:
    explicit PaintServers(Reading& reading);

    /// The paint that "#id" leads to; null when it leads to no gradient or pattern.
    const Paint* Find(std::string_view reference);

    /// What a fill or stroke of that style paints; what stands in for a reference that leads nowhere.
    Paint Resolve(const PaintValue& value, const Style& style);

    /// Notes that something painted refers there, without making the paint.
    void Touch(std::string_view reference);

private:
    Reading& m_reading;
    DefinitionReader m_definitions;
    GradientReader m_gradients;
    PatternReader m_patterns;
    std::unordered_map<const void*, Paint> m_paints;
};

}  // namespace svg
