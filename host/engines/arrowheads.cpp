#include "engines/arrowheads.h"

#include <utility>

#include "host/base/wstring.h"
#include "host/services/calls.h"

#include "gfx/field_fold.h"

namespace host {
namespace {

constexpr char kFileName[] = "arrows.txt";

std::vector<std::filesystem::path> FilesToTry() {
    std::vector<std::filesystem::path> files;
    for (const WString& folder : {GetUserProfileCustomDir(), INIGetAppDir()})
        if (!folder.empty()) files.push_back(ToPath(folder) / kFileName);
    return files;
}

}  // namespace

void StandaloneArrowheads::Load() {
    if (m_set.IsStarted()) return;
    m_set.Start([files = FilesToTry()] { return LoadArrowheads(files); });
}

const std::vector<MemoryBlock>& StandaloneArrowheads::WaitForBlocks() {
    Load();
    for (const std::wstring& warning : std::exchange(m_set.Get().warnings, {}))
        Installed().interfaceLayer.WarnUser(warning);
    Load();  // a dialog may have run the application to its end
    return m_set.Get().blocks;
}

unsigned StandaloneArrowheads::GetCount() {
    return static_cast<unsigned>(WaitForBlocks().size());
}

HMEM StandaloneArrowheads::GetHandle(unsigned index) {
    const std::vector<MemoryBlock>& blocks = WaitForBlocks();
    return index < blocks.size() ? blocks[index].Get() : nullptr;
}

bool StandaloneArrowheads::AreSame(HMEM a, HMEM b) {
    WaitForBlocks();
    return detail::CompareBlocks(a, b) == 0;
}

}  // namespace host
