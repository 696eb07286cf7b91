#include "desktop/core/form_help.h"

#include <QImage>
#include <QTextBrowser>
#include <QTextDocument>
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
    column->addWidget(page);
    resize(kFirstSize);
}

}  // namespace glintara::desktop
