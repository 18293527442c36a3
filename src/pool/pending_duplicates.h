#pragma once

#include <map>
#include <mutex>
#include <set>

#include "host/stream/file_stream.h"

#include "fom/intern_node.h"

class WRefCountFill;
class WRefCountOutline;

namespace VyrFOM {

/// Entries that lost a duplicate test while a stream was being loaded and that pointers read from that stream
/// may still lead to, by stream. One table per type of entry serves the process; it has a lock of its own,
/// which is taken after a pool's lock and never before one.
///
/// An entry may wait for several streams, and for one it counts once: the end of the last load frees it.
class PendingDuplicatesBase {
public:
    /// Throws bad_alloc, with nothing changed.
    void Park(InternNode& entry, const AbstractFileStream& stream);
    /// The entry waits no longer: a pool owns it, or it is about to go.
    void Unpark(InternNode& entry) noexcept;
    static bool IsParked(const InternNode& entry) noexcept { return entry.m_parked; }

protected:
    using Entries = std::set<InternNode*>;

    /// What waited for this stream and waits for no other.
    Entries Take(const AbstractFileStream& stream) noexcept;

private:
    bool WaitsElsewhere(InternNode* entry) const noexcept;

    std::mutex m_mutex;
    std::map<const AbstractFileStream*, Entries> m_streams;
};

template <class Entry>
class PendingDuplicates : public PendingDuplicatesBase {
public:
    /// The process's table. Never destroyed: streams may be open at exit.
    static PendingDuplicates& Instance() {
        static PendingDuplicates& table = *new PendingDuplicates;
        return table;
    }
    /// What an entry's destructor calls: whoever is handed a parked entry may delete it, and the end of the
    /// load must not find it then.
    static void Leave(Entry& entry) noexcept {
        if (IsParked(entry)) Instance().Unpark(entry);
    }
    /// Deletes the entries that waited for the stream alone; outside the lock, for destructors may take their
    /// time.
    void EndLoad(const AbstractFileStream& stream) {
        for (InternNode* entry : Take(stream))
            delete static_cast<Entry*>(entry);
    }
};

using PendingFillDuplicates = PendingDuplicates<WRefCountFill>;
using PendingOutlineDuplicates = PendingDuplicates<WRefCountOutline>;

}  // namespace VyrFOM
