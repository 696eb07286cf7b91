#pragma once

// A value that tells when it changes: the material that controls are made of.

#include <functional>
#include <utility>

namespace glintara {

/// A value with two listeners. Setting it to what it already is does nothing; setting it to another calls the watcher
/// (the window that mirrors it), then the handler (what the program does about it), once each, whoever set it. A
/// handler may set the value again; listeners must not be exchanged from inside a call of their own.
template <class T>
class Observed {
  public:
    using Listener = std::function<void()>;

    Observed() = default;
    explicit Observed(T value) : value_(std::move(value)) {}

    // A control has an identity that its listeners know, so it is not copied; only its value is.
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed& other) {
        Set(T(other.value_));
        return *this;
    }
    ~Observed() = default;

    Observed& operator=(T&& value) {
        Set(std::move(value));
        return *this;
    }
    Observed& operator=(const T& value) {
        Set(T(value));
        return *this;
    }

    void Set(T&& value) {
        if (value == value_) return;
        value_ = std::move(value);
        if (watcher_) watcher_();
        if (handler_) handler_();
    }

    const T& Get() const { return value_; }
    operator const T&() const { return value_; }

    /// Installs the one handler; an empty function takes it away.
    void SetHandler(Listener handler) { handler_ = std::move(handler); }

    /// Installs the one watcher; an empty function takes it away.
    void SetWatcher(Listener watcher) { watcher_ = std::move(watcher); }

  private:
    T value_{};
    Listener handler_;
    Listener watcher_;
};

}  // namespace glintara
