#include "desktop/main/form_parts.h"

#include "desktop/main/bindings.h"

namespace glintara::desktop {

QPushButton* MakeButton(Button& control, const char* name) {
    auto* button = new QPushButton;
    if (name != nullptr) button->setObjectName(name);
    Bind(*button, control);
    return button;
}

void KeepRoom(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

}  // namespace glintara::desktop
