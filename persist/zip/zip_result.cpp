#include "persist/zip/zip_result.h"

#include <atomic>

namespace tlvn {

namespace {

constexpr UINT kUnknownMessage = 5001;

constexpr struct {
    ZipResult result;
    UINT message;
} kMessages[] = {
    {kZipOk, 5000},
    {kZipNoDuplicate, 5002},
    {kZipNoFile, 5003},
    {kZipNoMemory, 5004},
    {kZipWriteFailed, 5005},
    {kZipNotFound, 5006},
    {kZipMore, 5007},
    {kZipCorrupt, 5008},
    {kZipReadFailed, 5009},
    {kZipPassword, 5010},
    {kZipArguments, 5011},
    // Not in the order of the codes: 5012 belongs to a later one.
    {kZipNotMemory, 5013},
    {kZipMemorySize, 5014},
    {kZipFailedBefore, 5015},
    {kZipEnded, 5016},
    {kZipMissized, 5017},
    {kZipPartlyUnzipped, 5012},
    {kZipWrongKind, 5018},
    {kZipNotInitialised, 5019},
    {kZipSeek, 5020},
    {kZipNoChange, 5021},
    {kZipData, 5022},
};

// Atomic only so that archives in several threads do not race for a word that they do not need.
std::atomic<DWORD> g_lastResult{kZipOk};

} // namespace

UINT ZipMessageId(DWORD result)
{
    for (const auto& message : kMessages)
        if (message.result == result)
            return message.message;
    return kUnknownMessage;
}

DWORD GetLastZipResult()
{
    return g_lastResult.load(std::memory_order_relaxed);
}

void SetLastZipResult(DWORD result)
{
    g_lastResult.store(result, std::memory_order_relaxed);
}

} // namespace tlvn
