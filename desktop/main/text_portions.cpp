#include "desktop/main/text_portions.h"

#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTimer>
#include <algorithm>
#include <string_view>
#include <utility>

#include "desktop/main/bindings.h"
#include "orbit/element_sets.h"

namespace glintara::desktop {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// Where the portion at the front of `text` ends: behind a line end, or at the end of the text.
std::size_t PortionEnd(std::string_view text) {
    if (text.size() <= kTextPortion) return text.size();
    const std::size_t end = text.find(kLineEnd, kTextPortion);
    return end == std::string_view::npos ? text.size() : end + kLineEnd.size();
}

/// The text as a box takes it.
QString BoxLines(std::string_view text) {
    std::string lines;
    lines.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        if (!text.substr(i).starts_with(kLineEnd)) lines += text[i];
    return ToQt(lines);
}

}  // namespace

TextPortions::TextPortions(QPlainTextEdit& widget, TextBox& control)
    : QObject(&widget), widget_(widget), control_(control) {
    control.Watch([this] { Show(); });
    // The box need not know who else replaces all of its text; the document tells how much went.
    connect(
        widget.document(), &QTextDocument::contentsChange, this,
        [this](int position, int removed, int /*added*/) {
            allReplaced_ = !busy_ && position == 0 && characters_ > 0 && removed >= characters_;
        });
    connect(&widget, &QPlainTextEdit::textChanged, this, [this] { Tell(); });
    // Later, when the change that moved the bar is through.
    const auto goneDown = [this] { QTimer::singleShot(0, this, [this] { GoneDown(); }); };
    connect(widget.verticalScrollBar(), &QScrollBar::valueChanged, this, goneDown);
    connect(widget.verticalScrollBar(), &QScrollBar::rangeChanged, this, goneDown);
    Show();
}

std::string TextPortions::ShownText() const { return BoxText(FromQt(widget_.toPlainText())); }

void TextPortions::Show() {
    const std::string& text = control_.Text;
    const bool same = text.size() == parts_.shown.size() + parts_.behind.size() && text.starts_with(parts_.shown) &&
                      text.ends_with(parts_.behind);
    if (!same) {
        const std::size_t end = PortionEnd(text);
        parts_ = {text.substr(0, end), text.substr(end)};
        replaced_ = {};
        busy_ = true;
        widget_.setPlainText(BoxLines(parts_.shown));
        busy_ = false;
        CountCharacters();
    }
    widget_.setEnabled(control_.Enabled);
    widget_.setToolTip(ToQt(control_.ToolTip));
}

void TextPortions::Tell() {
    if (busy_) return;
    std::string shown = ShownText();
    const bool all = std::exchange(allReplaced_, false);
    CountCharacters();
    if (shown == parts_.shown) return;
    if (all && !parts_.behind.empty()) {
        replaced_ = std::exchange(parts_, {});
    } else if (parts_.behind.empty() && !replaced_.behind.empty() && shown == replaced_.shown) {
        parts_.behind = std::move(replaced_.behind);
        replaced_ = {};
    }
    parts_.shown = std::move(shown);
    control_.Text = parts_.shown + parts_.behind;
}

// The document counts a separator behind the last line.
void TextPortions::CountCharacters() { characters_ = widget_.document()->characterCount() - 1; }

void TextPortions::GoneDown() {
    const QScrollBar& bar = *widget_.verticalScrollBar();
    if (!parts_.behind.empty() && bar.value() >= bar.maximum()) ShowMore();
}

void TextPortions::ShowMore() {
    const std::size_t end = PortionEnd(parts_.behind);
    const std::string portion = parts_.behind.substr(0, end);
    const QTextCursor cursor = widget_.textCursor();
    const int anchor = cursor.anchor();
    const int position = cursor.position();
    const int line = widget_.verticalScrollBar()->value();

    busy_ = true;
    QTextDocument& document = *widget_.document();
    // Not a step of the user's: to undo it would lose text.
    document.setUndoRedoEnabled(false);
    QTextCursor last(&document);
    last.movePosition(QTextCursor::End);
    last.insertText(BoxLines(portion));
    document.setUndoRedoEnabled(true);
    QTextCursor same(&document);
    same.setPosition(anchor);
    same.setPosition(position, QTextCursor::KeepAnchor);
    widget_.setTextCursor(same);
    widget_.verticalScrollBar()->setValue(line);
    busy_ = false;
    CountCharacters();

    parts_.shown += portion;
    parts_.behind.erase(0, end);
    replaced_ = {};
}

bool TextPortions::AllSelected() const {
    const QTextCursor cursor = widget_.textCursor();
    return cursor.selectionStart() == 0 && cursor.selectionEnd() >= characters_;
}

QString TextPortions::SelectedText() const {
    if (AllSelected()) return BoxLines(parts_.shown + parts_.behind);
    return widget_.textCursor().selection().toPlainText();
}

void TextPortions::Paste(const QString& text) {
    const std::string pasted = BoxText(FromQt(text));
    if (pasted.size() <= kTextPortion) {
        widget_.insertPlainText(BoxLines(pasted));
        return;
    }
    const QTextCursor cursor = widget_.textCursor();
    const QString shown = widget_.toPlainText();
    const bool all = AllSelected();
    std::string whole = FromQt(shown.left(cursor.selectionStart())) + pasted + FromQt(shown.mid(cursor.selectionEnd()));
    whole = BoxText(whole);
    if (!all) whole += parts_.behind;
    control_.Text = std::move(whole);
}

}  // namespace glintara::desktop
