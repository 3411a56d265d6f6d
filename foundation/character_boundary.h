// Answers, for positions of a multibyte text in any order, whether a character starts there,
// without scanning the text from its beginning.
//
// A position starts a character for certain when the byte before it is no lead byte or the byte
// at it is no trail byte. Between the nearest such position and the asked one every byte is
// both, so characters there are pairs and the distance's parity decides. The run last walked
// over is remembered: asking about ascending (or descending) positions costs no more than one
// pass over the text, whatever it holds.

#pragma once

#include "platform/multibyte.h"

namespace tlvn {

class CharacterBoundary {
public:
    // A character starts at `begin`.
    explicit CharacterBoundary(const char* begin) : m_begin(begin), m_certain(begin), m_last(begin)
    {}

    // True when a character starts at p >= begin. The byte at p is read.
    bool IsStart(const char* p)
    {
        if (p < m_certain || p > m_last)
            FindCertain(p);
        return (p - m_certain) % 2 == 0;
    }

private:
    void FindCertain(const char* p)
    {
        const char* q = p;
        while (q != m_begin && q != m_last && IsLeadByte(q[-1]) && IsTrailByte(*q))
            --q;
        // A walk that came back to m_last has found p in the run known before.
        if (q != m_last)
            m_certain = q;
        m_last = p;
    }

    const char* m_begin;
    const char* m_certain; // a character starts here, ...
    const char* m_last;    // ... and up to here every byte after it follows a lead and may trail
};

} // namespace tlvn
