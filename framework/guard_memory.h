// Turns the standard library's lack of memory into the framework's memory exception.
//
//   tlvn::GuardMemory([&] { m_items.resize(count); });
//
// The library's own, whichever framework it is built with.

#pragma once

#ifdef TLVN_WITH_MFC
#include <afx.h>
#else
#include "framework/exception.h"
#endif

#include <new>
#include <stdexcept>

namespace tlvn {

// Runs `work` and returns its result. Throws CMemoryException* for std::bad_alloc and
// std::length_error.
template <class Work>
decltype(auto) GuardMemory(Work&& work)
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    } catch (const std::length_error&) {
        AfxThrowMemoryException();
    }
}

} // namespace tlvn
