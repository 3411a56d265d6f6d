// Many short texts in one block, each told by its number.
//
// The texts stand one behind the other; a number is an index into their starts. Equal texts that
// are pooled share one number, found through a hash table of numbers. A text costs its bytes and
// four, a pooled one some twenty more.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tlvn {

class ShortTextPool {
public:
    using Id = std::uint32_t;

    ShortTextPool();

    // The number of a new text. Of texts that together exceed kMaxBytes, an empty one.
    Id Add(std::string_view text);
    // The number of the text, the same for equal ones.
    Id Pool(std::string_view text);

    // Valid until the next text comes.
    std::string_view Get(Id id) const;

    // Numbers given so far: all below it are valid.
    Id GetCount() const { return static_cast<Id>(m_starts.size() - 1); }

    void Clear();

    std::size_t GetMemoryBytes() const;

private:
    static constexpr std::size_t kMaxBytes = 0xFFFFFFFF;

    void Grow();

    std::string m_bytes;
    std::vector<std::uint32_t> m_starts; // of each text, and behind the last one
    std::vector<Id> m_table;             // numbers + 1 by hash, 0 for a free place; power of two
    std::size_t m_pooled = 0;
};

} // namespace tlvn
