#pragma once

// How Glintara's windows look: one dark palette and one style sheet.

#include <QApplication>
#include <QFont>

namespace glintara::desktop {

/// Dresses the whole application. To be called once, before the first window.
void ApplyStyle(QApplication& application);

/// The face of numbers that change: fixed pitch.
QFont NumberFont(int pixels);

/// The face of the program's title.
QFont TitleFont(int pixels);

}  // namespace glintara::desktop
