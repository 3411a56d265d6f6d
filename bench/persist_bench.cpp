// Ciphers and digests beside OpenSSL's, settings files beside GLib's GKeyFile and, where it is
// installed, Qt's QSettings.

#include "TlvnMisc.h"
#include "bench/bench_table.h"

// OpenSSL calls its one-shot MD5 and its Blowfish deprecated; they are its own code all the same.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/blowfish.h>
#include <openssl/md5.h>

#include <glib.h>

#ifdef TLVN_BENCH_QT
#include <QSettings>
#endif

#include <cstdio>
#include <filesystem>
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
        15);
}

class Settings : public CSettingData {
public:
    using CSettingData::SaveFile;
};

std::string KeyName(int i)
{
    return "Account" + std::to_string(i);
}

std::string ValueText(int key, int pair)
{
    return "value " + std::to_string(key * 31 + pair) + " of the client";
}

// The same content for both: keys "Account0" ..., names "Setting0" ..., values of some words.
void Fill(CSettingData& ours, GKeyFile* peer, int keys, int pairs)
{
    for (int i = 0; i < keys; ++i) {
        const std::string key = KeyName(i);
        for (int k = 0; k < pairs; ++k) {
            const std::string name = "Setting" + std::to_string(k);
            const std::string value = ValueText(i, k);
            ours.SetValue(key.c_str(), name.c_str(), value.c_str());
            g_key_file_set_value(peer, key.c_str(), name.c_str(), value.c_str());
        }
    }
}

constexpr int kKeys = 1000;
constexpr int kPairs = 100;

// Loading, and loading with a value of every key: ours reads a key when it is first asked for.
void Load(BenchTable& table, const std::string& path, double bytes, const char* peerName,
          const std::function<void(bool ask)>& peer)
{
    for (const bool ask : {false, true}) {
        table.Compare(
            ask ? "settings, the same and ask each key for a value"
                : "settings, load 100,000 pairs in 1,000 keys",
            bytes, peerName,
            [&] {
                Settings loaded;
                loaded.LoadFile(path.c_str());
                CStringW value;
                for (int i = 0; ask && i < kKeys; ++i)
                    loaded.GetValue(KeyName(i).c_str(), "Setting50", value);
                Use(&value);
            },
            [&] { peer(ask); });
    }
}

void LoadKeyFile(const std::string& path, bool ask)
{
    GKeyFile* const loaded = g_key_file_new();
    g_key_file_load_from_file(loaded, path.c_str(), G_KEY_FILE_NONE, nullptr);
    for (int i = 0; ask && i < kKeys; ++i)
        g_free(g_key_file_get_value(loaded, KeyName(i).c_str(), "Setting50", nullptr));
    Use(loaded);
    g_key_file_free(loaded);
}

#ifdef TLVN_BENCH_QT

// Qt keeps the files it has read: each of its runs loads a copy under another name.
void LoadBesideQt(BenchTable& table, const std::string& ours, double bytes)
{
    const std::string path = ours + ".qt";
    std::remove(path.c_str());
    {
        QSettings settings(path.c_str(), QSettings::IniFormat);
        for (int i = 0; i < kKeys; ++i) {
            for (int k = 0; k < kPairs; ++k)
                settings.setValue((KeyName(i) + "/Setting" + std::to_string(k)).c_str(),
                                  ValueText(i, k).c_str());
        }
    }
    std::vector<std::string> copies;
    Load(table, ours, bytes, "QSettings", [&](bool ask) {
        copies.push_back(path + std::to_string(copies.size()));
        std::filesystem::create_hard_link(path, copies.back());
        const QSettings settings(copies.back().c_str(), QSettings::IniFormat);
        for (int i = 0; ask && i < kKeys; ++i)
            settings.value((KeyName(i) + "/Setting50").c_str());
        Use(&settings);
    });
    copies.push_back(path);
    for (const std::string& copy : copies)
        std::remove(copy.c_str());
}

#endif

void Files(BenchTable& table)
{
    const std::string ours = tlvn::GetTempFolder() + "tlvn_bench_settings";
    const std::string peers = ours + ".peer";
    Settings data;
    GKeyFile* const peer = g_key_file_new();
    Fill(data, peer, kKeys, kPairs);
    data.SaveFile(ours.c_str());
    g_key_file_save_to_file(peer, peers.c_str(), nullptr);
    const double bytes = static_cast<double>(CFile(ours.c_str(), CFile::modeRead).GetLength());

    Load(table, ours, bytes, "GKeyFile", [&](bool ask) { LoadKeyFile(peers, ask); });
#ifdef TLVN_BENCH_QT
    LoadBesideQt(table, ours, bytes);
#endif
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
