#include "desktop/main/over_picture.h"

#include <QFontMetrics>
#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/main/bindings.h"
#include "desktop/main/style.h"
#include "scene/object_finder.h"
#include "scene/surface/draw_surface.h"

namespace glintara::desktop {

namespace {

constexpr int kPixels = 12;
constexpr int kMargin = 8;
constexpr const char* kBoxStyle =
    "background-color: rgba(16, 22, 32, 225); border: 1px solid #4a5a70; border-radius: 4px; color: #e6edf5;";

double TextWidth(const QLabel& label) {
    double width = 0;
    for (const QString& line : label.text().split('\n'))
        width = std::max(width, static_cast<double>(label.fontMetrics().horizontalAdvance(line)));
    return width;
}

QRect BoxOf(const QLabel& label, const RunState& run) {
    const QFontMetrics letters = label.fontMetrics();
    const double x = letters.horizontalAdvance('x');
    const BoxArea area = InfoBoxArea(run, {.xWidth = x * kTwipsPerScreenPixel,
                                           .xHeight = letters.height() * kTwipsPerScreenPixel,
                                           .lineHeight = letters.lineSpacing() * kTwipsPerScreenPixel,
                                           .textWidth = TextWidth(label) * kTwipsPerScreenPixel});
    return QRectF(area.left / kTwipsPerScreenPixel, area.top / kTwipsPerScreenPixel,
                  (area.right - area.left) / kTwipsPerScreenPixel, (area.bottom - area.top) / kTwipsPerScreenPixel)
        .toAlignedRect();
}

void PutInfoBox(Application& app, QWidget& picture) {
    auto* box = new QLabel(&picture);
    box->setObjectName("LFInfo");
    box->setAttribute(Qt::WA_TransparentForMouseEvents);
    box->setTextFormat(Qt::PlainText);
    box->setFont(NumberFont(kPixels));
    box->setStyleSheet(kBoxStyle);
    box->setAlignment(Qt::AlignCenter);
    Label& control = app.Main.LFInfo;
    const auto show = [&app, &control, box] {
        box->setText(ToQt(control.Caption));
        if (control.Visible) box->setGeometry(BoxOf(*box, app.Run));
        box->setVisible(control.Visible);
        box->raise();
    };
    control.Watch(show);
    show();
}

void PutSkyPointerFrame(MainControls& main, QWidget& picture) {
    auto* frame = new QFrame(&picture);
    frame->setObjectName("FSkyMouse");
    frame->setAttribute(Qt::WA_TransparentForMouseEvents);
    frame->setStyleSheet(QString("QFrame#FSkyMouse { %1 }").arg(kBoxStyle));
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kMargin / 2);
    for (Label* control : {&main.LSkyMousePlace, &main.LSkyMouseFOV, &main.LSkyMouseTAcc}) {
        auto* label = new QLabel(frame);
        Bind(*label, *control);
        label->setFont(NumberFont(kPixels));
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance("DEC: -000°00'00\"  RA: 00h00'00\""));
        column->addWidget(label);
    }
    const auto show = [&main, frame] {
        frame->adjustSize();
        // Below the title, which has the upper left corner.
        frame->move(kMargin, frame->parentWidget()->fontMetrics().height() * 4);
        frame->setVisible(main.FSkyMouse.Visible);
        frame->raise();
    };
    main.FSkyMouse.Watch(show);
    show();
}

}  // namespace

void PutOverPicture(Application& app, PictureBox& picture) {
    PutSkyPointerFrame(app.Main, picture);
    PutInfoBox(app, picture);
}

}  // namespace glintara::desktop
