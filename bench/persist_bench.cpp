// Ciphers and digests beside OpenSSL's, settings files beside GLib's GKeyFile.

#include "TlvnMisc.h"
#include "bench/bench_table.h"

// OpenSSL calls its one-shot MD5 and its Blowfish deprecated; they are its own code all the same.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/blowfish.h>
#include <openssl/md5.h>

#include <glib.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kMegabyte = 1 << 20;

void Digests(BenchTable& table)
{
    for (const std::size_t size : {std::size_t{64}, std::size_t{4096}, 16 * kMegabyte}) {
        std::vector<unsigned char> data(size, 'x');
        const std::size_t rounds = 16 * kMegabyte / size;
        unsigned char digest[16];
        table.Compare(
            "MD5, messages of " + std::to_string(size) + " bytes", 16.0 * kMegabyte, "OpenSSL",
            [&] {
                for (std::size_t i = 0; i < rounds; ++i)
                    MD5Void(data.data(), static_cast<unsigned>(size), digest);
                Use(digest);
            },
            [&] {
                for (std::size_t i = 0; i < rounds; ++i)
                    MD5(data.data(), size, digest);
                Use(digest);
            });
    }
}

void Ciphers(BenchTable& table)
{
    unsigned char key[16] = "fifteen letters";
    std::vector<unsigned char> data(8 * kMegabyte, 'x');
    std::vector<unsigned char> out(data.size());
    const double bytes = static_cast<double>(data.size());
    CBlowFish cipher;
    cipher.Initialize(key, 16);
    BF_KEY schedule;
    BF_set_key(&schedule, 16, key);
    const auto peer = [&](int direction) {
        for (std::size_t i = 0; i < data.size(); i += 8)
            BF_ecb_encrypt(&data[i], &out[i], &schedule, direction);
        Use(out.data());
    };
    table.Compare(
        "Blowfish, enciphering 8 MB", bytes, "OpenSSL",
        [&] {
            cipher.Encode(data.data(), out.data(), static_cast<DWORD>(data.size()));
            Use(out.data());
        },
        [&] { peer(BF_ENCRYPT); }, 7);
    table.Compare(
        "Blowfish, deciphering 8 MB", bytes, "OpenSSL",
        [&] {
            cipher.Decode(data.data(), out.data(), static_cast<DWORD>(data.size()));
            Use(out.data());
        },
        [&] { peer(BF_DECRYPT); }, 7);
    table.Compare(
        "Blowfish, 200 keys", 200.0 * sizeof schedule, "OpenSSL",
        [&] {
            for (int i = 0; i < 200; ++i)
                cipher.Initialize(key, 16);
            Use(&cipher);
        },
        [&] {
            for (int i = 0; i < 200; ++i)
                BF_set_key(&schedule, 16, key);
            Use(&schedule);
        },
        5);
}

class Settings : public CSettingData {
public:
    using CSettingData::SaveFile;
};

// The same content for both: keys "Account0" ..., names "Setting0" ..., values of some words.
void Fill(CSettingData& ours, GKeyFile* peer, int keys, int pairs)
{
    for (int i = 0; i < keys; ++i) {
        const std::string key = "Account" + std::to_string(i);
        for (int k = 0; k < pairs; ++k) {
            const std::string name = "Setting" + std::to_string(k);
            const std::string value = "value " + std::to_string(i * 31 + k) + " of the client";
            ours.SetValue(key.c_str(), name.c_str(), value.c_str());
            g_key_file_set_value(peer, key.c_str(), name.c_str(), value.c_str());
        }
    }
}

void Files(BenchTable& table)
{
    constexpr int kKeys = 1000;
    constexpr int kPairs = 100;
    const std::string ours = tlvn::GetTempFolder() + "tlvn_bench_settings";
    const std::string peers = ours + ".peer";
    Settings data;
    GKeyFile* const peer = g_key_file_new();
    Fill(data, peer, kKeys, kPairs);
    data.SaveFile(ours.c_str());
    g_key_file_save_to_file(peer, peers.c_str(), nullptr);
    const double bytes = static_cast<double>(CFile(ours.c_str(), CFile::modeRead).GetLength());

    table.Compare(
        "settings, load 100,000 pairs in 1,000 keys", bytes, "GKeyFile",
        [&] {
            Settings loaded;
            loaded.LoadFile(ours.c_str());
            Use(&loaded);
        },
        [&] {
            GKeyFile* const loaded = g_key_file_new();
            g_key_file_load_from_file(loaded, peers.c_str(), G_KEY_FILE_NONE, nullptr);
            Use(loaded);
            g_key_file_free(loaded);
        });
    table.Compare(
        "settings, save them (ours flushed to the disk, twice the bytes)", bytes, "GKeyFile",
        [&] { data.SaveFile(ours.c_str()); },
        [&] { g_key_file_save_to_file(peer, peers.c_str(), nullptr); });
    g_key_file_free(peer);
    std::remove(ours.c_str());
    std::remove(peers.c_str());
}

// One key with more and more names: the time of one look-up must not grow.
void Lookups(BenchTable& table)
{
    for (const int names : {100, 10000}) {
        Settings data;
        GKeyFile* const peer = g_key_file_new();
        Fill(data, peer, 1, names);
        std::vector<std::string> wanted;
        for (int i = 0; i < 100000; ++i)
            wanted.push_back("Setting" + std::to_string(i * 7919LL % names));
        table.Compare(
            "settings, GetValue 100,000 times among " + std::to_string(names), 100000.0, "GKeyFile",
            [&] {
                CStringW value;
                for (const std::string& name : wanted)
                    data.GetValue("Account0", name.c_str(), value);
                Use(&value);
            },
            [&] {
                for (const std::string& name : wanted)
                    g_free(g_key_file_get_value(peer, "Account0", name.c_str(), nullptr));
            });
        g_key_file_free(peer);
    }
}

} // namespace

int main()
{
    BenchTable table;
    Digests(table);
    Ciphers(table);
    Files(table);
    Lookups(table);
    table.Print();
    return 0;
}
