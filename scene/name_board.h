#pragma once

// Words beside marks: names of satellites and labels of flares, so placed that none covers another, is cut by the edge
// of the picture, or stands over the title, the lists of details, the texts of the hidden panels or the observer's mark.

#include <array>
#include <cstddef>
#include <optional>
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

/// Most labels of flares that may ask for room in one picture, and the memory for all of them, bytes.
inline constexpr std::size_t kMostLabels = 500;
inline constexpr std::size_t kLabelRoom = 40 * kMostLabels;

/// Height of a name over that of its mark, in heights of the name.
inline constexpr double kNameRise = 0.7;

/// Who comes first when there is room for one only. A label of a flare stands at its point and nowhere else, and tells
/// what is about to happen there.
enum class NameRank { Flare, Working, Other };

/// A name that asks for room.
struct NameWish {
    double x = 0;  ///< its mark, twips
    double y = 0;
    double gap = 0;    ///< from the middle of the mark to the name, twips
    double range = 0;  ///< from the observer; of two names of one rank the nearer one's comes first
    NameRank rank = NameRank::Other;
    Color color = kQuietNameColor;
    double rise = kNameRise;  ///< of its upper edge over `y`, in heights of the name
    std::string_view name;    ///< must live until the names are drawn
    std::size_t order = 0;    ///< set by the board: of two alike the one that came first
};

/// The names of one picture. It keeps its memory from picture to picture.
class NameBoard {
  public:
    /// With memory for so many names of satellites, and `kMostLabels` labels.
    explicit NameBoard(std::size_t names);

    /// Forgets all wishes, and what has been written: a picture begins.
    void Clear();

    /// One more wish; an empty name is none, and so is one beyond the capacity.
    void Add(const NameWish& wish);

    /// An empty text to make a label in: its memory is kept.
    std::string& EmptyText();

    /// The same for a label, whose text the board keeps. It may be the one of `EmptyText`.
    void AddLabel(const NameWish& label);

    /// Writes the names, each with a leading blank and an outline, by their ranks and ranges: to the right of the mark,
    /// or to the left where the edge would cut it or something else stands. Left out is one that would touch a name
    /// already written, one that finds no room on either side, and one whose mark lies out of the picture. The wishes
    /// are forgotten then; what is written keeps its room until `Clear`, so that other rooms can add names of their
    /// own.
    void Draw(const SceneContext& scene) { Draw(scene, kNameSize); }

    /// The same in letters of `size` points, at most `kNameSize`.
    void Draw(const SceneContext& scene, double size);

  private:
    struct Place {
        double left = 0;
        double right = 0;
        double top = 0;
        int next = -1;  // the next one of the same row, or -1
    };

    struct TextSize {
        double character = 0;
        double height = 0;
    };

    void TakeObstacles(const SceneContext& scene);
    const BoxArea* ObstacleOf(const Place& place, double height) const;
    bool FitsIn(const Place& place, const DrawSurface& surface, double height) const;
    std::optional<Place> FindPlace(const NameWish& wish, const DrawSurface& surface, const TextSize& size) const;

    bool TakePlace(const Place& place, double height);

    std::vector<NameWish> wishes_;
    std::size_t labels_ = 0;
    std::string labelTexts_;  // never grows beyond what it was given, so the labels may refer to it
    std::vector<Place> places_;
    std::vector<int> rows_;  // first place of each row of the picture, or -1
    std::array<BoxArea, 6> obstacles_;
    std::size_t obstacleCount_ = 0;
    std::string text_;
};

}  // namespace glintara
