// A save that fails or is killed half way leaves the old content or the new one, whole.
//
// The failing savers are processes of their own, so that limits and users can be set for them.

#include "tests/persist/setting_support.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <grp.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534;

// All values are `generation`, so that a mixture of two files cannot pass for one.
void FillGeneration(Settings& data, int generation, int pairs)
{
    for (int i = 0; i < pairs; ++i)
        data.SetValue("key", ("name" + std::to_string(i)).c_str(), generation);
}

// The generation of the file; -1 when it is not whole.
int StoredGeneration(const std::string& path, int pairs)
{
    Settings data, whole;
    data.LoadFile(path.c_str());
    const int generation = data.GetIntValue("key", "name0", 0, 1 << 30, -1);
    FillGeneration(whole, generation, pairs);
    return data.EqualSD(whole) != 0 ? generation : -1;
}

bool Save(const std::string& path, int generation, int pairs)
{
    Settings data;
    FillGeneration(data, generation, pairs);
    return data.SaveFile(path.c_str()) != 0;
}

// The same by a process of its own, which can write files of `limit` bytes and is nobody: neither
// limits nor permissions bind root.
bool SaveInChild(const std::string& path, int generation, int pairs, rlim_t limit = RLIM_INFINITY)
{
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit size = {limit, limit};
        setrlimit(RLIMIT_FSIZE, &size);
        if (getuid() == 0 &&
            (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(99);
        _exit(Save(path, generation, pairs) ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1);
    return WEXITSTATUS(status) == 1;
}

struct stat StatusOf(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status;
}

} // namespace

TEST(SaveSafety, KilledHalfWay)
{
    constexpr int kPairs = 1000;
    constexpr int kKills = 300;
    const TempFolder folder;
    const std::string path = folder.Path("s");
    ASSERT_TRUE(Save(path, 0, kPairs));
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(Save(path, 0, kPairs));
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
            for (int generation = last + 1; Save(path, generation, kPairs);)
                ++generation;
            _exit(1);
        }
        usleep(static_cast<useconds_t>(random() % longest));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the saver gave up";

        const int generation = StoredGeneration(path, kPairs);
        ASSERT_GE(generation, last) << "round " << round;
        last = generation;
        leftBeside += folder.Exists("s.saving");
    }
    // Otherwise the kills missed the saves and showed nothing.
    EXPECT_GT(last, 10);
    EXPECT_GT(leftBeside, 10);
    EXPECT_TRUE(Save(path, 1 << 20, kPairs));
    EXPECT_FALSE(folder.Exists("s.saving"));
}

// The limit on the size of a file stands for a full disk; it hits at different places of the
// save: at once, in the middle, at the last byte.
TEST(SaveSafety, DiskFull)
{
    constexpr int kPairs = 100;
    const TempFolder folder;
    const std::string path = folder.Path("s");
    chmod(folder.Path().c_str(), 0777);
    ASSERT_TRUE(Save(path, 11, kPairs));
    const auto size = static_cast<rlim_t>(StatusOf(path).st_size);
    for (const rlim_t limit : {rlim_t{0}, rlim_t{1}, size / 2, size - 1}) {
        EXPECT_FALSE(SaveInChild(path, 22, kPairs, limit));
        EXPECT_EQ(StoredGeneration(path, kPairs), 11);
        EXPECT_FALSE(folder.Exists("s.saving"));
    }
}

// A folder that takes no second file: the file is written in place, and keeps its content when
// there is no room for a longer one.
TEST(SaveSafety, ReadOnlyFolder)
{
    constexpr int kPairs = 100;
    const TempFolder folder;
    const std::string path = folder.Path("s");
    ASSERT_TRUE(Save(path, 11, kPairs));
    chmod(path.c_str(), 0666);
    chmod(folder.Path().c_str(), 0555);
    const auto size = static_cast<rlim_t>(StatusOf(path).st_size);
    EXPECT_FALSE(SaveInChild(path, 2222, kPairs, size + 10));
    EXPECT_EQ(StoredGeneration(path, kPairs), 11);
    for (const int generation : {3333, 4}) { // longer, shorter
        EXPECT_TRUE(SaveInChild(path, generation, kPairs));
        EXPECT_EQ(StoredGeneration(path, kPairs), generation);
    }
    EXPECT_FALSE(SaveInChild(folder.Path("new"), 1, 1));
    EXPECT_FALSE(folder.Exists("new"));
    chmod(folder.Path().c_str(), 0777);
}

// What stands in the way under the name beside the file.
TEST(SaveSafety, FolderInTheWay)
{
    const TempFolder folder;
    const std::string path = folder.Path("s");
    ASSERT_EQ(mkdir((path + ".saving").c_str(), 0777), 0);
    EXPECT_FALSE(Save(path, 1, 5)); // nothing to write in place
    rmdir((path + ".saving").c_str());
    EXPECT_TRUE(Save(path, 1, 5));
    ASSERT_EQ(mkdir((path + ".saving").c_str(), 0777), 0);
    EXPECT_TRUE(Save(path, 2, 5));
    EXPECT_EQ(StoredGeneration(path, 5), 2);
    EXPECT_FALSE(Save(path + ".saving", 1, 5));
}

// A file that only its owner may read is not open to others after a save.
TEST(SaveSafety, KeepsPermissions)
{
    const TempFolder folder;
    const std::string path = folder.Path("s");
    for (const mode_t mode : {mode_t{0600}, mode_t{0640}, mode_t{0666}}) {
        ASSERT_TRUE(Save(path, 1, 5));
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_TRUE(Save(path, 2, 5));
        EXPECT_EQ(StatusOf(path).st_mode & 07777, mode);
    }
}
