#pragma once

// Names beside marks, so placed that none covers another.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "scene/view_geometry.h"

namespace glintara {

/// Colours of names: of the working satellite and of the others.
inline constexpr Color kWorkingNameColor = kWhite;
inline constexpr Color kQuietNameColor = 0x9E948B;

/// Size of names, points, and with `CThinLines`.
inline constexpr double kNameSize = 9;
inline constexpr double kThinNameSize = 8;

/// Most names in one picture: more would hide what they name.
inline constexpr std::size_t kMostNames = 200;

/// A name that asks for room.
struct NameWish {
    double x = 0;      ///< where it begins, twips
    double y = 0;      ///< the mark's height, twips
    double range = 0;  ///< of the satellite from the observer; of two names the nearer one's comes first
    bool working = false;
    std::string_view name;  ///< must live until the names are drawn
    std::size_t order = 0;  ///< set by the board: of two alike the one that came first
};

/// The names of one picture. It keeps its memory from picture to picture.
class NameBoard {
  public:
    /// With memory for so many wishes.
    explicit NameBoard(std::size_t capacity);

    /// Forgets all wishes.
    void Clear() { wishes_.clear(); }

    /// One more wish; an empty name is none, and so is one beyond the capacity.
    void Add(const NameWish& wish);

    /// Writes the names, each with a leading blank: that of the working satellite first, the others by their range. One
    /// that would touch a name already written, or lies out of the picture, is left out.
    void Draw(const SceneContext& scene);

  private:
    struct Place {
        double left = 0;
        double right = 0;
        double top = 0;
        int next = -1;  // the next one of the same row, or -1
    };

    bool TakePlace(const Place& place, double height);

    std::vector<NameWish> wishes_;
    std::vector<Place> places_;
    std::vector<int> rows_;  // first place of each row of the picture, or -1
    std::string text_;
};

}  // namespace glintara
