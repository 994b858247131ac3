// What holds on every system.
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "fixture.h"
#include "platform/temporary_name.h"

#ifdef _WIN32
#include "platform/win32/file_calls.h"
namespace of_system = orv::platform::win32;
#else
#include "platform/posix/descriptor.h"
namespace of_system = orv::platform::posix;
#endif

namespace orv::platform::testing {
namespace {

using std::filesystem::path;
using ::testing::UnorderedElementsAre;

TEST_F(FilesTest, AFileIsTheOldOneUntilItIsTheNewOne) {
    const path file = Make("f.txt");
    {
        FileWriter writer(file.native());
        writer.Append(std::string(200000, 'x'));
        EXPECT_EQ(Read(file), "old");
    }
    EXPECT_EQ(Read(file), "old") << "not committed";
    FileWriter writer(file.native());
    writer.Append(std::string(200000, 'x'));
    writer.Append("y");
    writer.Commit();
    EXPECT_EQ(Read(file), std::string(200000, 'x') + "y");
    WriteWhole(file.native(), "");
    EXPECT_EQ(Read(file), "");
    EXPECT_THAT(Names(), UnorderedElementsAre("f.txt"));
}

TEST_F(FilesTest, AnyNameThatTheSystemTakes) {
    const path deep = folder / std::string(200, 'd') / std::string(200, 'e');
    std::error_code failed;
    std::filesystem::create_directories(deep, failed);
    const std::vector<path> names = {folder / u8"f\u00fcr \u4e2d.txt", folder / std::string(250, 'n'), folder / "-",
                                     folder / ".orv-.tmp", deep / "long.txt"};
    for (const path& name : names) {
        if (name.parent_path() == deep && failed)
            continue; // the library of the tests stops at 260 characters; the test of the system goes on
        WriteWhole(name.native(), "new");
        WriteWhole(name.native(), "newer");
        EXPECT_EQ(Read(name), "newer") << name;
    }
    EXPECT_EQ(Names().size(), failed ? 4U : 5U);
}

TEST_F(FilesTest, EveryNameOfAFileHoldsTheNewBytes) {
    const path file = Make("f.txt", "a longer one");
    std::filesystem::create_hard_link(file, folder / "other.txt");
    WriteWhole(file.native(), "new");
    EXPECT_EQ(Read(file), "new");
    EXPECT_EQ(Read(folder / "other.txt"), "new");
    std::ofstream(folder / "other.txt", std::ios::app) << "er";
    EXPECT_EQ(Read(file), "newer") << "still one file";
    EXPECT_THAT(Names(), UnorderedElementsAre("f.txt", "other.txt"));
}

TEST_F(FilesTest, WhatIsNoFileIsRefusedWithTheReason) {
    std::filesystem::create_directories(folder / "taken");
    EXPECT_NE(ReasonToWrite(folder / "taken"), L"");
    EXPECT_NE(ReasonToWrite(folder / "missing" / "f.txt"), L"");
    EXPECT_NE(ReasonToWrite(path()), L"");
    EXPECT_THAT(Names(), UnorderedElementsAre("taken"));
}

TEST_F(FilesTest, OnlyWhatADeadWriterOfThisMachineLeftIsRemoved) {
    const std::string machine = of_system::MachineName();
    const std::string dead = TemporaryName(1, machine);
    const std::string foreign = TemporaryName(2, machine + "x");
    const std::string taken = TemporaryName(3, machine);
    const std::string named = TemporaryName(4, machine);
    std::string misspelt = TemporaryName(5, machine);
    misspelt[5] = 'g';
    for (const std::string& name : {foreign, misspelt, std::string("f.txt.new"), std::string(".orv-note.tmp")})
        Make(name);
    std::filesystem::create_directories(folder / taken);
    Make("linked");
    std::filesystem::create_hard_link(folder / "linked", folder / named);
    FileWriter living((folder / "other.txt").native());
    living.Append("other");
    Make(dead);
    ASSERT_EQ(Names().size(), 9U);

    WriteWhole((folder / "f.txt").native(), "new");
    std::set<path> names = Names();
    EXPECT_EQ(names.erase(dead), 0U);
    for (const std::string& name : {foreign, misspelt, taken, named, std::string("f.txt.new"),
                                    std::string(".orv-note.tmp"), std::string("linked"), std::string("f.txt")})
        EXPECT_EQ(names.erase(name), 1U) << name;
    EXPECT_EQ(names.size(), 1U) << "the living writer's";
    living.Commit();
    EXPECT_EQ(Read(folder / "other.txt"), "other");
    EXPECT_EQ(Names().size(), 9U);
}

/// Opened as a program does that reads: nobody may take the file away under it where that is the system's rule.
void ReadAgainAndAgain(const path& file, const std::atomic<bool>& done, int& reads, int& torn) {
    while (!done) {
        std::string text;
        {
            std::ifstream in(file, std::ios::binary);
            if (!in)
                continue; // being replaced just now, where a system has such a moment
            text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        }
        ++reads;
        torn += text.size() != 100000 || text != std::string(text.size(), text[0]) ? 1 : 0;
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // where readers go first, writers need a turn
    }
}

TEST_F(FilesTest, WritersAtOnceLeaveAWholeFileAtAnyMoment) {
    const path file = Make("f.txt", std::string(100000, 'o'));
    std::atomic<bool> done = false;
    int reads = 0;
    int torn = 0;
    std::thread reader([&] { ReadAgainAndAgain(file, done, reads, torn); });
    std::vector<std::wstring> reasons(3);
    std::vector<std::thread> writers;
    for (std::size_t i = 0; i < reasons.size(); ++i)
        writers.emplace_back([&, i] {
            for (int round = 0; round < 20 && reasons[i].empty(); ++round)
                reasons[i] = ReasonToWrite(file, std::string(100000, static_cast<char>('a' + i)));
        });
    for (std::thread& writer : writers)
        writer.join();
    done = true;
    reader.join();
    EXPECT_THAT(reasons, ::testing::Each(L""));
    EXPECT_GT(reads, 0);
    EXPECT_EQ(torn, 0) << "of " << reads;
    EXPECT_THAT(Names(), UnorderedElementsAre("f.txt"));
}

} // namespace
} // namespace orv::platform::testing
