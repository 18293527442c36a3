#pragma once

#include "host/services/services.h"

namespace host {

/// A graphics engine that draws nothing: it counts its starts and renders fills at 300 dots per inch.
class StandaloneGraphicsEngine final : public GraphicsEngine {
public:
    void Start(int option) override;
    void Stop() override;
    std::uint16_t GetRasterResolution() const override { return 300; }

    /// Starts that no stop has balanced yet.
    unsigned GetStarts() const noexcept { return m_starts; }
    /// The option of the latest start.
    int GetOption() const noexcept { return m_option; }

private:
    unsigned m_starts = 0;
    int m_option = 0;
};

/// The interface layer of a process without windows: warnings go to standard error, one line each, in UTF-8.
class StandaloneInterfaceLayer final : public InterfaceLayer {
public:
    bool Start() override { return true; }
    void Stop() override {}
    void WarnUser(std::wstring_view text) override;
};

}  // namespace host
