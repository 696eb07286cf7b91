#pragma once

namespace glintara {

/// What the rooms tell to windows that may be open, and to the services of the program. A call for a window that is
/// closed does nothing, and so does each by itself: the terminal has no windows.
class WindowSignals {
  public:
    WindowSignals() = default;
    WindowSignals(const WindowSignals&) = delete;
    WindowSignals& operator=(const WindowSignals&) = delete;
    virtual ~WindowSignals() = default;

    /// `UpDateAll` of the satellite list: rebuild the list and the working satellite's lines.
    virtual void UpDateAll() {}

    /// `ShowWorkingSatellite` of the satellite list: another satellite works, the list's rows are the same.
    virtual void ShowWorkingSatellite() {}

    /// `RefreshInfo` of the observations window.
    virtual void RefreshInfo() {}

    /// `ChangeSatelliteSignal` of the surface editor: the working satellite is about to change.
    virtual void ChangeSatelliteSignal() {}

    /// `RefreshData` of the surface editor: the working satellite has changed.
    virtual void RefreshData() {}

    /// The window of the satellite's position shows the satellite that works now.
    virtual void RefreshSatPosition() {}

    /// The windows of the settings, those that are open, show the values as they stand now.
    virtual void RefreshSettings() {}

    /// The main window takes the whole screen, or goes back to where it stood.
    virtual void ShowFullScreen(bool /*fullScreen*/) {}

    /// Asks for a new picture. Requests coalesce.
    virtual void UpdateGraphicsLevel2() {}

    /// Brings the menu entries into line with the check boxes.
    virtual void SyncronizeMenuBar() {}

    /// Writes the usage record.
    virtual void SaveStat() {}
};

}  // namespace glintara
