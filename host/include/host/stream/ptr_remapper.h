#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "host/base/export.h"

namespace udi {

/// Kinds of objects that stored numbers stand for.
enum PtrKind : int { kPtrBlock = 5 };

/// Turns addresses into stored numbers and back.
class FOM_API PtrRemapper {
public:
    virtual ~PtrRemapper();
    /// The number of the object; 0 for null.
    virtual std::uint32_t MapPtr(const void* object, int kind) = 0;
    /// The object of that number; null for 0 and where nothing can stand for it.
    virtual void* UnmapPtr(std::uint32_t id, int kind) = 0;
};

/// Numbers objects 1, 2, 3, … as they are first met. A number that it did not give comes from a stream: for a
/// block UnresolvedBlock() stands then until the block's bytes are read, and null for other kinds. One thread
/// at a time.
class FOM_API PersistentPtrRemapper : public PtrRemapper {
public:
    std::uint32_t MapPtr(const void* object, int kind) override;
    void* UnmapPtr(std::uint32_t id, int kind) override;

private:
    using Object = std::pair<const void*, int>;
    std::map<Object, std::uint32_t> m_ids;
    std::vector<Object> m_objects;
};

}  // namespace udi
