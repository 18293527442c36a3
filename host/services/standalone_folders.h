#pragma once

#include "host/services/services.h"

namespace host {

/// The user's folders of this platform, or all of them under the folder that FOM_HOME names (docs/host.md).
/// The environment is read at each call. Folders are named, never made.
class StandaloneFolders final : public Folders {
public:
    WString GetUserCustom() const override;
    WString GetUserProfileConfig() const override;
    WString GetCustomData() const override;
    WString GetUserCustomData() const override;
    WString GetApplication() const override;
    WString GetFills() const override;
    std::vector<WString> GetFillsFolders() const override;
};

}  // namespace host
