#pragma once

// What the tests of windows share.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QTest>
#include <QWidget>

namespace glintara::desktop::testing {

/// The widget of that object name in `window`. The test ends here when there is none.
template <class Widget>
Widget& Named(const QWidget& window, const char* name) {
    auto* const widget = window.findChild<Widget*>(name);
    if (widget == nullptr) {
        ADD_FAILURE() << "no " << name;
        std::abort();
    }
    return *widget;
}

inline void Open(QWidget& window) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

/// Every text of the window has the room that it asks for.
inline void ExpectNothingClipped(const QWidget& window) {
    const auto check = [&window](const QWidget& widget, int lines) {
        EXPECT_GE(widget.height(), lines) << widget.objectName().toStdString();
        EXPECT_TRUE(window.rect().contains(QRect(widget.mapTo(&window, QPoint(0, 0)), widget.size())))
            << widget.objectName().toStdString();
    };
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
        check(*button, button->sizeHint().height());
    }
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        EXPECT_GE(label->width(), label->wordWrap() ? 0 : label->sizeHint().width()) << label->text().toStdString();
        check(*label, label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height());
    }
}

}  // namespace glintara::desktop::testing
