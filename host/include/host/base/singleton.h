#pragma once

#include <memory>

#include "host/base/export.h"
#include "host/base/thread_lock.h"

namespace VyrUtils {

/// What all process-wide objects of the library have in common: one registry, so that shutdown can destroy
/// them.
class FOM_API SingletonBase {
public:
    /// Destroys every living singleton, the latest made first, each under its own write lock. From the moment
    /// of the call until AllowRecreation none is made, whether it was alive or not.
    static void DestroyAll();
    /// The next start may make singletons again.
    static void AllowRecreation();

    SingletonBase(const SingletonBase&) = delete;
    SingletonBase& operator=(const SingletonBase&) = delete;

protected:
    SingletonBase() = default;
    virtual ~SingletonBase();
    /// Puts the object into the registry, as the latest made, and takes it out. Called under the object's
    /// write lock.
    void Register() noexcept;
    void Unregister() noexcept;
    static bool MayBeMade() noexcept;
    virtual void Destroy() = 0;

private:
    friend class SingletonList;
    SingletonBase* m_next = nullptr;
};

/// A lazily made process-wide T. Making and destroying are under a lock; the object itself is not protected.
/// T's constructor and destructor may use other singletons, not their own. Safe before main and in static
/// destructors of what was constructed later.
template <class T>
class Singleton final : SingletonBase {
public:
    /// The object, made on first use. Null between shutdown and the next start.
    static T* GetInstance() {
        Singleton& self = Self();
        {
            ReadLock lock(self.m_lock);
            if (self.m_object) return self.m_object.get();
        }
        WriteLock lock(self.m_lock);
        if (!self.m_object && MayBeMade()) {
            self.m_object.reset(new T());
            self.Register();
        }
        return self.m_object.get();
    }
    static bool HasInstance() {
        ReadLock lock(Self().m_lock);
        return Self().m_object != nullptr;
    }
    /// Destroys the object; the next GetInstance makes a new one.
    static void ReleaseInstance() {
        Singleton& self = Self();
        WriteLock lock(self.m_lock);
        if (!self.m_object) return;
        self.Unregister();
        self.m_object.reset();
    }

private:
    static Singleton& Self() {
        static Singleton self;
        return self;
    }
    void Destroy() override {
        WriteLock lock(m_lock);
        m_object.reset();
    }

    ThreadLock m_lock;
    std::unique_ptr<T> m_object;
};

}  // namespace VyrUtils
