#include "desktop/core/form_help.h"

#include <QUrl>
#include <QVBoxLayout>

#include "desktop/core/text_page.h"

namespace glintara::desktop {

namespace {

constexpr auto kManual = "qrc:/manual/manual.md";
constexpr QSize kFirstSize(760, 640);

}  // namespace

FormHelp::FormHelp(QWidget* parent) : QDialog(parent) {
    setObjectName("FormHelp");
    setWindowTitle("Help");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* page = new TextPage("TManual", "Manual");
    page->ShowMarkdown(QUrl(kManual));
    column->addWidget(page);
    resize(kFirstSize);
}

}  // namespace glintara::desktop
