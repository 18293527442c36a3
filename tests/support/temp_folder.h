#pragma once

#include <filesystem>
#include <system_error>

#include "host/base/guid.h"
#include "host/base/wstring.h"

namespace testing_support {

/// An empty folder of its own for one test, removed with all that is in it.
class TempFolder {
public:
    TempFolder()
        : m_path(std::filesystem::temp_directory_path() /
                 host::ToPath(L"fom_test_" + VyrUtils::Guid::Generate().ToString().str())) {
        std::filesystem::create_directories(m_path);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const noexcept { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return m_path / name; }
    /// Files and folders directly inside.
    std::size_t Count() const {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(m_path))
            ++count;
        return count;
    }

private:
    std::filesystem::path m_path;
};

}  // namespace testing_support
