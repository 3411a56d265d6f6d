// A block of bytes of exactly its length, with two zero bytes behind it: what is left of a
// CBuffer when its content is to be kept for long and will not grow.
//
//   CFixBuffer kept;
//   kept.MoveFrom(buffer);     // takes the storage over where it can
//
// A block (length + 2 bytes) of 1024 bytes or more comes from the page allocator, a smaller one
// from the heap. Where memory is lacking CMemoryException* is thrown and nothing has changed.

#pragma once

#include "foundation/buffer.h"

class TLVN_API CFixBuffer {
public:
    CFixBuffer();
    CFixBuffer(const CFixBuffer& other);
    ~CFixBuffer();

    CFixBuffer& operator=(const CFixBuffer& other);

    // Gives the storage back.
    void AllocFree();

    // Takes the content of src, which is left without storage. The block is taken over as it
    // stands, except where its length calls for the other allocator: then it is copied.
    void MoveFrom(CBuffer& src);

    // In bytes.
    int GetLength() const { return m_length; }
    int IsEmpty() const { return m_length == 0; }
    // The content, or an empty text; never null.
    operator const char*() const;

private:
    char* m_data; // released as a block of m_length + 2 bytes
    int m_length;
};
