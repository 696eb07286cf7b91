#include "core/my_threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>
#include <string>

#include "core/program_fixture.h"

namespace glintara::testing {
namespace {

std::string TextOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void WaitUntil(const std::function<bool()>& condition) {
    while (!condition()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

TEST(MyThreadsTest, ComesUpHeldAndEndsWithoutHavingRun) {
    std::atomic<bool> ran = false;
    {
        MyThreads thread;
        thread.Initialize([&ran](MyThreads&) { ran = true; });
        EXPECT_FALSE(thread.Enabled());
    }
    EXPECT_FALSE(ran);
}

TEST(MyThreadsTest, RunsWhileItIsEnabled) {
    std::atomic<int> turns = 0;
    MyThreads thread;
    thread.Initialize([&](MyThreads& own) {
        while (own.MayRun()) {
            ++turns;
            std::this_thread::yield();
        }
    });
    thread.SetEnabled(true);
    EXPECT_TRUE(thread.Enabled());
    WaitUntil([&] { return turns > 100; });
    thread.SetEnabled(false);
    EXPECT_FALSE(thread.Enabled());
    // It may have been let go on already; then it counts once more.
    const int held = turns;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_LE(turns, held + 1);
    thread.SetEnabled(true);
    WaitUntil([&] { return turns > held + 100; });
}

TEST(MyThreadsTest, IsMadeOnce) {
    std::atomic<int> entries = 0;
    {
        MyThreads thread;
        thread.Initialize([&](MyThreads&) { entries += 1; });
        thread.Initialize([&](MyThreads&) { entries += 100; });
        thread.SetEnabled(true);
        WaitUntil([&] { return entries > 0; });
    }
    EXPECT_EQ(entries, 1);
}

TEST(MyThreadsTest, PriorityIsKeptWithinItsRange) {
    MyThreads thread;
    EXPECT_EQ(thread.Priority(), 0);
    for (int priority = -2; priority <= 2; ++priority) {
        thread.SetPriority(priority);
        EXPECT_EQ(thread.Priority(), priority);
    }
    thread.SetPriority(15);
    EXPECT_EQ(thread.Priority(), 2);
    thread.SetPriority(-15);
    EXPECT_EQ(thread.Priority(), -2);
}

TEST(MyThreadsTest, TheIdleWorkerWritesItsFileAndSleeps) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.Path() / "th.txt";
    const std::unique_ptr<MyThreads> worker = StartIdleWorker(file);
    WaitUntil([&] { return std::filesystem::exists(file); });
    EXPECT_EQ(TextOf(file), "Thread started\r\n");
}

using WorkerTest = ProgramTest;

TEST_F(WorkerTest, TheProgramStartsNoneAndStopsOneThatThereIs) {
    EXPECT_EQ(program.End.Worker, nullptr);
    program.End.Worker = StartIdleWorker(folder.Path() / "th.txt");
    EXPECT_TRUE(program.End.Form_Unload());
    EXPECT_EQ(program.End.Worker, nullptr);
}

}  // namespace
}  // namespace glintara::testing
