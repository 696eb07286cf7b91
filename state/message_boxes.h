#pragma once

// How a room shows a message to the user and waits for the answer. The window has boxes on the screen; the terminal
// prints; a test answers by itself.

#include <string_view>

namespace glintara {

enum class MessageIcon { Critical, Warning, Information };

class MessageBoxes {
  public:
    MessageBoxes() = default;
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;
    virtual ~MessageBoxes() = default;

    /// Shows `text` until the user has read it.
    virtual void Tell(std::string_view text, MessageIcon icon) = 0;

    /// Asks `text`, with a question mark beside it; true for yes.
    virtual bool AskYesNo(std::string_view text) = 0;
};

}  // namespace glintara
