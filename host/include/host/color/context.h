#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "host/base/error.h"
#include "host/base/export.h"

namespace ColorSystem {

/// A colour-management context: the profiles that give numbers their meaning. A value; copies share immutable
/// content. The default context is empty and not valid: conversions then use the documented formulas.
/// Contexts may be used from any thread; the active context and the application default belong to the host's
/// main thread.
class FOM_API ColorContext {
public:
    struct Data;  // private to the colour room

    ColorContext() = default;

    /// A context of ICC profiles (their bytes; an empty span leaves that model to the formulas). Fails,
    /// leaving `error` set (`what` names the profile), when a profile cannot be read, is of the wrong colour
    /// space or cannot convert in both directions, or where no ICC engine is built in. The bytes are copied
    /// and may be hostile.
    static std::optional<ColorContext> FromProfiles(std::span<const std::byte> rgb,
                                                    std::span<const std::byte> cmyk,
                                                    std::span<const std::byte> gray, host::Error& error);
    /// The valid context without profiles: every conversion uses the documented formulas. All calls return
    /// equal contexts.
    static ColorContext Uncalibrated();

    bool IsValid() const noexcept { return m_data != nullptr; }
    const Data* GetData() const noexcept { return m_data.get(); }
    /// Same content by identity.
    friend bool operator==(const ColorContext&, const ColorContext&) = default;

    /// The host's active context; the application default until one is set. An invalid one unsets it.
    static const ColorContext& GetActiveColorContext();
    static void SetActiveColorContext(const ColorContext& context);

    /// Uncalibrated() unless the application installs another; an invalid one restores that.
    static const ColorContext& GetApplicationDefaultColorContext();
    static void SetApplicationDefaultColorContext(const ColorContext& context);

private:
    std::shared_ptr<const Data> m_data;
};

}  // namespace ColorSystem

using ColorSystem::ColorContext;
