#pragma once

#include <cstdint>
#include <cstring>
#include <span>

namespace bench {

/// Puts values one after the other into a place that is large enough.
class Writer {
public:
    explicit Writer(std::uint8_t* at) : m_at(at) {}
    template <class T>
    void Put(const T& value) {
        std::memcpy(m_at, &value, sizeof value);
        m_at += sizeof value;
    }
    template <class T>
    void Field(std::uint8_t number, std::uint8_t code, const T& value) {
        Put(number);
        Put(code);
        Put(value);
    }
    /// Where the size stands, for End.
    std::uint8_t* Begin(std::uint8_t number) {
        Field(number, 5, std::uint32_t{0});
        return m_at;
    }
    void End(std::uint8_t* begin) {
        const auto size = static_cast<std::uint32_t>(m_at - begin);
        std::memcpy(begin - sizeof size, &size, sizeof size);
    }
    std::uint8_t* At() const { return m_at; }

private:
    std::uint8_t* m_at;
};

/// Checks the end before every value.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes)
        : m_at(bytes.data()), m_end(bytes.data() + bytes.size()) {}
    template <class T>
    bool Get(T& value) {
        if (static_cast<std::size_t>(m_end - m_at) < sizeof value) return false;
        std::memcpy(&value, m_at, sizeof value);
        m_at += sizeof value;
        return true;
    }
    template <class T>
    bool Field(T& value) {
        std::uint8_t number = 0, code = 0;
        return Get(number) && Get(code) && Get(value);
    }
    bool Begin() {
        std::uint32_t size = 0;
        return Field(size) && size <= static_cast<std::size_t>(m_end - m_at);
    }
    bool Skip(std::size_t size) {
        if (static_cast<std::size_t>(m_end - m_at) < size) return false;
        m_at += size;
        return true;
    }

private:
    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
};

}  // namespace bench
