// Transfer encodings beside GMime and OpenSSL, finding links, reading dates and splitting address
// lists beside GMime; and how every function of mailtext/ grows on what it could stumble over.

#include "bench/bench_table.h"

#include "mailtext/address.h"
#include "mailtext/address_check.h"
#include "mailtext/address_list.h"
#include "mailtext/address_trim.h"
#include "mailtext/base64.h"
#include "mailtext/binhex.h"
#include "mailtext/hex.h"
#include "mailtext/imap_utf7.h"
#include "mailtext/mail_date.h"
#include "mailtext/mail_finder.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/url_finder.h"
#include "mailtext/uuencode.h"
#include "platform/nls.h"

#include <gmime/gmime.h>
#include <openssl/evp.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kMegabyte = 1 << 20;
constexpr int kSize = 8 * kMegabyte;
constexpr int kLine = 76;

using Bytes = std::vector<unsigned char>;

std::string Content(const CBuffer& buffer)
{
    return std::string(buffer, static_cast<std::size_t>(buffer.GetLength()));
}

int Length(const std::string& text)
{
    return static_cast<int>(text.size());
}

const unsigned char* Data(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

// All of a text in one step; returns the length of the result.
std::size_t RunGMime(GMimeContentEncoding encoding, bool encode, const std::string& in, Bytes& out)
{
    GMimeEncoding state;
    if (encode)
        g_mime_encoding_init_encode(&state, encoding);
    else
        g_mime_encoding_init_decode(&state, encoding);
    out.resize(g_mime_encoding_outlen(&state, in.size()));
    return g_mime_encoding_flush(&state, in.data(), in.size(), reinterpret_cast<char*>(out.data()));
}

void Base64(BenchTable& table)
{
    std::mt19937 random(1);
    std::string data;
    while (Length(data) < kSize)
        data += static_cast<char>(random());
    CBuffer encoded, decoded;
    EncodeBase64(Data(data), Length(data), kLine, encoded);
    const std::string text = Content(encoded);
    Bytes out(2 * kSize);

    const auto encode = [&] { EncodeBase64(Data(data), Length(data), kLine, encoded); };
    const auto decode = [&] { DecodeBase64(text.c_str(), decoded); };
    table.Compare("base64, 76 columns, encode", kSize, "GMime", encode,
                  [&] { RunGMime(GMIME_CONTENT_ENCODING_BASE64, true, data, out); });
    table.Compare("base64, 76 columns, encode", kSize, "OpenSSL EVP", encode, [&] {
        EVP_ENCODE_CTX* const state = EVP_ENCODE_CTX_new();
        int length = 0, last = 0;
        EVP_EncodeInit(state);
        EVP_EncodeUpdate(state, out.data(), &length, Data(data), Length(data));
        EVP_EncodeFinal(state, out.data() + length, &last);
        EVP_ENCODE_CTX_free(state);
    });
    const auto size = static_cast<double>(text.size());
    table.Compare("base64, decode", size, "GMime", decode,
                  [&] { RunGMime(GMIME_CONTENT_ENCODING_BASE64, false, text, out); });
    table.Compare("base64, decode", size, "OpenSSL EVP", decode, [&] {
        EVP_ENCODE_CTX* const state = EVP_ENCODE_CTX_new();
        int length = 0, last = 0;
        EVP_DecodeInit(state);
        EVP_DecodeUpdate(state, out.data(), &length, Data(text), Length(text));
        EVP_DecodeFinal(state, out.data() + length, &last);
        EVP_ENCODE_CTX_free(state);
    });
}

// Sentences of Japanese in Shift_JIS or UTF-8, in lines of some 70 bytes, and as much English as
// asked for, in which every 100th word is a "="; with a link in every so many lines.
std::string Text(UINT page, unsigned japanesePercent, unsigned linesForALink)
{
    std::mt19937 random(2);
    const char* const words[] = {"the ", "message ", "of ", "today, ", "is ", "about ", "mail. "};
    const char* const links[] = {"http://www.example.co.jp/docs/index.html?page=12",
                                 "ken.sato@example.jp", "https://example.com/",
                                 "<mailto:info@example.com?subject=x>", "ftp://ftp.example.org/a"};
    std::string text;
    tlvn::WString line;
    std::string bytes;
    while (Length(text) < kSize) {
        line.clear();
        while (line.size() < 36) {
            if (random() % 100 < japanesePercent) {
                for (auto n = 1 + random() % 6; n > 0; --n)
                    line += static_cast<WCHAR>(random() % 3 != 0 ? 0x3041 + random() % 83
                                                                 : 0x4E00 + random() % 0x200);
                if (random() % 8 == 0)
                    line += WCHAR{0x3000};
            } else {
                const char* const word =
                    random() % 100 == 0 ? "= " : words[random() % std::size(words)];
                line.append(word, word + std::strlen(word));
            }
        }
        tlvn::ConvertFromUtf16(page, line, bytes);
        text += bytes;
        if (random() % linesForALink == 0)
            text += std::string(" ") + links[random() % std::size(links)];
        text += "\r\n";
    }
    text.resize(kSize);
    return text;
}

void QuotedPrintable(BenchTable& table)
{
    const struct {
        const char* name;
        unsigned japanesePercent;
    } kinds[] = {{"English", 0}, {"Japanese UTF-8", 95}};
    for (const auto& kind : kinds) {
        const std::string data = Text(65001, kind.japanesePercent, 100);
        CBuffer encoded, decoded;
        EncodeQuotedPrintable(Data(data), Length(data), 1, encoded);
        const std::string text = Content(encoded);
        Bytes out;
        table.Compare(
            std::string("quoted-printable, encode ") + kind.name, kSize, "GMime",
            [&] { EncodeQuotedPrintable(Data(data), Length(data), 1, encoded); },
            [&] { RunGMime(GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE, true, data, out); });
        table.Compare(
            std::string("quoted-printable, decode ") + kind.name, static_cast<double>(text.size()),
            "GMime", [&] { DecodeQuotedPrintable(text.c_str(), decoded); },
            [&] { RunGMime(GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE, false, text, out); });
    }
}

// Every link of a text; calls find for the next.
template <class Find>
int CountLinks(int size, Find find)
{
    int count = 0;
    for (int pos = 0; pos < size;) {
        int length = 0;
        const int found = find(pos, length);
        if (found < 0)
            break;
        ++count;
        pos += found + length;
    }
    return count;
}

int CountLinksA(const std::string& text)
{
    const char* const p = text.data();
    const int size = Length(text);
    return CountLinks(size,
                      [=](int pos, int& length) {
                          return FindUrlA(p + pos, size - pos, CT_SJIS, length);
                      }) +
           CountLinks(
               size, [=](int pos, int& length) { return FindEMailA(p + pos, size - pos, length); });
}

int CountLinksW(const tlvn::WString& text)
{
    const WCHAR* const p = text.data();
    const int size = static_cast<int>(text.size() * 2);
    return CountLinks(
               size,
               [=](int pos, int& length) { return FindUrlW(p + pos / 2, size - pos, length); }) +
           CountLinks(size, [=](int pos, int& length) {
               return FindEMailW(p + pos / 2, size - pos, length);
           });
}

// Beside the plainest pass over the same bytes that can be made: counting the zeros.
void Links(BenchTable& table)
{
    const struct {
        const char* name;
        unsigned linesForALink;
    } kinds[] = {{"few links", 1000}, {"a link in every line", 1}};
    for (const auto& kind : kinds) {
        const std::string text = Text(932, 95, kind.linesForALink);
        tlvn::WString wide;
        tlvn::ConvertToUtf16(932, text, wide);
        volatile int count = 0;
        const auto pass = [&] { Use(std::memchr(text.data(), 0, text.size())); };
        table.Compare(
            std::string("all links, Shift_JIS, ") + kind.name, kSize, "memchr",
            [&] { count = CountLinksA(text); }, pass);
        table.Compare(
            std::string("all links, UTF-16, ") + kind.name, static_cast<double>(wide.size() * 2),
            "memchr", [&] { count = CountLinksW(wide); }, pass);
    }
    std::string dense;
    while (Length(dense) < kSize)
        dense += "http://a.example.jp/b ken@example.jp ";
    volatile int count = 0;
    table.Compare(
        "all links, nothing but links", kSize, "memchr", [&] { count = CountLinksA(dense); },
        [&] { Use(std::memchr(dense.data(), 0, dense.size())); });
}

// The bytes are the number of dates times 1000: "1000 MB/s" is a microsecond for each.
void Dates(BenchTable& table)
{
    constexpr int kCount = 10'000;
    std::vector<std::string> dates;
    for (int i = 0; i < kCount; ++i)
        dates.push_back(GetRFC822TimeText(CTime(i * INT64{100'003})).GetString());
    INT64 sum = 0;
    table.Compare(
        "10,000 header dates", kCount * 1000.0, "GMime",
        [&] {
            for (const std::string& date : dates)
                sum += GetRFC822Time(date.c_str());
            Use(&sum);
        },
        [&] {
            for (const std::string& date : dates) {
                GDateTime* const time = g_mime_utils_header_decode_date(date.c_str());
                g_date_time_unref(time);
            }
        });
}

void Addresses(BenchTable& table)
{
    std::string list;
    for (int i = 0; i < 10'000; ++i) {
        const std::string n = std::to_string(i);
        list += (i == 0 ? "" : ", ");
        list += i % 3 == 0   ? "user" + n + "@example.jp"
                : i % 3 == 1 ? "\"Sato, Ken " + n + "\" <ken" + n + "@example.co.jp>"
                             : "Mika Mori <mika.mori" + n + "@mail.example.com>";
    }
    const auto peer = [&] {
        InternetAddressList* const parsed = internet_address_list_parse(nullptr, list.c_str());
        g_object_unref(parsed);
    };
    const auto size = static_cast<double>(list.size());
    table.Compare(
        "10,000 addresses, into items", size, "GMime",
        [&] {
            CStringArray items;
            CString message;
            GetAddrArray2(list.c_str(), items, message);
            Use(items.GetData());
        },
        peer);
    table.Compare(
        "10,000 addresses, into addresses and names", size, "GMime",
        [&] {
            CStringArray addresses, names;
            GetAddrNameArray(list.c_str(), addresses, names);
            Use(addresses.GetData());
        },
        peer);
}

// Every function on `text`.
struct Function {
    const char* name;
    void (*run)(const std::string& text, CBuffer& out);
};
const Function kFunctions[] = {
    {"DecodeBase64", [](const std::string& t, CBuffer& out) { DecodeBase64(t.c_str(), out); }},
    {"EncodeBase64",
     [](const std::string& t, CBuffer& out) { EncodeBase64(Data(t), Length(t), kLine, out); }},
    {"EncodeBase64, 7 columns",
     [](const std::string& t, CBuffer& out) { EncodeBase64(Data(t), Length(t), 7, out); }},
    {"ExtractBase64Text",
     [](const std::string& t, CBuffer& out) { ExtractBase64Text(t.data(), Length(t), out); }},
    {"DecodeImap4Base64",
     [](const std::string& t, CBuffer&) {
         CStringW wide;
         DecodeImap4Base64(t.c_str(), wide);
     }},
    {"DecodeImap4UTF7",
     [](const std::string& t, CBuffer&) {
         CStringW wide;
         DecodeImap4UTF7(t.data(), Length(t), wide);
     }},
    {"EncodeImap4UTF7",
     [](const std::string& t, CBuffer& out) {
         const tlvn::WString wide(t.begin(), t.end());
         EncodeImap4UTF7(wide.data(), Length(t), out);
     }},
    {"DecodeQuotedPrintable",
     [](const std::string& t, CBuffer& out) { DecodeQuotedPrintable(t.c_str(), out); }},
    {"EncodeQuotedPrintable",
     [](const std::string& t, CBuffer& out) { EncodeQuotedPrintable(Data(t), Length(t), 1, out); }},
    {"IsQuotedPrintable",
     [](const std::string& t, CBuffer&) { static_cast<void>(IsQuotedPrintable(t.c_str())); }},
    {"DecodeUuencode",
     [](const std::string& t, CBuffer& out) {
         DecodeUuencode(("begin 644 x\n" + t).c_str(), nullptr, nullptr, &out);
     }},
    {"EncodeUuencode",
     [](const std::string& t, CBuffer& out) {
         EncodeUuencode(nullptr, nullptr, Data(t), Length(t), out);
     }},
    {"DecodeBinHex",
     [](const std::string& t, CBuffer& out) {
         DecodeBinHex(("(This file must be converted with BinHex 4.0):" + t + ':').c_str(), out);
     }},
    {"DecodeBinHex, no title",
     [](const std::string& t, CBuffer& out) { DecodeBinHex(t.c_str(), out); }},
    {"DecodeHex", [](const std::string& t, CBuffer& out) { DecodeHex(t.c_str(), out); }},
    {"EncodeHex", [](const std::string& t, CBuffer& out) { EncodeHex(t.c_str(), 0, out); }},
    {"EncodeUrlEncode",
     [](const std::string& t, CBuffer& out) { EncodeUrlEncode(t.c_str(), out); }},
    {"all links, narrow", [](const std::string& t, CBuffer&) { CountLinksA(t); }},
    {"all links, wide",
     [](const std::string& t, CBuffer&) {
         const tlvn::WString wide(t.begin(), t.end());
         CountLinksW(wide);
     }},
    {"AddMailtoParam",
     [](const std::string& t, CBuffer&) {
         CString url(t.c_str());
         AddMailtoParam("a", t.c_str(), url);
     }},
    {"FindAddrDelimiter",
     [](const std::string& t, CBuffer&) {
         int position;
         CString message;
         FindAddrDelimiter(t.c_str(), 0, '|', position, message);
     }},
    {"GetAddrArray2",
     [](const std::string& t, CBuffer&) {
         CStringArray items;
         CString message;
         GetAddrArray2(t.c_str(), items, message);
     }},
    {"ParseAddrList",
     [](const std::string& t, CBuffer&) {
         CStringArray items;
         ParseAddrList(t.c_str(), items);
     }},
    {"GetAddrNameArray",
     [](const std::string& t, CBuffer&) {
         CStringArray addresses, names;
         GetAddrNameArray(t.c_str(), addresses, names);
     }},
    {"GetAddressRange",
     [](const std::string& t, CBuffer&) {
         int start, end;
         GetAddressRange(t.c_str(), Length(t), start, end);
     }},
    {"IsAddressIncluded",
     [](const std::string& t, CBuffer&) { IsAddressIncluded("x@y.z", 0, t.c_str()); }},
    {"SplitMailAddr",
     [](const std::string& t, CBuffer&) {
         CString address, name, message;
         SplitMailAddr(t.c_str(), address, name, message);
     }},
    {"MakeAddress", [](const std::string& t, CBuffer&) { MakeAddress("a@b", t.c_str(), 1); }},
    {"CustomizeAddress",
     [](const std::string& t, CBuffer&) { CustomizeAddress(t.c_str(), "a@b", nullptr, 1); }},
    {"ExcludeQuote, ExcludeAngleBracket, ExtractLastMessageID",
     [](const std::string& t, CBuffer&) {
         CString text(t.c_str());
         ExcludeQuote(text);
         ExcludeAngleBracket(text);
         ExtractLastMessageID(text);
     }},
    {"the checks",
     [](const std::string& t, CBuffer&) {
         CString message;
         CheckEMailAddress(t.c_str(), message);
         CheckWildEMailAddress(t.c_str(), message);
         CheckEMailName(t.c_str(), message);
         CheckServerName(t.c_str(), 0, message);
         CheckAccountName(t.c_str(), message);
     }},
    {"the dates",
     [](const std::string& t, CBuffer&) {
         CTime time;
         GetRFC822Time(t.c_str());
         GetRFC822Time(("1 Jan 2000 0:" + t).c_str());
         GetAsciiTime(t.c_str());
         GetTimeTextFormat(t.c_str());
         GetStringDate(t.c_str(), time);
     }},
};

// What a careless search stumbles over, repeated.
constexpr const char* kPieces[] = {
    "a",  " ", "=", "(",  "<",      "@",       ",",        "\"",  "\\\"",  "\"(\",",
    "a@", "%", "&", "\\", "\\\\a ", "xhttp: ", "\x81\x40", "=\t", "(\"\\",
};

// Each function at 1, 2, 4 and 8 MB of each of them: one that is worse than linear shows in the
// sum.
void Growths(BenchTable& table)
{
    for (const Function& function : kFunctions) {
        table.Growth(
            function.name, {kMegabyte, 2 * kMegabyte, 4 * kMegabyte, kSize},
            [&](int size) {
                std::vector<std::string> texts;
                for (const char* piece : kPieces) {
                    std::string text;
                    while (Length(text) < size)
                        text += piece;
                    text.resize(static_cast<std::size_t>(size));
                    texts.push_back(std::move(text));
                }
                return [texts = std::move(texts), run = function.run] {
                    CBuffer out;
                    for (const std::string& text : texts)
                        run(text, out);
                };
            },
            1);
    }
}

} // namespace

// With the argument "growth" only the growth is measured, with "speed" only the speed.
int main(int argc, char** argv)
{
    g_mime_init();
    const std::string only = argc > 1 ? argv[1] : "";
    BenchTable table;
    if (only != "growth") {
        Base64(table);
        QuotedPrintable(table);
        Links(table);
        Dates(table);
        Addresses(table);
    }
    if (only != "speed")
        Growths(table);
    table.Print();
    return 0;
}
