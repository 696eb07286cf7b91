#include "desktop/scene/disc_stamps.h"

#include <algorithm>
#include <cmath>

namespace glintara::desktop {

namespace {

/// Device pixels from a picture's edge to the pixel that holds the centre: antialiasing reaches one farther than the
/// disc.
int MarginOf(const DiscLook& look) {
    return static_cast<int>(std::ceil((look.radius + look.penWidth / 2) * look.ratio)) + 1;
}

/// A picture of the disc, its centre `offset` device pixels to the right of and below the corner of the middle pixel.
QImage Paint(const DiscLook& look, const QPointF& offset) {
    const int margin = MarginOf(look);
    const int side = 2 * margin + 1;
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(look.ratio);
    picture.fill(Qt::transparent);
    ClearUpperHalves();
    CleanPainter painter;
    painter->begin(&picture);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(look.outline != 0 ? QPen(QColor::fromRgb(look.outline), look.penWidth) : QPen(Qt::NoPen));
    painter->setBrush(look.fill != 0 ? QBrush(QColor::fromRgb(look.fill)) : QBrush(Qt::NoBrush));
    const QPointF centre = (QPointF(margin, margin) + offset) / look.ratio;
    painter->drawEllipse(centre, look.radius, look.radius);
    painter->end();
    return picture;
}

}  // namespace

bool DiscStamps::Takes(const DiscLook& look) {
    return look.radius > 0 && (look.radius + look.penWidth / 2) * look.ratio <= kMostRadius;
}

DiscStamps::Sheet& DiscStamps::SheetOf(const DiscLook& look) {
    const auto known =
        std::find_if(sheets_.begin(), sheets_.end(), [&](const Sheet& sheet) { return sheet.look == look; });
    if (known != sheets_.end()) return *known;
    if (sheets_.size() < kMostLooks) return sheets_.emplace_back(Sheet{look, {}});
    Sheet& replaced = sheets_[oldest_];
    oldest_ = (oldest_ + 1) % kMostLooks;
    replaced = Sheet{look, {}};
    return replaced;
}

void DiscStamps::Draw(CleanPainter& painter, const DiscLook& look, const QPointF& centre) {
    constexpr double kSteps = kPhases;
    const double x = std::round(centre.x() * look.ratio * kSteps);
    const double y = std::round(centre.y() * look.ratio * kSteps);
    const double pixelX = std::floor(x / kSteps);
    const double pixelY = std::floor(y / kSteps);
    const QPointF phase(x - pixelX * kSteps, y - pixelY * kSteps);
    const auto index = static_cast<std::size_t>(phase.y()) * kPhases + static_cast<std::size_t>(phase.x());
    QImage& picture = SheetOf(look).pictures[index];
    if (picture.isNull()) picture = Paint(look, phase / kSteps);
    const int margin = MarginOf(look);
    painter->drawImage(QPointF(pixelX - margin, pixelY - margin) / look.ratio, picture);
}

}  // namespace glintara::desktop
