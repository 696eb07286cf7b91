#pragma once

// A worker thread that can be held. The program has no work for one: everything runs in the events of its window.

#include <condition_variable>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace glintara {

/// Name of the file that the idle worker writes, beside the program.
inline constexpr auto kThreadFile = "th.txt";

/// One thread. It comes up held, runs while it is enabled, and ends with the object.
class MyThreads {
  public:
    static constexpr int kLowestPriority = -2;
    static constexpr int kHighestPriority = 2;

    /// What the thread does. It asks `MayRun` of its thread from time to time, and returns when that is false.
    using Entry = std::function<void(MyThreads& thread)>;

    MyThreads() = default;
    MyThreads(const MyThreads&) = delete;
    MyThreads& operator=(const MyThreads&) = delete;

    /// Asks the thread to end, whether it is held or not, and waits for that.
    ~MyThreads();

    /// Makes the thread, held. A second call does nothing.
    void Initialize(Entry entry);

    /// Whether the thread runs: false until it is told to.
    bool Enabled() const;

    /// Lets the thread run, or holds it at its next `MayRun`.
    void SetEnabled(bool enabled);

    /// -2 to 2, 0 at first. It is kept, and changes nothing: an ordinary user's threads share one priority here.
    int Priority() const { return priority_; }

    /// Values beyond the range count as its ends.
    void SetPriority(int priority);

    /// For the thread itself: waits while it is held; false when it is to end.
    bool MayRun();

    /// For the thread itself: waits until it is to end.
    void SleepUntilStopped();

  private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    bool enabled_ = false;
    bool stopped_ = false;
    int priority_ = 0;
    std::thread thread_;
};

/// The idle worker, running: it writes "Thread started" to `file`, and sleeps until it is stopped. Nobody calls for it.
std::unique_ptr<MyThreads> StartIdleWorker(const std::filesystem::path& file);

}  // namespace glintara
