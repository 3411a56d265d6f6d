// What holds of any archive, right or not: operations give only the codes that they can give, and
// nothing outside the memory is touched. Used by the tests and the fuzz target.

#pragma once

#include "TlvnMisc.h"
#include "persist/zip/zip_result.h"

#include <algorithm>
#include <memory>
#include <string>

namespace zip_check {

// The archive of `size` bytes in a block of its own, so that a sanitizer sees the least step
// beside it. Empty when all is well, else what went wrong.
inline const char* Violation(const void* data, std::size_t size, const char* password,
                             unsigned chunk)
{
    constexpr int kMaxEntries = 64;
    constexpr int kMaxBytes = 1 << 20;
    const std::unique_ptr<BYTE[]> memory(new BYTE[size]);
    std::copy_n(static_cast<const BYTE*>(data), size, memory.get());
    const std::unique_ptr<BYTE[]> buffer(new BYTE[chunk]);

    CZip zip;
    if (!zip.OpenZip(memory.get(), static_cast<unsigned>(size), password))
        return zip.GetLastErrorID() == tlvn::kZipNoFile ? "" : "code of OpenZip";
    ZIPENTRY entry;
    if (!zip.GetZipItem(-1, &entry) || entry.index < 0)
        return "count";
    const int count = std::min(entry.index, kMaxEntries);
    for (int i = 0; i < count; ++i) {
        const bool listed = zip.GetZipItem(i, &entry) != 0;
        const DWORD code = zip.GetLastErrorID();
        if (!listed && code != tlvn::kZipCorrupt && code != tlvn::kZipReadFailed)
            return "code of GetZipItem";
        if (listed && (entry.index != i || entry.unc_size < 0 || entry.comp_size < 0 ||
                       std::find(entry.name, entry.name + 260, WCHAR{}) == entry.name + 260))
            return "entry";
        int delivered = 0;
        int result = tlvn::kZipMore;
        while (result == tlvn::kZipMore && delivered < kMaxBytes) {
            result = zip.UnzipItem(i, buffer.get(), chunk);
            if (result == tlvn::kZipMore)
                delivered += static_cast<int>(chunk);
        }
        if (result != tlvn::kZipMore && result != tlvn::kZipOk && result != tlvn::kZipPassword &&
            result != tlvn::kZipData)
            return "code of UnzipItem";
        if (!listed && (result != tlvn::kZipData || delivered > 0))
            return "data of an entry without header";
        // Less than a chunk may come after the last kZipMore, more than declared never.
        if (listed && delivered > entry.unc_size)
            return "more data than declared";
    }
    return zip.Close() ? "" : "Close";
}

} // namespace zip_check
