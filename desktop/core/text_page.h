#pragma once

// Pages that stand in the program, to be read.

#include <QTextBrowser>

namespace glintara::desktop {

/// Shows a text in Markdown from the program's own resources, with the room of a printed page. No other program is
/// started, and links that lead out of the resources are not followed.
class TextPage : public QTextBrowser {
  public:
    /// `name` is the object's name, `title` what it is called where it cannot be seen.
    TextPage(const char* name, const QString& title);

    /// Shows the page of that address, `qrc:/...`.
    void ShowMarkdown(const QUrl& address);

    QVariant loadResource(int type, const QUrl& name) override;

  protected:
    void doSetSource(const QUrl& address, QTextDocument::ResourceType type) override;
};

}  // namespace glintara::desktop
