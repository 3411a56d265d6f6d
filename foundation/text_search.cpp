#include "foundation/text_search.h"

#include "foundation/phrase_search.h"
#include "foundation/text_length.h"

#include <cstring>

namespace {

using tlvn::PhraseSearch;

// A text and a phrase as bytes, of which unitSize make a unit; lengths in bytes.
struct Task {
    int unitSize;
    const char* text;
    INT64 textSize;
    const char* find;
    INT64 findSize;
    bool noCase;
};

// Bytes of the terminated text of units at p.
INT64 TerminatedSize(const char* p, int unitSize)
{
    if (unitSize == 1)
        return tlvn::TextLength(p);
    INT64 size = 0;
    while (p[size] != 0 || p[size + 1] != 0)
        size += 2;
    return size;
}

// Bytes of the phrase up to and with its first zero.
INT64 ComparedSize(const Task& task)
{
    if (task.unitSize == 1) {
        const void* zero = std::memchr(task.find, 0, static_cast<std::size_t>(task.findSize));
        return zero == nullptr ? task.findSize : static_cast<const char*>(zero) - task.find + 1;
    }
    for (INT64 i = 0; i < task.findSize; i += 2) {
        if (task.find[i] == 0 && task.find[i + 1] == 0)
            return i + 2;
    }
    return task.findSize;
}

const char* Find(Task task, bool last)
{
    if (task.text == nullptr || task.find == nullptr)
        return nullptr;
    if (task.textSize < 0)
        task.textSize = TerminatedSize(task.text, task.unitSize);
    if (task.findSize < 0)
        task.findSize = TerminatedSize(task.find, task.unitSize);
    if (task.textSize < 1 || task.findSize < 1 || task.findSize > task.textSize)
        return nullptr;

    const INT64 size = ComparedSize(task);
    if (size > INT_MAX)
        AfxThrowMemoryException();
    const PhraseSearch search(task.unitSize == 1 ? PhraseSearch::Character : PhraseSearch::Utf16,
                              task.find, static_cast<int>(size), task.noCase);
    // The last place for the whole phrase bounds that of the compared part.
    const char* const lastStart = task.text + (task.textSize - task.findSize);
    const char* const end = lastStart + size;
    return last ? search.FindLast(task.text, lastStart, end) : search.FindFirst(task.text, end);
}

Task MakeTask(const char* text, int textLen, const char* find, int findLen, int noCase)
{
    return {1, text, textLen, find, findLen, noCase != 0};
}

Task MakeTask(const WCHAR* text, int textLen, const WCHAR* find, int findLen, int noCase)
{
    return {2,
            reinterpret_cast<const char*>(text),
            2 * static_cast<INT64>(textLen),
            reinterpret_cast<const char*>(find),
            2 * static_cast<INT64>(findLen),
            noCase != 0};
}

} // namespace

const char* mbsnnstr(const char* text, int textLen, const char* find, int findLen, int noCase)
{
    const bool runtimeSearch = noCase == 0 && textLen < 0 && findLen < 0;
    if (runtimeSearch && text != nullptr && find != nullptr && *find == '\0')
        return text;
    return Find(MakeTask(text, textLen, find, findLen, noCase), false);
}

const WCHAR* wcsnnstr(const WCHAR* text, int textLen, const WCHAR* find, int findLen, int noCase)
{
    const bool runtimeSearch = noCase == 0 && textLen < 0 && findLen < 0;
    if (runtimeSearch && text != nullptr && find != nullptr && *find == 0)
        return text;
    return reinterpret_cast<const WCHAR*>(
        Find(MakeTask(text, textLen, find, findLen, noCase), false));
}

const char* mbsrnnstr(const char* text, int textLen, const char* find, int findLen, int noCase)
{
    return Find(MakeTask(text, textLen, find, findLen, noCase), true);
}

const WCHAR* wcsrnnstr(const WCHAR* text, int textLen, const WCHAR* find, int findLen, int noCase)
{
    return reinterpret_cast<const WCHAR*>(
        Find(MakeTask(text, textLen, find, findLen, noCase), true));
}

const char* txtnnstr(CodeType ct, const void* text, int textLen, const void* find, int findLen,
                     int noCase)
{
    const char* const bytes = static_cast<const char*>(text);
    const char* const phrase = static_cast<const char*>(find);
    if (!IsCodeTypeUnicode(ct))
        return mbsnnstr(bytes, textLen, phrase, findLen, noCase);
    const bool runtimeSearch = noCase == 0 && textLen < 0 && findLen < 0;
    if (runtimeSearch && text != nullptr && find != nullptr && TerminatedSize(phrase, 2) == 0)
        return bytes;
    // A negative length stays negative and becomes no shorter text by the rounding.
    const auto whole = [](int size) { return size < 0 ? size : size & ~1; };
    return Find({2, bytes, whole(textLen), phrase, whole(findLen), noCase != 0}, false);
}
