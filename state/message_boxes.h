#pragma once

// How a room shows a message to the user and waits for the answer. The window has boxes on the screen; the terminal
// prints; a test answers by itself.

#include <string_view>

namespace glintara {

enum class MessageIcon { Critical, Warning, Information };

/// What becomes of changes that no file holds yet.
enum class ChangesAnswer { Save, Discard, Cancel };

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

    /// Asks `text`: yes is `Save`, no is `Discard`, and `Cancel` leaves all as it is. `dontAskAgain` is set when the user
    /// has ticked the box for it. Who has nobody to ask discards.
    virtual ChangesAnswer AskAboutChanges(std::string_view /*text*/, bool& /*dontAskAgain*/) {
        return ChangesAnswer::Discard;
    }
};

}  // namespace glintara
