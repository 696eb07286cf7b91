#include "desktop/main/form_parts.h"

#include <QStyle>
#include <utility>

#include "desktop/main/bindings.h"

namespace glintara::desktop {

QPushButton* MakeButton(Button& control, const char* name) {
    auto* button = new QPushButton;
    if (name != nullptr) button->setObjectName(name);
    Bind(*button, control);
    return button;
}

QLabel* MakeLabel(Label& control, const char* name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    Bind(*label, control);
    return label;
}

QGroupBox* MakeFrame(Label& control, const char* name) {
    auto* frame = new QGroupBox;
    frame->setObjectName(name);
    const auto showCaption = [frame, &control] { frame->setTitle(ToQt(control.Caption)); };
    control.Watch(showCaption);
    showCaption();
    return frame;
}

void MarkUnless(QLineEdit& field, std::function<bool(const std::string&)> isGood) {
    const auto mark = [&field, isGood = std::move(isGood)] {
        const bool bad = !isGood(FromQt(field.text()));
        if (field.property("bad").toBool() == bad) return;
        field.setProperty("bad", bad);
        field.style()->unpolish(&field);
        field.style()->polish(&field);
    };
    QObject::connect(&field, &QLineEdit::textChanged, &field, mark);
    mark();
}

void KeepRoom(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

}  // namespace glintara::desktop
