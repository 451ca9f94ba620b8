// Saving and reading under the faults of real file systems: links, owners and
// modes, read-only files and folders, leftovers of interrupted saves, and
// things that are not files at all.
#include "atomic_file.h"
#include "common.h"
#include "native_file.h"
#include "save_target.h"
#include "temp_dir.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <set>

#ifndef _WIN32
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace qor {
namespace {

namespace fs = std::filesystem;

std::set<std::string> FilesIn(const std::string &folder)
{
    std::set<std::string> names;
    for (const auto &entry : fs::directory_iterator(NativePath(folder))) {
        names.insert(Utf8Path(entry.path().filename()));
    }
    return names;
}

std::string KeyOf(const Status &status)
{
    return status.ok() ? std::string("saved") : status.error().key;
}

TEST(SaveTarget, ASymbolicLinkStaysALinkAndItsTargetGetsTheNewContent)
{
    test::TempDir dir;
    fs::create_directory(NativePath(dir.file("real")));
    dir.write("real/Atc.ttl", "old");
    std::error_code ec;
    fs::create_symlink(fs::path("real") / "Atc.ttl", NativePath(dir.file("link.ttl")), ec);
    if (ec) {
        GTEST_SKIP() << "no symbolic links here: " << ec.message();
    }

    ASSERT_TRUE(WriteFileAtomically(dir.file("link.ttl"), "new").ok());

    EXPECT_TRUE(fs::is_symlink(NativePath(dir.file("link.ttl"))));
    EXPECT_EQ(dir.read("real/Atc.ttl"), "new");
    EXPECT_EQ(FilesIn(dir.file("real")), std::set<std::string>{"Atc.ttl"});
}

TEST(SaveTarget, RefusesWhatAReplacementWouldBreakAndLeavesItAsItWas)
{
    struct Case
    {
        const char *name;
        std::function<void(const test::TempDir &)> arrange;
        const char *key;
    };
    const std::vector<Case> cases = {
        {"read-only file",
         [](const test::TempDir &dir) {
             fs::permissions(NativePath(dir.file("Atc.ttl")), fs::perms::owner_read |
                                                                  fs::perms::group_read |
                                                                  fs::perms::others_read);
         },
         KeyReadOnly},
        {"hard-linked file",
         [](const test::TempDir &dir) {
             fs::create_hard_link(NativePath(dir.file("Atc.ttl")),
                                  NativePath(dir.file("other name.ttl")));
         },
         KeyHardLinks},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        test::TempDir dir;
        dir.write("Atc.ttl", "old");
        c.arrange(dir);
        const auto before = FilesIn(dir.path());

        Status saved = WriteFileAtomically(dir.file("Atc.ttl"), "new");

        EXPECT_EQ(KeyOf(saved), c.key);
        if (!saved.ok()) {
            EXPECT_NE(saved.error().message.find(dir.file("Atc.ttl")), std::string::npos);
        }
        EXPECT_EQ(dir.read("Atc.ttl"), "old");
        EXPECT_EQ(FilesIn(dir.path()), before);
    }
}

TEST(SaveTarget, AnInterruptedSavesLeftoversGoWithTheNextSaveButNothingElse)
{
    test::TempDir dir;
    const std::string leftover = ".Atc.ttl.4242.7" + std::string(TemporarySuffix);
    dir.write(leftover, "half a table");
    dir.write(".hidden.txt", "not ours");
    dir.write("notes" + std::string(TemporarySuffix), "not hidden, so not ours");

    ASSERT_TRUE(WriteFileAtomically(dir.file("Atc.ttl"), "new").ok());

    EXPECT_EQ(FilesIn(dir.path()), (std::set<std::string>{"Atc.ttl", ".hidden.txt",
                                                          "notes" + std::string(TemporarySuffix)}));
}

// The backup is the original itself, date and all; without one nothing is
// replaced.
TEST(SaveTarget, KeepsTheOriginalAsTheBackupOrReplacesNothing)
{
    for (const std::string folder : {"no such folder/", ""}) {
        SCOPED_TRACE(folder);
        test::TempDir dir;
        dir.write("Atc.ttl", "the original");
        fs::last_write_time(NativePath(dir.file("Atc.ttl")),
                            fs::file_time_type::clock::now() - std::chrono::hours(240));
        const auto date = fs::last_write_time(NativePath(dir.file("Atc.ttl")));
        AtomicFileWriter writer;
        ASSERT_TRUE(writer.Open(dir.file("Atc.ttl")).ok());
        writer.Write("new");

        auto kept = writer.CommitKeepingOriginal(
            [&](int n) { return dir.file(folder + "Atc_org" + std::to_string(n) + ".TTL"); });

        if (!folder.empty()) {
            ASSERT_FALSE(kept.ok());
            EXPECT_EQ(kept.error().key, KeyBackupFailed);
            EXPECT_EQ(dir.read("Atc.ttl"), "the original");
            EXPECT_EQ(FilesIn(dir.path()), std::set<std::string>{"Atc.ttl"});
            continue;
        }
        ASSERT_TRUE(kept.ok()) << kept.error().message;
        EXPECT_EQ(kept.value(), dir.file("Atc_org1.TTL"));
        EXPECT_EQ(dir.read("Atc_org1.TTL"), "the original");
        EXPECT_EQ(fs::last_write_time(NativePath(dir.file("Atc_org1.TTL"))), date);
        EXPECT_EQ(dir.read("Atc.ttl"), "new");
    }
}

TEST(Readers, RefuseWhatIsNotAFileAtOnceAndSizesNoSuchFileHas)
{
    test::TempDir dir;
    fs::create_directory(NativePath(dir.file("folder")));
    dir.write("big.msg", std::string(2000, 'x'));
    std::vector<std::pair<std::string, std::string>> cases = {
        {dir.file("folder"), "a folder"},
        {dir.file("big.msg"), "2000 bytes"},
    };
#ifndef _WIN32
    ASSERT_EQ(::mkfifo(dir.file("fifo").c_str(), 0600), 0);
    cases.push_back({dir.file("fifo"), "a pipe"});
    cases.push_back({"/dev/zero", "a device"});
#endif
    for (const auto &[path, expected] : cases) {
        auto read = ReadWholeFile(path, 1000);

        ASSERT_FALSE(read.ok()) << path;
        EXPECT_NE(read.error().message.find(expected), std::string::npos) << read.error().message;
    }
}

TEST(SettingsFile, KeepsWhatAnotherProgramWroteSinceItWasRead)
{
    test::TempDir dir;
    Common settings(dir.file("QorTool.INI"));
    ASSERT_EQ(settings.GetIniString("Config", "Magazine Max", "100"), "100");
    dir.write("QorTool.INI", dir.read("QorTool.INI") + "Edited=by hand\r\n");

    ASSERT_EQ(settings.WriteIniString("Files", "Auto Read", "0"), 1);

    EXPECT_EQ(dir.read("QorTool.INI"),
              "[Config]\r\nMagazine Max=100\r\nEdited=by hand\r\n[Files]\r\nAuto Read=0\r\n");
}

#ifndef _WIN32

// Runs `save` as a user without privileges: in a child that gives up root
// where the tests run as root, else right here. Returns what `save` returned.
std::string AsUnprivilegedUser(const std::function<std::string()> &save)
{
    if (::geteuid() != 0) {
        return save();
    }
    int channel[2];
    if (::pipe(channel) != 0) {
        return "no pipe";
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(channel[0]);
        std::string result = "cannot drop root";
        if (::setgid(65534) == 0 && ::setuid(65534) == 0) {
            result = save();
        }
        [[maybe_unused]] auto written = ::write(channel[1], result.data(), result.size());
        ::_exit(0);
    }
    ::close(channel[1]);
    std::string result;
    char buffer[256];
    for (ssize_t got; (got = ::read(channel[0], buffer, sizeof buffer)) > 0;) {
        result.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(channel[0]);
    ::waitpid(child, nullptr, 0);
    return result;
}

TEST(SettingsFile, APipeInItsPlaceGivesTheDefaultsAtOnceAndStaysAPipe)
{
    test::TempDir dir;
    ASSERT_EQ(::mkfifo(dir.file("QorTool.INI").c_str(), 0600), 0);
    Common settings(dir.file("QorTool.INI"));

    EXPECT_EQ(settings.GetIniString("Config", "Magazine Max", "100"), "100");
    EXPECT_EQ(settings.WriteIniString("Files", "Auto Read", "0"), 0);

    EXPECT_TRUE(fs::is_fifo(dir.file("QorTool.INI")));
}

TEST(SaveTarget, AWritableFileInAFolderWhereNoFileCanBeMadeIsRefusedNamingTheFolder)
{
    test::TempDir dir;
    fs::create_directory(dir.file("locked"));
    dir.write("locked/Atc.ttl", "old");
    fs::permissions(dir.path(), fs::perms::all);
    fs::permissions(dir.file("locked/Atc.ttl"), fs::perms::all);
    fs::permissions(dir.file("locked"), fs::perms::owner_all | fs::perms::group_read |
                                            fs::perms::group_exec | fs::perms::others_read |
                                            fs::perms::others_exec);

    const std::string outcome = AsUnprivilegedUser([&dir] {
        Status saved = WriteFileAtomically(dir.file("locked/Atc.ttl"), "new");
        return saved.ok() ? std::string("saved") : saved.error().key + " " + saved.error().message;
    });

    EXPECT_EQ(outcome.substr(0, outcome.find(' ')), KeyFolderNotWritable) << outcome;
    const std::string folder = std::string(1, '"').append(dir.file("locked")).append(1, '"');
    EXPECT_NE(outcome.find(folder), std::string::npos) << outcome;
    EXPECT_EQ(dir.read("locked/Atc.ttl"), "old");
}

TEST(SaveTarget, KeepsOwnerGroupAndModeOrRefuses)
{
    test::TempDir dir;
    dir.write("Atc.ttl", "old");
    fs::permissions(dir.path(), fs::perms::all);
    const std::string file = dir.file("Atc.ttl");
    ::chmod(file.c_str(), 0646);
    if (::geteuid() == 0) {
        // Root keeps another user's file theirs.
        ASSERT_EQ(::chown(file.c_str(), 4321, 8765), 0);

        ASSERT_TRUE(WriteFileAtomically(file, "new").ok());

        struct stat after;
        ASSERT_EQ(::stat(file.c_str(), &after), 0);
        EXPECT_EQ(after.st_uid, 4321u);
        EXPECT_EQ(after.st_gid, 8765u);
        EXPECT_EQ(after.st_mode & 07777, 0646u);
        ASSERT_EQ(::chown(file.c_str(), 0, 0), 0);
    }

    // A user who may write the file of another cannot make a new one theirs.
    const std::string outcome = AsUnprivilegedUser([&file] {
        Status saved = WriteFileAtomically(file, "newer");
        return saved.ok() ? std::string("saved") : saved.error().key;
    });

    EXPECT_EQ(outcome, KeyOwnerNotKept);
    EXPECT_EQ(ReadWholeFile(file).value(), ::geteuid() == 0 ? "new" : "old");
}

#endif

} // namespace
} // namespace qor
