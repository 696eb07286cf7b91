#include "desktop/scene/painter_surface.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace glintara::desktop {

namespace {

/// Twips in a pixel of the layout: 1440 an inch, 96 pixels an inch.
constexpr double kTwips = kTwipsPerScreenPixel;
constexpr double kPixelsPerPoint = 96.0 / 72.0;

/// Fonts, and texts in each, kept at once: a picture has a handful of the one, a few hundred of the other.
constexpr std::size_t kMostFaces = 16;
constexpr std::size_t kMostWords = 4096;

/// Pictures of outlined texts kept at once: some 10 KB each at scale 1.
constexpr std::size_t kMostWordStamps = 1000;

/// Room round a text for its outline, pixels of the layout.
constexpr int kOutlineRoom = 2;

constexpr unsigned kFull = 255;

/// x / 255, rounded, for x up to 255 * 255.
constexpr std::uint16_t DividedBy255(std::uint16_t x) {
    const auto rounding = static_cast<std::uint16_t>(x + 128);
    return static_cast<std::uint16_t>(static_cast<std::uint16_t>(rounding + (rounding >> 8)) >> 8);
}

/// What becomes of a pixel under a colour: each channel times a factor of 255ths, plus a share. In the order of the
/// bytes of an RGB32 image, the unused fourth channel unchanged.
struct Blending {
    std::array<std::uint16_t, 4> factor{kFull, kFull, kFull, kFull};
    std::array<std::uint16_t, 4> share{};
};

Blending BlendingOf(Color color, MixMode mode, unsigned coverage) {
    const std::array<int, 3> channels{BlueOf(color), GreenOf(color), RedOf(color)};
    Blending blending;
    for (std::size_t c = 0; c < channels.size(); ++c) {
        const auto channel = static_cast<unsigned>(channels[c]);
        if (mode == MixMode::Mask) {
            blending.factor[c] = static_cast<std::uint16_t>(
                kFull - DividedBy255(static_cast<std::uint16_t>(coverage * (kFull - channel))));
        } else {
            blending.factor[c] = static_cast<std::uint16_t>(kFull - coverage);
            blending.share[c] = static_cast<std::uint16_t>(coverage * channel);
        }
    }
    return blending;
}

/// Applies a blending to pixels side by side. Four at once: the compiler makes vector code of it.
void Apply(const Blending& blending, std::span<QRgb> pixels) {
    constexpr std::size_t kChannels = 4;
    constexpr std::size_t kBlock = 4 * kChannels;
    const auto mixed = [](std::uint8_t channel, std::uint16_t factor, std::uint16_t share) {
        return static_cast<std::uint8_t>(DividedBy255(static_cast<std::uint16_t>(channel * factor + share)));
    };
    auto* const bytes = reinterpret_cast<std::uint8_t*>(pixels.data());
    const std::size_t count = pixels.size_bytes();
    std::size_t done = 0;
    if (count >= kBlock) {
        std::array<std::uint16_t, kBlock> factor;
        std::array<std::uint16_t, kBlock> share;
        for (std::size_t i = 0; i < kBlock; ++i) {
            factor[i] = blending.factor[i % kChannels];
            share[i] = blending.share[i % kChannels];
        }
        for (; done + kBlock <= count; done += kBlock)
            for (std::size_t i = 0; i < kBlock; ++i) bytes[done + i] = mixed(bytes[done + i], factor[i], share[i]);
    }
    for (; done < count; ++done) {
        const std::size_t c = done % kChannels;
        bytes[done] = mixed(bytes[done], blending.factor[c], blending.share[c]);
    }
}

QString TextOf(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

bool IsGrey(Color color) { return RedOf(color) == GreenOf(color) && GreenOf(color) == BlueOf(color); }

/// The face that stands in for one of another system.
QString FamilyOf(const std::string& name) {
    if (name == "Palatino Linotype") return "TeX Gyre Pagella";
    if (name.empty() || name == "Courier New") return "Liberation Mono";
    return QString::fromStdString(name);
}

}  // namespace

QColor QtColor(Color color) { return {RedOf(color), GreenOf(color), BlueOf(color)}; }

void PainterSurface::TakeScale(const QImage& image) {
    ratio_ = image.devicePixelRatio();
    TwipsPerPixelX = TwipsPerPixelY = kTwips / ratio_;
    ScaleWidth = image.width() * TwipsPerPixelX;
    ScaleHeight = image.height() * TwipsPerPixelY;
}

void PainterSurface::Begin(QImage& image) {
    End();
    image_ = &image;
    TakeScale(image);
    painter_->begin(&image);
    painter_->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
}

void PainterSurface::End() {
    if (painter_->isActive()) painter_->end();
    image_ = nullptr;
}

/// To multiply all channels with one grey is to lay black on that lets as much through, which the painter does ten
/// times as fast.
bool PainterSurface::MasksByBlack() const {
    return DrawMode == MixMode::Mask && IsGrey(ForeColor) && IsGrey(FillColor);
}

QColor PainterSurface::Ink(Color color) const {
    return MasksByBlack() ? QColor(0, 0, 0, 255 - RedOf(color)) : QtColor(color);
}

void PainterSurface::SetMode() {
    const bool multiplies = DrawMode == MixMode::Mask && !MasksByBlack();
    painter_->setCompositionMode(multiplies ? QPainter::CompositionMode_Multiply
                                            : QPainter::CompositionMode_SourceOver);
}

void PainterSurface::SetPen() {
    SetMode();
    if (DrawStyle == PenPattern::None) {
        painter_->setPen(Qt::NoPen);
        return;
    }
    QPen pen(Ink(ForeColor), DrawWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::RoundJoin);
    if (DrawWidth < 1) {
        // A hairline is never wider than a pixel of the display: wider ones the painter outlines and fills, which takes
        // forty times as long.
        pen.setCosmetic(true);
        pen.setWidthF(std::min(1.0, DrawWidth * ratio_));
    }
    if (DrawStyle == PenPattern::Dotted) {
        static const QList<qreal> dots{1, 3};
        pen.setDashPattern(dots);
    }
    painter_->setPen(pen);
}

void PainterSurface::SetBrush() {
    painter_->setBrush(FillStyle == FillPattern::Solid ? QBrush(Ink(FillColor)) : QBrush(Qt::NoBrush));
}

void PainterSurface::Cls() {
    if (image_ != nullptr) image_->fill(QtColor(BackColor));
    ClearUpperHalves();
    CurrentX = 0;
    CurrentY = 0;
}

void PainterSurface::Line(double x1, double y1, double x2, double y2) {
    SetPen();
    painter_->drawLine(QLineF(x1 / kTwips, y1 / kTwips, x2 / kTwips, y2 / kTwips));
}

/// Lays a small disc on as a ready-made picture. False when it is none that is kept.
bool PainterSurface::StampDisc(const QPointF& centre, double radius) {
    if (DrawMode != MixMode::Copy || DrawStyle == PenPattern::Dotted) return false;
    const bool outlined = DrawStyle == PenPattern::Solid;
    const DiscLook look{.radius = radius,
                        .fill = FillStyle == FillPattern::Solid ? QtColor(FillColor).rgb() : 0,
                        .outline = outlined ? QtColor(ForeColor).rgb() : 0,
                        .penWidth = outlined ? DrawWidth : 0,
                        .ratio = ratio_};
    if (!DiscStamps::Takes(look)) return false;
    SetMode();
    stamps_.Draw(painter_, look, centre);
    return true;
}

void PainterSurface::Circle(double x, double y, double radius) {
    const QPointF centre(x / kTwips, y / kTwips);
    if (StampDisc(centre, radius / kTwips)) return;
    SetPen();
    SetBrush();
    painter_->drawEllipse(centre, radius / kTwips, radius / kTwips);
}

void PainterSurface::PSet(double x, double y) {
    SetMode();
    painter_->setPen(Qt::NoPen);
    painter_->setBrush(Ink(ForeColor));
    painter_->drawEllipse(QPointF(x / kTwips, y / kTwips), DrawWidth / 2, DrawWidth / 2);
}

PainterSurface::Face& PainterSurface::CurrentFace() const {
    const auto known = std::find_if(faces_.begin(), faces_.end(), [this](const std::unique_ptr<Face>& face) {
        return face->name == FontName && face->size == FontSize && face->bold == FontBold && face->italic == FontItalic;
    });
    if (known != faces_.end()) return **known;
    if (faces_.size() == kMostFaces) faces_.clear();
    QFont font(FamilyOf(FontName));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(FontSize * kPixelsPerPoint))));
    font.setBold(FontBold);
    font.setItalic(FontItalic);
    faces_.push_back(
        std::make_unique<Face>(Face{FontName, FontSize, FontBold, FontItalic, font, QFontMetricsF(font), {}}));
    return *faces_.back();
}

PainterSurface::Words& PainterSurface::WordsOf(std::string_view text) const {
    Face& face = CurrentFace();
    const auto known = face.words.find(text);
    if (known != face.words.end()) return known->second;
    if (face.words.size() == kMostWords) face.words.clear();
    const QString string = TextOf(text);
    Words words{QStaticText(string), face.metrics.horizontalAdvance(string), {}};
    words.layout.setTextFormat(Qt::PlainText);
    words.layout.setPerformanceHint(QStaticText::AggressiveCaching);
    ClearUpperHalves();
    return face.words.emplace(text, std::move(words)).first->second;
}

/// Makes the picture of an outlined text, in the present font and colour, unless there is one: a text is written nine
/// times for it, too often for each of the names in each picture.
void PainterSurface::StampWords(Words& words) {
    if (!words.stamp.isNull() && words.stampColor == ForeColor && words.stampRatio == ratio_) return;
    if (wordStamps_ == kMostWordStamps) {
        for (const std::unique_ptr<Face>& face : faces_)
            for (auto& [text, kept] : face->words) kept.stamp = {};
        wordStamps_ = 0;
    }
    const Face& face = CurrentFace();
    const QSizeF room(words.advance + 2 * kOutlineRoom, face.metrics.height() + 2 * kOutlineRoom);
    words.stamp = QImage((room * ratio_).toSize() + QSize(1, 1), QImage::Format_ARGB32_Premultiplied);
    words.stamp.setDevicePixelRatio(ratio_);
    words.stamp.fill(Qt::transparent);
    words.stampColor = ForeColor;
    words.stampRatio = ratio_;
    ++wordStamps_;
    CleanPainter painter;
    painter->begin(&words.stamp);
    painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter->setFont(face.font);
    painter->setPen(QtColor(kTextOutline));
    const QPointF middle(kOutlineRoom, kOutlineRoom);
    for (const int dx : {-1, 0, 1})
        for (const int dy : {-1, 0, 1}) painter->drawStaticText(middle + QPointF(dx, dy), words.layout);
    painter->setPen(QtColor(ForeColor));
    painter->drawStaticText(middle, words.layout);
    painter->end();
}

void PainterSurface::Print(std::string_view text) {
    if (text.empty()) return;
    Words& words = WordsOf(text);
    SetMode();
    const QPointF corner(CurrentX / kTwips, CurrentY / kTwips);
    if (FontOutlined) {
        StampWords(words);
        // On whole pixels of the display, where the picture is laid on as it is.
        const QPointF place(std::round(corner.x() * ratio_), std::round(corner.y() * ratio_));
        painter_->drawImage(place / ratio_ - QPointF(kOutlineRoom, kOutlineRoom), words.stamp);
    } else {
        painter_->setFont(CurrentFace().font);
        painter_->setPen(Ink(ForeColor));
        painter_->drawStaticText(corner, words.layout);
    }
    CurrentX += words.advance * kTwips;
}

double PainterSurface::TextWidth(std::string_view text) const {
    return text.empty() ? 0 : WordsOf(text).advance * kTwips;
}

double PainterSurface::TextHeight(std::string_view /*text*/) const { return CurrentFace().metrics.height() * kTwips; }

void PainterSurface::Polygon(std::span<const PixelVertex> vertices) {
    points_.clear();
    for (const PixelVertex& vertex : vertices) points_.push_back(FromPixels(vertex.x, vertex.y));
    SetPen();
    SetBrush();
    painter_->drawPolygon(points_.data(), static_cast<int>(points_.size()), Qt::OddEvenFill);
}

void PainterSurface::PolyPolygon(std::span<const double> xy, std::span<const std::int32_t> contourEnds) {
    if (FillStyle != FillPattern::Solid) return;
    SetMode();
    if (contourEnds.size() == 1) {
        // One contour alone needs no path, which would look at each vertex twice more.
        TakePoints(xy.first(std::min(xy.size(), 2 * static_cast<std::size_t>(contourEnds[0]))));
        painter_->setPen(Qt::NoPen);
        painter_->setBrush(Ink(FillColor));
        painter_->drawPolygon(points_.data(), static_cast<int>(points_.size()), Qt::OddEvenFill);
        return;
    }
    path_.clear();
    path_.setFillRule(Qt::OddEvenFill);
    std::size_t vertex = 0;
    for (const std::int32_t end : contourEnds) {
        const std::size_t first = vertex;
        for (; vertex < static_cast<std::size_t>(end) && 2 * vertex + 1 < xy.size(); ++vertex) {
            const QPointF point = FromPixels(xy[2 * vertex], xy[2 * vertex + 1]);
            if (vertex == first)
                path_.moveTo(point);
            else
                path_.lineTo(point);
        }
        path_.closeSubpath();
    }
    painter_->fillPath(path_, Ink(FillColor));
}

/// Puts pairs of device pixels into `points_`.
void PainterSurface::TakePoints(std::span<const double> xy) {
    points_.clear();
    for (std::size_t i = 0; i + 1 < xy.size(); i += 2) points_.push_back(FromPixels(xy[i], xy[i + 1]));
}

void PainterSurface::Polyline(std::span<const double> xy) {
    TakePoints(xy);
    SetPen();
    painter_->drawPolyline(points_.data(), static_cast<int>(points_.size()));
}

void PainterSurface::CoverRow(std::int32_t x, std::int32_t y, std::span<const std::uint8_t> coverage) {
    if (image_ == nullptr || y < 0 || y >= image_->height()) return;
    const std::int64_t end = std::min<std::int64_t>(image_->width(), std::int64_t{x} + std::ssize(coverage));
    auto* const row = reinterpret_cast<QRgb*>(image_->scanLine(y));
    for (std::int64_t at = std::max(x, 0); at < end;) {
        const std::uint8_t wanted = coverage[static_cast<std::size_t>(at - x)];
        const std::int64_t first = at;
        while (at < end && coverage[static_cast<std::size_t>(at - x)] == wanted) ++at;
        if (wanted == 0) continue;
        Apply(BlendingOf(FillColor, DrawMode, wanted), {row + first, static_cast<std::size_t>(at - first)});
    }
}

void PainterSurface::StarDot(double x, double y, double radius, Color color, double weight) {
    if (image_ != nullptr) starStamps_.Add(*image_, x, y, radius * ratio_, color, weight);
}

void PainterSurface::ExtFloodFill(std::int32_t x, std::int32_t y, Color color, FloodFillMode /*mode*/) {
    if (image_ == nullptr || !image_->rect().contains(x, y)) return;
    const QRgb from = QtColor(color).rgb();
    const QRgb to = QtColor(FillColor).rgb();
    const int width = image_->width();
    const auto row = [&](int line) { return reinterpret_cast<QRgb*>(image_->scanLine(line)); };
    if (from == to || row(y)[x] != from) return;
    floodStack_.clear();
    floodStack_.emplace_back(x, y);
    while (!floodStack_.empty()) {
        const auto [seedX, line] = floodStack_.back();
        floodStack_.pop_back();
        QRgb* const pixels = row(line);
        if (pixels[seedX] != from) continue;
        int left = seedX;
        while (left > 0 && pixels[left - 1] == from) --left;
        int right = left;
        for (; right < width && pixels[right] == from; ++right) pixels[right] = to;
        for (const int next : {line - 1, line + 1}) {
            if (next < 0 || next >= image_->height()) continue;
            const QRgb* const neighbours = row(next);
            for (int column = left; column < right; ++column) {
                const bool begins = neighbours[column] == from && (column == left || neighbours[column - 1] != from);
                if (begins) floodStack_.emplace_back(column, next);
            }
        }
    }
}

void PainterSurface::AlphaBlend(const PixelRectangle& target, const DrawSurface& source, const PixelRectangle& part,
                                std::uint8_t weight) {
    const auto* const other = dynamic_cast<const PainterSurface*>(&source);
    if (other == nullptr || other->image_ == nullptr) return;
    SetMode();
    painter_->setOpacity(weight / 255.0);
    const QRectF on(FromPixels(target.left, target.top), QSizeF(target.width, target.height) / ratio_);
    painter_->drawImage(on, *other->image_, QRectF(part.left, part.top, part.width, part.height));
    painter_->setOpacity(1);
}

}  // namespace glintara::desktop
