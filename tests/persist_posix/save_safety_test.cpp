// A save that fails or is killed half way leaves the old content or the new one, whole.
//
// The failing savers are processes of their own, so that limits and users can be set for them.

#include "tests/persist/setting_support.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <grp.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534;

// A folder of its own, removed with what is in it.
class TempFolder {
public:
    TempFolder()
    {
        char name[] = "/tmp/tlvn_folder_XXXXXX";
        m_path = mkdtemp(name);
        chmod(m_path.c_str(), 0777);
    }
    ~TempFolder()
    {
        chmod(m_path.c_str(), 0777);
        for (const char* file : {"/s", "/s.saving"}) {
            rmdir((m_path + file).c_str());
            unlink((m_path + file).c_str());
        }
        rmdir(m_path.c_str());
    }
    std::string File() const { return m_path + "/s"; }
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

// All values are `generation`, so that a mixture of two files cannot pass for one.
void FillGeneration(Settings& data, int generation, int pairs)
{
    for (int i = 0; i < pairs; ++i)
        data.SetValue("key", ("name" + std::to_string(i)).c_str(), generation);
}

// The generation of the file; -1 when it is not whole.
int StoredGeneration(const std::string& path, int pairs)
{
    Settings data;
    if (data.LoadFile(path.c_str()) == 0)
        return -1;
    const int generation = data.GetIntValue("key", "name0", 0, 1 << 30, -1);
    const CSettingData::PairArray* const list = data.GetPairList("key");
    if (list == nullptr || list->GetSize() != pairs)
        return -1;
    for (int i = 0; i < pairs; ++i)
        if (CString((*list)[i]->GetValue()) != std::to_string(generation).c_str())
            return -1;
    return generation;
}

void SaveGeneration(const std::string& path, int generation, int pairs)
{
    Settings data;
    FillGeneration(data, generation, pairs);
    ASSERT_EQ(data.SaveFile(path.c_str()), 1) << data.GetErrorMessage().GetString();
}

// Runs `work` in a child process; its result is the child's exit code.
int InChild(const std::function<int()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 255;
}

// Permissions do not bind root.
void BecomeNobody()
{
    if (getuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
        _exit(99);
}

// The result of a save, as the exit code of a child.
int SaveInChild(const std::string& path, int generation, int pairs)
{
    Settings data;
    FillGeneration(data, generation, pairs);
    return data.SaveFile(path.c_str()) != 0 ? 1 : 0;
}

} // namespace

TEST(SaveSafety, KilledHalfWay)
{
    constexpr int kPairs = 1000;
    constexpr int kKills = 300;
    TempFolder folder;
    const std::string path = folder.File();
    SaveGeneration(path, 0, kPairs);
    const auto start = std::chrono::steady_clock::now();
    SaveGeneration(path, 0, kPairs);
    const auto took = std::chrono::steady_clock::now() - start;
    // The children live for up to three saves.
    const auto longest = static_cast<unsigned>(
        3 * std::chrono::duration_cast<std::chrono::microseconds>(took).count());
    std::mt19937 random(std::random_device{}());
    int last = 0;
    int leftBeside = 0;
    for (int round = 0; round < kKills; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            Settings data;
            for (int generation = last + 1;; ++generation) {
                FillGeneration(data, generation, kPairs);
                if (data.SaveFile(path.c_str()) == 0)
                    _exit(1);
            }
        }
        usleep(static_cast<useconds_t>(random() % longest));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the saver gave up";

        const int generation = StoredGeneration(path, kPairs);
        ASSERT_GE(generation, last) << "round " << round;
        last = generation;
        leftBeside += access((path + ".saving").c_str(), F_OK) == 0;
    }
    // Otherwise the kills missed the saves and showed nothing.
    EXPECT_GT(last, 10);
    EXPECT_GT(leftBeside, 10);
    SaveGeneration(path, 1 << 20, kPairs);
    EXPECT_NE(access((path + ".saving").c_str(), F_OK), 0);
}

// The limit on the size of a file stands for a full disk; it hits at different places of the
// save: at once, in the middle, at the last byte.
TEST(SaveSafety, DiskFull)
{
    constexpr int kPairs = 100;
    TempFolder folder;
    const std::string path = folder.File();
    SaveGeneration(path, 11, kPairs);
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    for (const off_t limit : {off_t{0}, off_t{1}, status.st_size / 2, status.st_size - 1}) {
        EXPECT_EQ(InChild([&] {
                      signal(SIGXFSZ, SIG_IGN);
                      const rlimit size = {static_cast<rlim_t>(limit), static_cast<rlim_t>(limit)};
                      setrlimit(RLIMIT_FSIZE, &size);
                      return SaveInChild(path, 22, kPairs);
                  }),
                  0);
        EXPECT_EQ(StoredGeneration(path, kPairs), 11);
        EXPECT_NE(access((path + ".saving").c_str(), F_OK), 0);
    }
}

// A folder that takes no second file: the file is written in place, and keeps its content when
// there is no room for a longer one.
TEST(SaveSafety, ReadOnlyFolder)
{
    constexpr int kPairs = 100;
    TempFolder folder;
    const std::string path = folder.File();
    SaveGeneration(path, 11, kPairs);
    chmod(path.c_str(), 0666);
    chmod(folder.Path().c_str(), 0555);
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);

    EXPECT_EQ(InChild([&] {
                  BecomeNobody();
                  signal(SIGXFSZ, SIG_IGN);
                  const rlimit size = {static_cast<rlim_t>(status.st_size + 10),
                                       static_cast<rlim_t>(status.st_size + 10)};
                  setrlimit(RLIMIT_FSIZE, &size);
                  return SaveInChild(path, 2222, kPairs);
              }),
              0);
    EXPECT_EQ(StoredGeneration(path, kPairs), 11);
    for (const int generation : {3333, 4}) { // longer, shorter
        EXPECT_EQ(InChild([&] {
                      BecomeNobody();
                      return SaveInChild(path, generation, kPairs);
                  }),
                  1);
        EXPECT_EQ(StoredGeneration(path, kPairs), generation);
    }
    const std::string fresh = folder.Path() + "/new";
    EXPECT_EQ(InChild([&] {
                  BecomeNobody();
                  return SaveInChild(fresh, 1, 1);
              }),
              0);
    EXPECT_NE(access(fresh.c_str(), F_OK), 0);
}

// What stands in the way under the name beside the file.
TEST(SaveSafety, FolderInTheWay)
{
    TempFolder folder;
    const std::string path = folder.File();
    ASSERT_EQ(mkdir((path + ".saving").c_str(), 0777), 0);
    Settings data;
    data.SetValue("a", "x", 1);
    EXPECT_EQ(data.SaveFile(path.c_str()), 0); // nothing to write in place
    rmdir((path + ".saving").c_str());
    SaveGeneration(path, 1, 5);
    ASSERT_EQ(mkdir((path + ".saving").c_str(), 0777), 0);
    SaveGeneration(path, 2, 5);
    EXPECT_EQ(StoredGeneration(path, 5), 2);

    ASSERT_EQ(mkdir((folder.Path() + "/d").c_str(), 0777), 0);
    EXPECT_EQ(data.SaveFile((folder.Path() + "/d").c_str()), 0);
    rmdir((folder.Path() + "/d").c_str());
}

// A file that only its owner may read is not open to others after a save.
TEST(SaveSafety, KeepsPermissions)
{
    TempFolder folder;
    const std::string path = folder.File();
    for (const mode_t mode : {mode_t{0600}, mode_t{0640}, mode_t{0666}}) {
        SaveGeneration(path, 1, 5);
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        SaveGeneration(path, 2, 5);
        struct stat status;
        ASSERT_EQ(stat(path.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, mode);
    }
}
