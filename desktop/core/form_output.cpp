#include "desktop/core/form_output.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"

namespace glintara::desktop {

namespace {

constexpr int kTextPixels = 12;
constexpr QSize kFirstSize(680, 440);

}  // namespace

FormOutput::FormOutput(Application& app, QWidget* parent) : QDialog(parent), form_(app.Output) {
    setObjectName("FormOutput");
    setWindowTitle("Output");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    auto* text = new QPlainTextEdit;
    text->setObjectName("TOutput");
    text->setFont(NumberFont(kTextPixels));
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setTabChangesFocus(true);
    text->setAccessibleName("Output");
    Bind(*text, form_.TOutput);
    column->addWidget(text, 1);

    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    auto* clear = new QPushButton;
    clear->setObjectName("CClear");
    clear->setAutoDefault(false);
    Bind(*clear, form_.CClear);
    row->addWidget(clear);
    row->addStretch(1);
    auto* close = new QPushButton;
    close->setObjectName("CClose");
    close->setDefault(true);
    Bind(*close, form_.CClose);
    row->addWidget(close);
    column->addLayout(row);
    resize(kFirstSize);
}

FormOutput::~FormOutput() {
    form_.TOutput.Watch({});
    form_.CClear.Watch({});
    form_.CClose.Watch({});
}

void FormOutput::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) form_.Visible = true;
    QDialog::showEvent(event);
}

void FormOutput::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) form_.Visible = false;
    QDialog::hideEvent(event);
}

}  // namespace glintara::desktop
