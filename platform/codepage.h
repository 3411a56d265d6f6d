// The codecs behind ConvertToUtf16 and ConvertFromUtf16 of platform/nls.h: one pair of
// functions for each kind of code page, and the system's for the rest.
//
// Decode functions return the number of units written, encode functions the number of bytes.
// The output has room for the longest result of the input's length. `loss` is set to true
// when something had no counterpart and is else left alone.

#pragma once

#include "platform/nls.h"

#include <cstdint>

namespace tlvn::codepage {

// Most bytes that one unit gives in the pages converted here.
constexpr int kMaxBytes932 = 2;
constexpr int kMaxBytesUtf8 = 3;

// Shift_JIS with the extensions of Windows. A lead byte without a valid trail byte is, with
// that trail byte unless it is zero, one U+30FB.
int Decode932(const char* text, int length, WCHAR* out, bool& loss);
INT64 Encode932(const WCHAR* text, int length, char* out, char replacement, bool& loss);

// Malformed input gives one U+FFFD for each maximal part of a sequence, the practice of the
// Unicode Standard (section 3.9). A lone surrogate encodes as U+FFFD, or as nothing when
// `replacement` is '\0'.
int DecodeUtf8(const char* text, int length, WCHAR* out, bool& loss);
INT64 EncodeUtf8(const WCHAR* text, int length, char* out, char replacement, bool& loss);

struct SingleBytePage {
    UINT codePage;
    const WCHAR* decode;     // of the bytes 80-FF
    const BYTE* encodeBlock; // number of the block of 256 units, by the unit's high byte
    const BYTE* encode;      // the blocks; 0 where there is no code
};

// The page of that number, or null.
const SingleBytePage* FindSingleBytePage(UINT codePage);
int DecodeSingleByte(const SingleBytePage& page, const char* text, int length, WCHAR* out,
                     bool& loss);
INT64 EncodeSingleByte(const SingleBytePage& page, const WCHAR* text, int length, char* out,
                       char replacement, bool& loss);

// The other pages, converted by the operating system or ICU. Both give kUnknownCodePage for a
// page the system does not know. `out` is replaced.
bool IsSystemPageKnown(UINT codePage);
ConversionResult DecodeSystemPage(UINT codePage, const char* text, int length, WString& out);
ConversionResult EncodeSystemPage(UINT codePage, const WCHAR* text, int length, std::string& out,
                                  char replacement);

} // namespace tlvn::codepage
