// The text of a settings file: reading it into keys and pairs, writing it from them.
//
//   [DATA-START]          the byte-order mark U+FEFF goes before it
//   [key]
//   name=value
//   ...
//   [DATA-END]
//
// Lines end in CR LF. A backslash, CR and LF in a key, a name or a value are written "\\", "\r"
// and "\n"; "=" and "[" in a name also with a backslash before them. Names are narrow text of
// the multibyte code page, the file is UTF-16.

#pragma once

#include "foundation/buffer.h"
#include "persist/setting_data_key.h"

namespace tlvn {

using SettingPairList = NamedList<CSettingDataPair>;
using SettingKeyList = NamedList<CSettingDataKey>;

// The key names that mark the first and the last line and can be no key's own.
constexpr WStringView kStartMark = TW("DATA-START");
constexpr WStringView kEndMark = TW("DATA-END");

struct SettingTextResult {
    UINT message = 0;        // 0 for success, or the number of the message
    CString data;            // the offending line, when there is one
    bool duplicates = false; // a key or a name stood in the text more than once
};

// Appends what is in `text` to `keys`. Of several pairs of one name the last wins, keys of one
// name are merged. The text has to outlive the keys. Lines may end in CR or LF alone; empty ones
// count for nothing. After a failure `keys` holds what came before it.
TLVN_API SettingTextResult ReadSettingText(WStringView text, SettingKeyList& keys);

// Sets the pairs of lines "name=value", of which each has a name, in `pairs`; their values stay
// in the text. Returns 1 when a pair was replaced.
int ReadPairLines(WStringView lines, SettingPairList& pairs);
// Replaces the value of a pair and returns 1, or appends a new pair and returns 0. With `borrow`,
// the characters of the value live longer than the pair and are not copied.
int SetPair(SettingPairList& pairs, std::string_view name, WStringView value, bool borrow);

// Replaces `out` with the text of `keys`, UTF-16.
TLVN_API void WriteSettingText(const SettingKeyList& keys, CBuffer& out);

} // namespace tlvn
