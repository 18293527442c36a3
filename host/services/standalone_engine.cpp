#include "services/standalone_engine.h"

#include <cstdio>
#include <string>

namespace host {

void StandaloneGraphicsEngine::Start(int option) {
    ++m_starts;
    m_option = option;
}

void StandaloneGraphicsEngine::Stop() {
    if (m_starts != 0) --m_starts;
}

void StandaloneInterfaceLayer::WarnUser(std::wstring_view text) {
    // One write, so that lines of several threads or processes do not mix.
    const std::string line = ToUtf8(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace host
