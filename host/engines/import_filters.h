#pragma once

#include "host/services/services.h"

namespace host {

/// The formats that patterns come in: SVG for vectors, and PNG for bitmaps where this build reads it. The
/// filters start when their extensions are first asked for.
class StandaloneFilters final : public ImportFilters {
public:
    bool IsAvailable() const override { return true; }
    bool IsStarted() const override { return m_started; }
    void Shutdown() override { m_started = false; }
    std::vector<WString> GetExtensions(bool bitmap) override;

private:
    bool m_started = false;
};

}  // namespace host
