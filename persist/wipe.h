// Clearing memory that held a secret.

#pragma once

#include <cstddef>
#include <cstring>

namespace tlvn {

// Sets `size` bytes at `p` to zero, also where the compiler can see that nobody reads them any
// more. Null does nothing.
inline void Wipe(void* p, std::size_t size) noexcept
{
    // The compiler cannot know what a volatile pointer leads to, so it has to make the call.
    static void* (*const volatile fill)(void*, int, std::size_t) = &std::memset;
    if (p != nullptr && size > 0)
        fill(p, 0, size);
}

// Wipes what it is given at the end of a scope, by whatever road that is left:
//
//   BYTE digest[16];
//   const WipeGuard guard(digest, sizeof digest);
class WipeGuard {
public:
    WipeGuard(void* p, std::size_t size) noexcept : m_p(p), m_size(size) {}
    ~WipeGuard() { Wipe(m_p, m_size); }
    WipeGuard(const WipeGuard&) = delete;
    WipeGuard& operator=(const WipeGuard&) = delete;

private:
    void* m_p;
    std::size_t m_size;
};

} // namespace tlvn
