#pragma once

// A list of lines, of which one is the current one and any number are selected.

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "state/observed.h"

namespace glintara {

/// `Current` of a list with no current line.
inline constexpr int kNoLine = -1;

/// A list box. `Lines` is the store: whatever the list shows stands there and nowhere else. Lines are counted from 0.
/// Who changes `Lines` brings `Current` and `Selected` into line with them, by `SetLines`.
struct ListBox {
    Observed<std::vector<std::string>> Lines;
    Observed<int> Current{kNoLine};    ///< the line with the cursor; `kNoLine` for none
    Observed<std::set<int>> Selected;  ///< numbers of the selected lines

    int Count() const { return static_cast<int>(Lines.Get().size()); }

    /// Puts `lines` in place of what there is and selects `selected` of them; the last of those is the current one.
    void SetLines(std::vector<std::string> lines, std::set<int> selected) {
        Lines = std::move(lines);
        Current = selected.empty() ? kNoLine : *selected.rbegin();
        Selected = std::move(selected);
    }

    void Watch(const std::function<void()>& watcher) {
        Lines.SetWatcher(watcher);
        Current.SetWatcher(watcher);
        Selected.SetWatcher(watcher);
    }
};

}  // namespace glintara
