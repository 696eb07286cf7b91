#pragma once

// The window that downloads element sets.

#include <array>

#include "state/controls.h"
#include "state/list_box.h"

namespace glintara {

/// Element of `OUpdateAlways` that replaces a satellite by a more recent set only.
inline constexpr std::size_t kOnlyMoreRecent = 1;

/// State of the window "Download TLE From Internet".
struct DownloadControls {
    DownloadControls() {
        CDownAdd.Enabled = false;
        CDownUp.Enabled = false;
        CDownOUP.Enabled = false;
    }

    Label LSources{"Sources", "Several may be selected; they are downloaded one after the other"};
    ListBox LSiteTLE;

    Button CDownAdd{"Download, Add", "All the satellites are added even if they already exist in the list"};
    Button CDownUp{"Download, Add, Update",
                   "New Satellites are added to the list, while the existing ones are replaced"};
    Button CDownOUP{"Download, Update", "No new satellites will be added, only the existing ones will be updated"};

    Label Frame1{"Update strategy"};
    std::array<OptionButton, 2> OUpdateAlways{
        OptionButton{"Update always", "A satellite of the list is replaced whatever the age of its elements", true},
        OptionButton{"Update only if more recent",
                     "A satellite of the list is replaced only when the set is more recent than its elements; with "
                     "Download, Add, Update a set that is not comes in as a second satellite of that number"}};
    CheckBox COnlySel{"Update only selected Sats", "Satellites that are not selected in the list stay as they are"};
    Button CSelSat{"Satellite List...", "Select the satellites to update"};

    Label LProg;
    ProgressBar PB1;
    Label LTotal;  ///< what the sources of one press have brought together
    Label LOrigin{
        "From celestrak.org and mmccants.org, given to everybody. A text is fetched again after two hours at the "
        "earliest, as the catalogue asks."};
    Button CExit{"Exit", "Close this window; a download that is under way is ended"};

    Observed<bool> Running;  ///< a download is under way
    bool Aborted = false;    ///< set to end it at its next look
    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
};

}  // namespace glintara
