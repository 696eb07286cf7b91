#include "core/tips.h"

#include <string_view>

namespace glintara {

namespace {

constexpr std::string_view kTips =
    "- Click on the Info Frame to switch the control panels\r\n"
    "- Mouse Move with Left Button Down: rotate View\r\n"
    "- Mouse Move with Left+Right Buttons Down: change Zoom\r\n"
    "- Mouse Move with Right Button Down: Rotate around graphical Z\r\n"
    "- Mouse Move with Shift: move globe\r\n"
    "- Mouse Move with Ctrl + Left Button: change sky pointer FOV\r\n"
    "- Mouse Move with Alt + Left Button: change sky pointer time uncertainty\r\n"
    "- Mouse Double Click + Ctrl: define IOD point\r\n"
    "- Mouse Double Click + Alt: enable/disable sky pointer\r\n"
    "- Double Click on the plot window to hide the control panel\r\n"
    "- To Zoom-In the Sky Map the 'Maximize Sky' option must be disabled\r\n"
    "- Keep the mouse steady on the object to see the tooltip\r\n"
    "- Some key short-cut:\r\n"
    "  s m h d e y + [shift]: quickly change the time\r\n"
    "  q: toggle earth/sky\r\n"
    "  w: toggle sky chart/3D-sky\r\n"
    "  1-9: enter user view\r\n"
    "  1-9 + shift: save user view\r\n"
    "  g: toggle sun light\r\n"
    "  a: toggle Visibility Circle\r\n"
    "  p: toggle Satellite Track on the sky\r\n"
    "  space bar: toggle full screen";

}  // namespace

void ShowTips(Application& app) { app.Boxes.Tell(kTips, MessageIcon::Information); }

}  // namespace glintara
