// Links, rights, devices, limits and signals.
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "fixture.h"

namespace orv::platform::testing {
namespace {

using std::filesystem::path;
using ::testing::UnorderedElementsAre;

struct stat InfoOf(const path& file) {
    struct stat info {};
    EXPECT_EQ(stat(file.c_str(), &info), 0) << file;
    return info;
}

/// The files of this process grow no further, as on a full disk.
class Limited {
  public:
    explicit Limited(rlim_t size) {
        FailWritesQuietly();
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    Limited(const Limited&) = delete;
    Limited& operator=(const Limited&) = delete;
    ~Limited() { setrlimit(RLIMIT_FSIZE, &before_); }

  private:
    rlimit before_{};
};

/// Without the rights of the one who may do everything.
class AsAnybody {
  public:
    AsAnybody() {
        if (geteuid() == 0)
            changed_ = setegid(kNobody) == 0 && seteuid(kNobody) == 0;
    }
    AsAnybody(const AsAnybody&) = delete;
    AsAnybody& operator=(const AsAnybody&) = delete;
    ~AsAnybody() {
        if (changed_ && (seteuid(0) != 0 || setegid(0) != 0))
            std::abort();
    }
    static constexpr uid_t kNobody = 65534;

  private:
    bool changed_ = false;
};

TEST_F(FilesTest, LinksAreFollowedToTheirEndAndStay) {
    std::filesystem::create_directories(folder / "there");
    const path file = Make("there/f.txt");
    std::filesystem::create_symlink("there/f.txt", folder / "first");
    std::filesystem::create_symlink(folder / "first", folder / "second");
    std::filesystem::create_symlink("there/made.txt", folder / "dangling");
    WriteWhole((folder / "second").native(), "new");
    WriteWhole((folder / "dangling").native(), "made");
    EXPECT_EQ(Read(file), "new");
    EXPECT_EQ(Read(folder / "there/made.txt"), "made");
    for (const char* link : {"first", "second", "dangling"})
        EXPECT_TRUE(std::filesystem::is_symlink(folder / link)) << link;
    std::filesystem::create_symlink("round", folder / "round");
    EXPECT_EQ(ReasonToWrite(folder / "round"), L"Too many levels of symbolic links");
}

TEST_F(FilesTest, RightsOwnerAndAttributesAreKept) {
    const path file = Make("f.txt");
    for (const mode_t mode : {mode_t{0600}, mode_t{0640}, mode_t{0666}, mode_t{0755}}) {
        chmod(file.c_str(), mode);
        const ino_t before = InfoOf(file).st_ino;
        WriteWhole(file.native(), "new");
        EXPECT_EQ(InfoOf(file).st_mode & 07777, mode);
        EXPECT_NE(InfoOf(file).st_ino, before) << "written beside";
    }
    const mode_t mask = umask(027);
    WriteWhole((folder / "made.txt").native(), "new");
    umask(mask);
    EXPECT_EQ(InfoOf(folder / "made.txt").st_mode & 07777, mode_t{0640});
    if (setxattr(file.c_str(), "user.note", "kept", 4, 0) == 0) {
        WriteWhole(file.native(), "new");
        char note[4] = {};
        EXPECT_EQ(getxattr(file.c_str(), "user.note", note, sizeof note), 4);
        EXPECT_EQ(std::string(note, 4), "kept");
    }
    if (geteuid() != 0)
        return;
    ASSERT_EQ(chown(file.c_str(), 1234, 2345), 0);
    WriteWhole(file.native(), "new");
    EXPECT_EQ(InfoOf(file).st_uid, 1234U);
    EXPECT_EQ(InfoOf(file).st_gid, 2345U);
    // Somebody else who may write it: the owner stays all the same.
    chmod(file.c_str(), 0666);
    chmod(folder.c_str(), 0777);
    {
        const AsAnybody anybody;
        WriteWhole(file.native(), "by anybody");
    }
    EXPECT_EQ(Read(file), "by anybody");
    EXPECT_EQ(InfoOf(file).st_uid, 1234U);
    EXPECT_THAT(Names(), UnorderedElementsAre("f.txt", "made.txt"));
}

TEST_F(FilesTest, WhatMayNotBeWrittenStays) {
    const path file = Make("f.txt");
    chmod(file.c_str(), 0444);
    chmod(folder.c_str(), 0777);
    const AsAnybody anybody;
    EXPECT_EQ(ReasonToWrite(file), L"Permission denied");
    EXPECT_EQ(Read(file), "old");
    EXPECT_THAT(Names(), UnorderedElementsAre("f.txt"));
}

TEST_F(FilesTest, DevicesAndPipesGetTheBytesAndStayWhatTheyAre) {
    {
        // A fault here must not cost the machine its devices.
        const AsAnybody anybody;
        EXPECT_EQ(ReasonToWrite("/dev/null"), L"");
        EXPECT_EQ(ReasonToWrite("/dev/full"), L"No space left on device");
    }
    const path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string got;
    std::thread reader([&] { got = Read(pipe); });
    WriteWhole(pipe.native(), std::string(300000, 'p'));
    reader.join();
    EXPECT_EQ(got, std::string(300000, 'p'));
    EXPECT_TRUE(S_ISFIFO(InfoOf(pipe).st_mode));
    // A file that is open already, as standard output into a file is, goes on where it is.
    const path log = Make("log");
    const int open = ::open(log.c_str(), O_WRONLY | O_APPEND);
    WriteWhole("/proc/self/fd/" + std::to_string(open), "new");
    close(open);
    EXPECT_EQ(Read(log), "oldnew");
}

TEST_F(FilesTest, AFullDiskCostsNothingButTheNewBytes) {
    const path file = Make("f.txt");
    const path linked = Make("linked.txt", std::string(5000, 'o'));
    std::filesystem::create_hard_link(linked, folder / "name.txt");
    {
        const Limited limited(20000);
        EXPECT_EQ(ReasonToWrite(file, std::string(100000, 'x')), L"File too large");
        EXPECT_EQ(ReasonToWrite(linked, std::string(100000, 'x')), L"File too large");
        EXPECT_EQ(ReasonToWrite(folder / "made.txt", std::string(100000, 'x')), L"File too large");
    }
    EXPECT_EQ(Read(file), "old");
    EXPECT_EQ(Read(folder / "name.txt"), std::string(5000, 'o'));
    EXPECT_THAT(Names(), UnorderedElementsAre("f.txt", "linked.txt", "name.txt"));
}

TEST_F(FilesTest, AClosedPipeIsAnErrorLikeAnyOther) {
    FailWritesQuietly();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    const int kept = dup(STDOUT_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    const std::wstring reason = ReasonOf([] { SystemFile::StandardOutput().Write("new"); });
    dup2(kept, STDOUT_FILENO);
    close(kept);
    close(ends[1]);
    EXPECT_EQ(reason, L"Broken pipe");
}

TEST_F(FilesTest, WhoeverEndsTheProgramInAWriteFindsTheFileWhole) {
    const path file = Make("f.txt");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const std::string bytes = "signal " + std::to_string(signal);
        EXPECT_EXIT(
            {
                FileWriter writer(file.native());
                writer.Append(bytes);
                raise(signal);
                writer.Commit();
            },
            ::testing::KilledBySignal(signal), "");
        EXPECT_EQ(Read(file), bytes);
        EXPECT_THAT(Names(), UnorderedElementsAre("f.txt"));
    }
}

} // namespace
} // namespace orv::platform::testing
