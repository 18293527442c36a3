#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace svg {

/// What a reader could not take into account: how often, by a stable short English name.
class Omissions {
public:
    using Map = std::map<std::string, std::size_t, std::less<>>;

    void Count(std::string_view name, std::size_t times = 1) {
        if (m_muted || times == 0) return;
        const auto found = m_counts.find(name);
        if (found != m_counts.end()) {
            found->second += times;
        } else {
            m_counts.emplace(name, times);
        }
    }

    void Add(const Omissions& other) {
        for (const auto& [name, times] : other.m_counts)
            Count(name, times);
    }

    /// How often `name` was counted.
    std::size_t Of(std::string_view name) const {
        const auto found = m_counts.find(name);
        return found == m_counts.end() ? 0 : found->second;
    }

    /// While muted nothing is counted: art that is drawn again is not omitted again.
    void SetMuted(bool muted) { m_muted = muted; }

    const Map& Counts() const { return m_counts; }

private:
    Map m_counts;
    bool m_muted = false;
};

}  // namespace svg
