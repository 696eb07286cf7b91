#include "scene/name_board.h"

#include <algorithm>
#include <cmath>

#include "scene/detail_blocks.h"
#include "scene/marks.h"
#include "scene/overlays.h"

namespace glintara {
namespace {

constexpr std::size_t kTextRoom = 64;

/// Characters of UTF-8 text.
std::size_t CharacterCount(std::string_view text) {
    constexpr unsigned kMarkerBits = 0xC0;
    constexpr unsigned kContinuation = 0x80;
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & kMarkerBits) != kContinuation; }));
}

bool ComesFirst(const NameWish& a, const NameWish& b) {
    if (a.rank != b.rank) return a.rank < b.rank;
    if (a.range != b.range) return a.range < b.range;
    return a.order < b.order;
}

}  // namespace

NameBoard::NameBoard(std::size_t names) {
    wishes_.reserve(names + kMostLabels);
    labelTexts_.reserve(kLabelRoom);
    places_.reserve(kMostNames);
    text_.reserve(kTextRoom);
}

void NameBoard::Clear() {
    wishes_.clear();
    labels_ = 0;
    labelTexts_.clear();
    places_.clear();
}

void NameBoard::Add(const NameWish& wish) {
    if (wish.name.empty() || wishes_.size() == wishes_.capacity()) return;
    if (!std::isfinite(wish.x) || !std::isfinite(wish.y) || std::isnan(wish.range)) return;
    wishes_.push_back(wish);
    wishes_.back().order = wishes_.size();
}

std::string& NameBoard::EmptyText() {
    text_.clear();
    return text_;
}

void NameBoard::AddLabel(const NameWish& label) {
    const std::size_t start = labelTexts_.size();
    if (labels_ == kMostLabels || start + label.name.size() > kLabelRoom) return;
    ++labels_;
    labelTexts_ += label.name;
    NameWish kept = label;
    kept.name = std::string_view(labelTexts_).substr(start);
    Add(kept);
}

bool NameBoard::TakePlace(const Place& place, double height) {
    const int row = static_cast<int>(place.top / height) + 1;
    for (int r = row - 1; r <= row + 1; ++r) {
        for (int i = rows_[static_cast<std::size_t>(r)]; i >= 0; i = places_[static_cast<std::size_t>(i)].next) {
            const Place& other = places_[static_cast<std::size_t>(i)];
            const bool apart =
                place.left >= other.right || place.right <= other.left || std::fabs(place.top - other.top) >= height;
            if (!apart) return false;
        }
    }
    int& head = rows_[static_cast<std::size_t>(row)];
    places_.push_back(place);
    places_.back().next = head;
    head = static_cast<int>(places_.size()) - 1;
    return true;
}

void NameBoard::TakeObstacles(const SceneContext& scene) {
    obstacleCount_ = 0;
    obstacles_[obstacleCount_++] = TitleArea(scene.Surface);
    if (const std::optional<BoxArea> site = SiteMarkArea(scene)) obstacles_[obstacleCount_++] = *site;
    if (const std::optional<BoxArea> orbit = OrbitDetailsArea(scene)) obstacles_[obstacleCount_++] = *orbit;
    if (const std::optional<BoxArea> astro = AstroDetailsArea(scene)) obstacles_[obstacleCount_++] = *astro;
    if (const auto labels = LabelTextAreas(scene))
        for (const BoxArea& area : *labels) obstacles_[obstacleCount_++] = area;
}

const BoxArea* NameBoard::ObstacleOf(const Place& place, double height) const {
    for (std::size_t i = 0; i < obstacleCount_; ++i) {
        const BoxArea& area = obstacles_[i];
        const bool apart = place.left >= area.right || place.right <= area.left || place.top >= area.bottom ||
                           place.top + height <= area.top;
        if (!apart) return &area;
    }
    return nullptr;
}

bool NameBoard::FitsIn(const Place& place, const DrawSurface& surface, double height) const {
    return place.left >= 0 && place.right <= surface.ScaleWidth && ObstacleOf(place, height) == nullptr;
}

std::optional<NameBoard::Place> NameBoard::FindPlace(const NameWish& wish, const DrawSurface& surface,
                                                     const TextSize& size) const {
    const bool markSeen = wish.x >= 0 && wish.x <= surface.ScaleWidth && wish.y >= 0 && wish.y <= surface.ScaleHeight;
    if (!markSeen || surface.ScaleHeight < size.height) return std::nullopt;
    const double width = size.character * static_cast<double>(CharacterCount(wish.name) + 1);
    Place place;
    place.top = std::clamp(wish.y - wish.rise * size.height, 0.0, surface.ScaleHeight - size.height);
    const auto standsFrom = [&](double left) {
        place.left = left;
        place.right = left + width;
        return FitsIn(place, surface, size.height);
    };
    if (standsFrom(wish.x + wish.gap)) return place;
    if (const BoxArea* const before = ObstacleOf(place, size.height))
        if (before->left <= wish.x && standsFrom(before->right)) return place;
    // On this side the blank stands between the name and its mark.
    if (standsFrom(wish.x - wish.gap - width - size.character)) return place;
    return std::nullopt;
}

void NameBoard::Draw(const SceneContext& scene, double size) {
    if (wishes_.empty()) return;
    DrawSurface& surface = scene.Surface;
    const bool thin = scene.App.Main.CThinLines.Value;
    // All names of a picture keep the room of the largest, so that each knows the others.
    UseTextFont(surface, thin ? kThinNameSize : kNameSize);
    // All characters of the text font have one width, so a name need not be measured.
    const double character = surface.TextWidth(" ");
    const double height = surface.TextHeight(" ");
    if (!(character > 0) || !(height > 0) || !(surface.ScaleHeight > 0)) return;
    std::ranges::sort(wishes_, ComesFirst);
    const std::size_t rows = static_cast<std::size_t>(surface.ScaleHeight / height) + 4;
    if (places_.empty() || rows_.size() != rows) {
        places_.clear();
        rows_.assign(rows, -1);
    }
    TakeObstacles(scene);
    UseTextFont(surface, thin ? std::min(size, kThinNameSize) : size);
    surface.FontOutlined = true;
    for (const NameWish& wish : wishes_) {
        if (places_.size() == kMostNames) break;
        const std::optional<Place> place = FindPlace(wish, surface, {character, height});
        if (!place || !TakePlace(*place, height)) continue;
        text_.assign(1, ' ');
        text_ += wish.name;
        surface.ForeColor = wish.color;
        surface.CurrentX = place->left;
        surface.CurrentY = place->top;
        surface.Print(text_);
    }
    surface.FontOutlined = false;
    wishes_.clear();
}

}  // namespace glintara
