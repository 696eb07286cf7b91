#pragma once

namespace glintara {

/// How a long loop lets the window breathe. Handlers may run inside the call, so the state may change under the caller.
/// By itself it does nothing: the terminal and tests have no window.
class Events {
  public:
    Events() = default;
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;
    virtual ~Events() = default;

    /// Handles the events that wait, and returns.
    virtual void ServeEvents() {}

    /// Sleeps until there is an event, and handles it. Only for those who know that one will come: a timer that is
    /// armed.
    virtual void WaitForEvents() { ServeEvents(); }
};

}  // namespace glintara
