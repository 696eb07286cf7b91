#include "core/shut_down.h"

namespace glintara {

void ShutDown::Connect() {
    app_.Run.LongLoops.SetHandler([this] {
        if (app_.Run.Closing && app_.Run.LongLoops == 0 && hooks_.closeWindow) hooks_.closeWindow();
    });
}

bool ShutDown::Form_Unload() {
    app_.Run.Closing = true;
    if (app_.Run.LongLoops > 0) {
        app_.FindFlare.SearchAbort = true;
        for (const std::function<void()>& abort : aborts_) abort();
        return false;
    }
    if (unloaded_) return true;
    unloaded_ = true;
    for (Timer* timer : app_.Main.Timers()) timer->Stop();
    for (const std::string_view form : kUnloadOrder)
        if (hooks_.unloadForm) hooks_.unloadForm(form);
    Worker.reset();
    return true;
}

}  // namespace glintara
