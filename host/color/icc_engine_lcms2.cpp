#ifdef FOM_HAVE_LCMS2

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <lcms2.h>
#include <lcms2_plugin.h>
#include <limits>
#include <mutex>
#include <new>
#include <string>

#include "color/icc_engine.h"

namespace host::detail {
namespace {

constexpr std::size_t kMebibyte = 1024 * 1024;
constexpr std::size_t kLargestProfile = 64 * kMebibyte;
/// What optimised transforms may take in addition to the profiles.
constexpr std::size_t kTransformAllowance = 256 * kMebibyte;

/// What one engine's memory calls and messages refer to. A profile names its own table sizes, so everything
/// that the library allocates is held against a limit.
struct Ledger {
    std::atomic<std::size_t> used{0};
    std::atomic<std::size_t> limit{kMebibyte};
    std::atomic<bool> outOfMemory{false};
    char message[160] = {};
};

/// Stands before each block; carries its ledger because blocks are also freed where the context cannot be
/// asked.
struct alignas(std::max_align_t) BlockHeader {
    Ledger* ledger;
    std::size_t size;
};

Ledger* LedgerOf(cmsContext context) {
    return static_cast<Ledger*>(cmsGetContextUserData(context));
}

bool Book(Ledger* ledger, std::size_t size) noexcept {
    if (ledger == nullptr) return true;
    if (ledger->used.fetch_add(size) + size <= ledger->limit) return true;
    ledger->used -= size;
    return false;
}

void* AllocateBlock(cmsContext context, cmsUInt32Number size) {
    Ledger* ledger = LedgerOf(context);
    if (!Book(ledger, size)) return nullptr;
    auto* header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + size));
    if (header == nullptr) {
        if (ledger != nullptr) {
            ledger->used -= size;
            ledger->outOfMemory = true;
        }
        return nullptr;
    }
    *header = {ledger, size};
    return header + 1;
}

void FreeBlock(cmsContext, void* block) {
    if (block == nullptr) return;
    auto* header = static_cast<BlockHeader*>(block) - 1;
    if (header->ledger != nullptr) header->ledger->used -= header->size;
    std::free(header);
}

void* ResizeBlock(cmsContext context, void* block, cmsUInt32Number size) {
    void* larger = AllocateBlock(context, size);
    if (larger != nullptr && block != nullptr) {
        const std::size_t old = (static_cast<BlockHeader*>(block) - 1)->size;
        std::memcpy(larger, block, std::min<std::size_t>(old, size));
        FreeBlock(context, block);
    }
    return larger;
}

void KeepMessage(cmsContext context, cmsUInt32Number, const char* text) {
    Ledger* ledger = LedgerOf(context);
    if (ledger == nullptr || ledger->message[0] != 0) return;  // the first message names the cause
    std::strncpy(ledger->message, text, sizeof ledger->message - 1);
}

cmsContext MakeContext(Ledger& ledger) {
    cmsPluginMemHandler memory{};
    memory.base.Magic = cmsPluginMagicNumber;
    memory.base.ExpectedVersion = 2000;
    memory.base.Type = cmsPluginMemHandlerSig;
    memory.MallocPtr = AllocateBlock;
    memory.FreePtr = FreeBlock;
    memory.ReallocPtr = ResizeBlock;
    cmsContext context = cmsCreateContext(&memory, &ledger);
    if (context == nullptr) throw std::bad_alloc();
    cmsSetLogErrorHandlerTHR(context, KeepMessage);
    return context;
}

cmsUInt32Number NativeFormat(PixelFormat format) noexcept {
    constexpr cmsUInt32Number kNative[kPixelFormats] = {TYPE_RGB_8,   TYPE_CMYK_8,  TYPE_GRAY_8, TYPE_RGB_16,
                                                        TYPE_CMYK_16, TYPE_GRAY_16, TYPE_Lab_DBL};
    return kNative[static_cast<std::size_t>(format)];
}

PixelFormat WideFormat(Family family) noexcept {
    constexpr PixelFormat kWide[kFamilies] = {PixelFormat::Rgb16, PixelFormat::Cmyk16, PixelFormat::Gray16,
                                              PixelFormat::Lab};
    return kWide[static_cast<std::size_t>(family)];
}

struct ProfileKind {
    Family family;
    const char* name;
    cmsColorSpaceSignature space;
};
constexpr ProfileKind kKinds[] = {{Family::Rgb, "RGB profile", cmsSigRgbData},
                                  {Family::Cmyk, "CMYK profile", cmsSigCmykData},
                                  {Family::Gray, "grey profile", cmsSigGrayData}};

class Lcms2Engine final : public IccEngine {
public:
    Lcms2Engine() : m_context(MakeContext(m_ledger)) {}
    ~Lcms2Engine() override {
        for (auto& row : m_transforms) {
            for (auto& slot : row) {
                if (void* transform = slot.load(); transform != nullptr) cmsDeleteTransform(transform);
            }
        }
        for (cmsHPROFILE profile : m_profiles) {
            if (profile != nullptr) cmsCloseProfile(profile);
        }
        cmsDeleteContext(m_context);
    }
    Lcms2Engine(const Lcms2Engine&) = delete;
    Lcms2Engine& operator=(const Lcms2Engine&) = delete;

    bool OpenAll(const IccProfiles& bytes, Error& error);

    const Transform* Find(PixelFormat from, Family to) const override;
    void Run(const Transform& transform, const void* in, void* out,
             std::size_t count) const noexcept override;

private:
    bool OpenOne(const ProfileKind& kind, std::span<const std::byte> bytes, Error& error);
    const char* WhyUseless(const ProfileKind& kind, cmsHPROFILE profile) const;
    bool CanTransform(Family from, Family to) const;
    cmsHTRANSFORM Make(PixelFormat from, Family to, cmsUInt32Number flags) const;
    cmsHPROFILE& ProfileOf(Family family) { return m_profiles[static_cast<std::size_t>(family)]; }
    cmsHPROFILE ProfileOf(Family family) const { return m_profiles[static_cast<std::size_t>(family)]; }
    void ThrowIfOutOfMemory() const {
        if (m_ledger.outOfMemory.exchange(false)) throw std::bad_alloc();
    }

    mutable Ledger m_ledger;
    cmsContext m_context;
    std::array<cmsHPROFILE, kFamilies> m_profiles{};
    // Published once, never replaced; made and marked as failed under the mutex.
    mutable std::array<std::array<std::atomic<void*>, kFamilies>, kPixelFormats> m_transforms{};
    mutable std::array<std::array<bool, kFamilies>, kPixelFormats> m_failed{};
    mutable std::mutex m_mutex;
};

bool Lcms2Engine::OpenAll(const IccProfiles& bytes, Error& error) {
    ProfileOf(Family::Xyz) = cmsCreateLab4ProfileTHR(m_context, nullptr);
    if (ProfileOf(Family::Xyz) == nullptr) throw std::bad_alloc();
    const std::span<const std::byte> all[] = {bytes.rgb, bytes.cmyk, bytes.gray};
    for (std::size_t i = 0; i < std::size(kKinds); ++i) {
        if (!all[i].empty() && !OpenOne(kKinds[i], all[i], error)) return false;
    }
    m_ledger.limit += kTransformAllowance;
    return true;
}

bool Lcms2Engine::OpenOne(const ProfileKind& kind, std::span<const std::byte> bytes, Error& error) {
    error = Error();
    error.what = kind.name;
    if (bytes.size() > kLargestProfile) {
        error.reason = "the profile is larger than 64 MiB";
        return false;
    }
    m_ledger.limit += 12 * bytes.size();
    m_ledger.message[0] = 0;
    cmsHPROFILE profile =
        cmsOpenProfileFromMemTHR(m_context, bytes.data(), static_cast<cmsUInt32Number>(bytes.size()));
    ThrowIfOutOfMemory();
    ProfileOf(kind.family) = profile;
    const char* why = profile == nullptr ? "this is not an ICC profile" : WhyUseless(kind, profile);
    ThrowIfOutOfMemory();
    if (why == nullptr) {
        error = Error();
        return true;
    }
    error.reason = why;
    if (m_ledger.message[0] != 0) error.reason.append(" (").append(m_ledger.message).append(")");
    return false;
}

const char* Lcms2Engine::WhyUseless(const ProfileKind& kind, cmsHPROFILE profile) const {
    if (cmsGetColorSpace(profile) != kind.space) return "the profile is of another colour space";
    switch (cmsGetDeviceClass(profile)) {
        case cmsSigInputClass:
        case cmsSigDisplayClass:
        case cmsSigOutputClass:
        case cmsSigColorSpaceClass:
            break;
        default:
            return "the profile does not describe a device";
    }
    if (!CanTransform(kind.family, Family::Xyz)) return "the profile does not say what its colours look like";
    if (!CanTransform(Family::Xyz, kind.family)) return "the profile does not say how to reproduce colours";
    return nullptr;
}

bool Lcms2Engine::CanTransform(Family from, Family to) const {
    cmsHTRANSFORM transform = Make(WideFormat(from), to, cmsFLAGS_NOOPTIMIZE);
    if (transform == nullptr) return false;
    cmsDeleteTransform(transform);
    return true;
}

cmsHTRANSFORM Lcms2Engine::Make(PixelFormat from, Family to, cmsUInt32Number flags) const {
    cmsHPROFILE source = ProfileOf(FamilyOf(from));
    cmsHPROFILE target = ProfileOf(to);
    if (source == nullptr || target == nullptr) return nullptr;
    flags |= cmsFLAGS_NOCACHE;  // a cache of the last pixel is of no use to distinct colours
    // Between devices black maps to black; CIE colours are meant as they are.
    if (from != PixelFormat::Lab && to != Family::Xyz) flags |= cmsFLAGS_BLACKPOINTCOMPENSATION;
    return cmsCreateTransformTHR(m_context, source, NativeFormat(from), target, NativeFormat(WideFormat(to)),
                                 INTENT_RELATIVE_COLORIMETRIC, flags);
}

const IccEngine::Transform* Lcms2Engine::Find(PixelFormat from, Family to) const {
    if (FamilyOf(from) == to) return nullptr;
    const auto row = static_cast<std::size_t>(from);
    const auto column = static_cast<std::size_t>(to);
    std::atomic<void*>& slot = m_transforms[row][column];
    void* transform = slot.load(std::memory_order_acquire);
    if (transform == nullptr) {
        const std::lock_guard lock(m_mutex);
        transform = slot.load(std::memory_order_relaxed);
        if (transform == nullptr && !m_failed[row][column]) {
            transform = Make(from, to, 0);
            ThrowIfOutOfMemory();
            m_failed[row][column] = transform == nullptr;
            slot.store(transform, std::memory_order_release);
        }
    }
    return static_cast<const Transform*>(transform);
}

void Lcms2Engine::Run(const Transform& transform, const void* in, void* out,
                      std::size_t count) const noexcept {
    // The library takes its handle as void*, but with the cache off it only reads through it.
    void* handle = const_cast<void*>(static_cast<const void*>(&transform));
    cmsDoTransform(handle, in, out, static_cast<cmsUInt32Number>(count));
}

}  // namespace

std::unique_ptr<IccEngine> IccEngine::Open(const IccProfiles& profiles, Error& error) {
    auto engine = std::make_unique<Lcms2Engine>();
    if (!engine->OpenAll(profiles, error)) return nullptr;
    return engine;
}

}  // namespace host::detail

#endif
