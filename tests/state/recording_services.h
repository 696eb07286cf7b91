#pragma once

// Stand-ins for the window, which write down what they are told and answer as the test says.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "state/events.h"
#include "state/message_boxes.h"
#include "state/window_signals.h"

namespace glintara::testing {

class RecordingBoxes : public MessageBoxes {
  public:
    struct Message {
        std::string text;
        MessageIcon icon;
    };

    void Tell(std::string_view text, MessageIcon icon) override { messages.push_back({std::string(text), icon}); }

    bool AskYesNo(std::string_view text) override {
        questions.emplace_back(text);
        return answer;
    }

    ChangesAnswer AskAboutChanges(std::string_view text, bool& dontAskAgain) override {
        questions.emplace_back(text);
        dontAskAgain = neverAgain;
        return aboutChanges;
    }

    std::vector<Message> messages;
    std::vector<std::string> questions;
    ChangesAnswer aboutChanges = ChangesAnswer::Discard;
    bool neverAgain = false;  ///< the box for it is ticked
    bool answer = true;
};

class RecordingWindows : public WindowSignals {
  public:
    void UpDateAll() override { calls.emplace_back("UpDateAll"); }
    void ShowWorkingSatellite() override { calls.emplace_back("ShowWorkingSatellite"); }
    void RefreshInfo() override { calls.emplace_back("RefreshInfo"); }
    void ChangeSatelliteSignal() override { calls.emplace_back("ChangeSatelliteSignal"); }
    void RefreshData() override { calls.emplace_back("RefreshData"); }
    void RefreshSatPosition() override { calls.emplace_back("RefreshSatPosition"); }
    void ShowFullScreen(bool fullScreen) override { calls.emplace_back(fullScreen ? "FullScreen" : "Window"); }
    void UpdateGraphicsLevel2() override { calls.emplace_back("UpdateGraphicsLevel2"); }
    void SyncronizeMenuBar() override { calls.emplace_back("SyncronizeMenuBar"); }
    void SaveStat() override { calls.emplace_back("SaveStat"); }

    std::vector<std::string> calls;
};

}  // namespace glintara::testing
