#pragma once

#include <functional>
#include <type_traits>
#include <utility>

/// A call that a caller hands over: any callable of the signature, or none. It owns its callable.
template <class Signature>
class Delegate;

template <class R, class... Args>
class Delegate<R(Args...)> {
public:
    Delegate() = default;
    template <class F>
    requires(!std::is_same_v<std::remove_cvref_t<F>, Delegate> && std::is_invocable_r_v<R, F&, Args...>)
        Delegate(F&& f)
        : m_call(std::forward<F>(f)) {}

    /// Binds a member function of an object that outlives the delegate.
    template <class T, class M>
    Delegate(T* object, M T::*member)
        : m_call([object, member](Args... args) -> R {
              return (object->*member)(std::forward<Args>(args)...);
          }) {}

    explicit operator bool() const noexcept { return static_cast<bool>(m_call); }
    /// Requires a callable.
    R operator()(Args... args) const { return m_call(std::forward<Args>(args)...); }

private:
    std::function<R(Args...)> m_call;
};

/// A delegate that may be unset and is tested before it is called.
template <class Signature>
using safe_function = Delegate<Signature>;
