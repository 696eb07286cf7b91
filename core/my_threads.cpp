#include "core/my_threads.h"

#include <algorithm>
#include <utility>

#include "orbit/files.h"

namespace glintara {

MyThreads::~MyThreads() {
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
}

void MyThreads::Initialize(Entry entry) {
    if (thread_.joinable()) return;
    thread_ = std::thread([this, entry = std::move(entry)] {
        if (MayRun() && entry) entry(*this);
    });
}

bool MyThreads::Enabled() const {
    const std::lock_guard lock(mutex_);
    return enabled_;
}

void MyThreads::SetEnabled(bool enabled) {
    {
        const std::lock_guard lock(mutex_);
        enabled_ = enabled;
    }
    changed_.notify_all();
}

void MyThreads::SetPriority(int priority) { priority_ = std::clamp(priority, kLowestPriority, kHighestPriority); }

bool MyThreads::MayRun() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return enabled_ || stopped_; });
    return !stopped_;
}

void MyThreads::SleepUntilStopped() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return stopped_; });
}

std::unique_ptr<MyThreads> StartIdleWorker(const std::filesystem::path& file) {
    auto worker = std::make_unique<MyThreads>();
    worker->Initialize([file](MyThreads& thread) {
        ReplaceFile(file, "Thread started\r\n");
        thread.SleepUntilStopped();
    });
    worker->SetEnabled(true);
    return worker;
}

}  // namespace glintara
