// A save killed at random moments: the file always holds the whole old or
// the whole new table, a backup is never cut short under its final name, and
// the next save leaves nothing of the killed ones behind.
#include "atomic_file.h"
#include "native_file.h"
#include "save_target.h"
#include "temp_dir.h"
#include "tool_list_writer.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace qor {
namespace {

namespace fs = std::filesystem;

// A foreign file of many tools, large enough that a save takes a while.
std::string LargeForeignTable()
{
    ToolTable table;
    SizeToolTable(table, 3000);
    table.InitialMagazine = 1;
    for (int slot = 0; slot < 3000; ++slot) {
        ToolSlot &tool = table.Slots[static_cast<std::size_t>(slot)];
        tool.ToolKind = KindCut;
        tool.ToolDia = 1.0f + static_cast<float>(slot % 40);
        tool.ToolLength = 30;
        tool.ArborMode = 1;
        for (int i = 0; i < ArborSectionCount; ++i) {
            tool.Arbor.Dia[static_cast<std::size_t>(i)] = 20.0f + static_cast<float>(i);
            tool.Arbor.Len[static_cast<std::size_t>(i)] = 10;
        }
        tool.ToolComment = "tool " + std::to_string(slot + 1);
    }
    // A title of another program's makes the file foreign to ours.
    return "; written by hand\r\n" + FormatToolList(table, WriteOptions{"Tools", "1"});
}

pid_t StartNormalize(const std::string &folder, const std::string &file)
{
    const pid_t child = ::fork();
    if (child == 0) {
        std::freopen("/dev/null", "w", stdout);
        std::freopen("/dev/null", "w", stderr);
        if (::chdir(folder.c_str()) == 0) {
            ::execl(TTLTOOL_PATH, "ttltool", "normalize", file.c_str(), "--catalogue",
                    (std::string(QOR_RUNTIME_DIR) + "/QORTool.msg").c_str(), "--magazine-max",
                    "3000", static_cast<char *>(nullptr));
        }
        ::_exit(127);
    }
    return child;
}

TEST(InterruptedSave, LeavesTheWholeOldOrNewFileAndNothingBehindAfterTheNextSave)
{
    test::TempDir dir;
    const std::string original = LargeForeignTable();
    dir.write("Atc.TTL", original);
    std::set<std::string> versions{original};
    std::mt19937 random(20261124);
    const auto stop = std::chrono::steady_clock::now() + std::chrono::seconds(3);
    int kills = 0;

    while (std::chrono::steady_clock::now() < stop) {
        const pid_t child = StartNormalize(dir.path(), "Atc.TTL");
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 150000));
        ::kill(child, SIGKILL);
        int wait = 0;
        ::waitpid(child, &wait, 0);
        kills += WIFSIGNALED(wait) ? 1 : 0;

        const std::string now = dir.read("Atc.TTL");
        if (!versions.contains(now)) {
            // A save that finished writes the normalized form, which is then
            // the only other whole content there is.
            ASSERT_EQ(versions.size(), 1u) << "a cut or mixed file after a kill";
            versions.insert(now);
        }
        for (const auto &entry : fs::directory_iterator(NativePath(dir.path()))) {
            const std::string name = Utf8Path(entry.path().filename());
            if (name.find("_org") != std::string::npos) {
                EXPECT_EQ(dir.read(name), original) << name << " is not the whole original";
            }
        }
    }
    const pid_t last = StartNormalize(dir.path(), "Atc.TTL");
    int wait = 0;
    ::waitpid(last, &wait, 0);

    EXPECT_GT(kills, 0);
    ASSERT_TRUE(WIFEXITED(wait) && WEXITSTATUS(wait) == 0);
    for (const auto &entry : fs::directory_iterator(NativePath(dir.path()))) {
        EXPECT_FALSE(IsTemporaryName(Utf8Path(entry.path().filename())))
            << Utf8Path(entry.path().filename()) << " was left behind";
    }
}

} // namespace
} // namespace qor
