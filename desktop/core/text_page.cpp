#include "desktop/core/text_page.h"

#include <QImage>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

namespace glintara::desktop {

namespace {

/// Pictures of whole windows are brought down to the width of the page.
constexpr int kMostPictureWidth = 680;

constexpr int kPageMargin = 16;
constexpr int kTextPixels = 13;

/// Room over a heading, below it, and below a paragraph, pixels; lines of a paragraph, percent of their height.
constexpr int kOverHeading = 18;
constexpr int kBelowHeading = 6;
constexpr int kBelowParagraph = 9;
constexpr int kBelowPoint = 3;
constexpr int kLinePercent = 115;
constexpr int kCellPadding = 4;

/// Gives a text that comes without any spacing the room of a printed page.
void SpaceOut(QTextDocument& document) {
    QTextCursor cursor(&document);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        cursor.setPosition(block.position());
        if (QTextTable* const table = cursor.currentTable()) {
            QTextTableFormat format = table->format();
            format.setCellPadding(kCellPadding);
            format.setBorderCollapse(true);
            format.setBottomMargin(kBelowParagraph);
            if (table->format() != format) table->setFormat(format);
            continue;
        }
        QTextBlockFormat format;
        const bool heading = block.blockFormat().headingLevel() > 0;
        format.setTopMargin(heading ? kOverHeading : 0);
        format.setBottomMargin(heading ? kBelowHeading : block.textList() != nullptr ? kBelowPoint : kBelowParagraph);
        format.setLineHeight(kLinePercent, QTextBlockFormat::ProportionalHeight);
        cursor.mergeBlockFormat(format);
    }
    cursor.setPosition(0);
}

}  // namespace

TextPage::TextPage(const char* name, const QString& title) {
    setObjectName(name);
    setAccessibleName(title);
    setOpenExternalLinks(false);
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(kPageMargin);
    QFont textFont = font();
    textFont.setPixelSize(kTextPixels);
    setFont(textFont);
}

void TextPage::ShowMarkdown(const QUrl& address) {
    setSource(address, QTextDocument::MarkdownResource);
    SpaceOut(*document());
}

QVariant TextPage::loadResource(int type, const QUrl& name) {
    const QVariant loaded = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource) return loaded;
    const QImage image = loaded.canConvert<QImage>() && !loaded.value<QImage>().isNull()
                             ? loaded.value<QImage>()
                             : QImage::fromData(loaded.toByteArray());
    if (image.width() <= kMostPictureWidth) return image;
    return image.scaledToWidth(kMostPictureWidth, Qt::SmoothTransformation);
}

void TextPage::doSetSource(const QUrl& address, QTextDocument::ResourceType type) {
    // Anything else would leave an empty page behind.
    if (address.scheme() == "qrc") QTextBrowser::doSetSource(address, type);
}

}  // namespace glintara::desktop
