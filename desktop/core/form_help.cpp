#include "desktop/core/form_help.h"

#include <QImage>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QUrl>
#include <QVBoxLayout>

namespace glintara::desktop {

namespace {

constexpr auto kManual = "qrc:/manual/manual.md";
constexpr QSize kFirstSize(760, 640);

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

class ManualPage : public QTextBrowser {
  public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override {
        const QVariant loaded = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource) return loaded;
        const QImage image = loaded.canConvert<QImage>() && !loaded.value<QImage>().isNull()
                                 ? loaded.value<QImage>()
                                 : QImage::fromData(loaded.toByteArray());
        if (image.width() <= kMostPictureWidth) return image;
        return image.scaledToWidth(kMostPictureWidth, Qt::SmoothTransformation);
    }
};

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

FormHelp::FormHelp(QWidget* parent) : QDialog(parent) {
    setObjectName("FormHelp");
    setWindowTitle("Help");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* page = new ManualPage(this);
    page->setObjectName("TManual");
    page->setAccessibleName("Manual");
    page->setOpenExternalLinks(false);
    page->setFrameShape(QFrame::NoFrame);
    page->document()->setDocumentMargin(kPageMargin);
    QFont font = page->font();
    font.setPixelSize(kTextPixels);
    page->setFont(font);
    page->setSource(QUrl(kManual), QTextDocument::MarkdownResource);
    SpaceOut(*page->document());
    column->addWidget(page);
    resize(kFirstSize);
}

}  // namespace glintara::desktop
