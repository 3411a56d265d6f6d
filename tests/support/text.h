// What many tests of texts need: the content of a buffer as a string, and numbers at random.

#pragma once

#include "foundation/buffer.h"

#include <random>
#include <string>

// The whole content, with its zero bytes.
inline std::string Text(const CBuffer& buffer)
{
    return {buffer, static_cast<std::size_t>(buffer.GetLength())};
}

// What `work` leaves in a buffer that was not empty before.
template <class Work>
std::string Output(const Work& work)
{
    CBuffer out("left over");
    work(out);
    return Text(out);
}

inline const unsigned char* Unsigned(const std::string& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

// 0 to limit - 1.
inline unsigned Below(std::mt19937& random, std::size_t limit)
{
    return static_cast<unsigned>(random() % limit);
}
