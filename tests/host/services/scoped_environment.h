#pragma once

#include <cstdlib>
#include <string>
#include <vector>

namespace testing_support {

/// Sets one environment variable, or unsets it when `value` is null, until the end of the scope.
class ScopedEnvironment {
public:
    ScopedEnvironment(const char* name, const char* value) : m_name(name) {
        const char* old = std::getenv(name);
        m_had = old != nullptr;
        if (old) m_old = old;
        Put(value);
    }
    ~ScopedEnvironment() { Put(m_had ? m_old.c_str() : nullptr); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void Put(const char* value) {
#ifdef _WIN32
        _putenv_s(m_name, value ? value : "");
#else
        if (value)
            setenv(m_name, value, 1);
        else
            unsetenv(m_name);
#endif
    }
    const char* m_name;
    bool m_had;
    std::string m_old;
};

}  // namespace testing_support
