#pragma once

// Letters by which menus and their entries are chosen from the keyboard.

#include <QSet>
#include <QString>

namespace glintara::desktop {

/// The letters of one menu, or of the menu bar.
class Mnemonics {
  public:
    /// A letter of `caption` that no entry has yet, the beginnings of words before others; null when all are taken.
    QChar Take(const QString& caption);

  private:
    QSet<QChar> taken_;
};

/// `caption` as Qt shows it with that letter underlined; with a null letter, or one that it has not, none is.
QString WithMnemonic(const QString& caption, QChar letter);

}  // namespace glintara::desktop
