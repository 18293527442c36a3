#pragma once

#include <atomic>
#include <memory>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include "fom/fill_list.h"
#include "fom/outline_list.h"

/// The two pools under one name, so that what holds for both is tested on both.
namespace pool_test {

struct Fills {
    using List = WRCFillList;
    using Entry = WRefCountFill;

    /// Uniform fills and fountains of many widths; equal exactly for equal values.
    static Entry* New(unsigned value) {
        CGE_FILL record(value % 3 == 0 ? FillFountain : FillUniform);
        if (value % 3 == 0)
            record.EditFountain().SetAngle(static_cast<int>(value));
        else
            record.EditUniform().color.MakeSpot(value, 100);
        return new Entry(&record);
    }
    static VyrUtils::Guid GuidOf(const Entry& entry) { return entry.GetGuid(); }
    static void SetGuid(Entry& entry, const VyrUtils::Guid& guid) { entry.GetCGEFill()->SetGuid(guid); }
};

struct Outlines {
    using List = WRCOutlineList;
    using Entry = WRefCountOutline;

    static Entry* New(unsigned value) {
        CGE_OUTLINE record;
        record.width = static_cast<int>(value);
        return new Entry(&record);
    }
    static VyrUtils::Guid GuidOf(const Entry& entry) { return entry.GetGuid(); }
    static void SetGuid(Entry& entry, const VyrUtils::Guid& guid) { entry.GetCGEOutline()->guid = guid; }
};

/// 0 to `count` - 1.
inline unsigned Pick(std::mt19937& random, unsigned count) {
    return static_cast<unsigned>(random() % count);
}

/// Calls `work` with 0 to `count` - 1, each on a thread of its own, and beside them `watch` with the number
/// of the round until all have ended.
template <class Work, class Watch>
void RunWatched(unsigned count, Work work, Watch watch) {
    std::atomic<bool> done{false};
    std::thread watcher([&] {
        for (unsigned round = 0; !done; ++round)
            watch(round);
    });
    std::vector<std::thread> workers;
    for (unsigned i = 0; i < count; ++i)
        workers.emplace_back(work, i);
    for (std::thread& worker : workers)
        worker.join();
    done = true;
    watcher.join();
}

template <class Entry>
struct EntryLess {
    bool operator()(const Entry* a, const Entry* b) const { return a->Compare(b, false) < 0; }
};

template <class Entry>
using EntrySet = std::set<const Entry*, EntryLess<Entry>>;

}  // namespace pool_test
