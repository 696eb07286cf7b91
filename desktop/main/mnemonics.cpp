#include "desktop/main/mnemonics.h"

namespace glintara::desktop {

QChar Mnemonics::Take(const QString& caption) {
    for (const bool anywhere : {false, true}) {
        for (qsizetype i = 0; i < caption.size(); ++i) {
            const QChar letter = caption[i].toLower();
            const bool begins = i == 0 || !caption[i - 1].isLetterOrNumber();
            if (!letter.isLetterOrNumber() || (!begins && !anywhere) || taken_.contains(letter)) continue;
            taken_.insert(letter);
            return letter;
        }
    }
    return {};
}

QString WithMnemonic(const QString& caption, QChar letter) {
    // The place that `Take` has found: the beginning of a word if there is one.
    qsizetype place = -1;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (letter.isNull() || caption[i].toLower() != letter) continue;
        const bool begins = i == 0 || !caption[i - 1].isLetterOrNumber();
        if (place < 0 || begins) place = i;
        if (begins) break;
    }
    QString text;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (i == place) text += '&';
        text += caption[i];
        if (caption[i] == '&') text += '&';
    }
    return text;
}

}  // namespace glintara::desktop
