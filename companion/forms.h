// What the companion asks of the program's windows.
#pragma once

#include <string>

#include "companion/screen.h"
#include "companion/way.h"
#include "store/setting_changes.h"

namespace spellwick {

class Forms {
  public:
    virtual ~Forms() = default;

    // Draws what an action has changed. Called at the end of each action, and before anything that
    // serves events, so that no box stands over old figures.
    virtual void Show(const Changes& changes) = 0;

    // Gives the main window its saved place, and its handle.
    virtual WindowHandle MakeMainWindow() = 0;
    // Nothing can end the start any more, and the arrangement is known: the main window may come up
    // now, and is filled while the system brings it to the screen. Serves no events.
    virtual void ShowMainWindow() {}
    // All is loaded: takes in what the settings dialog reads once, at the start. It may be made
    // from now on.
    virtual void LoadSettings() = 0;

    // Moves the focus to the first page button. The edit that loses it reports that before this
    // returns, unless the window is not the active one.
    virtual void FocusPage() = 0;
    // Moves the focus to a counter, 1 to 13, and selects its text.
    virtual void FocusCounter(i32 reagent) = 0;
    virtual void FocusHelp() = 0;

    // Shows a hint: a small window of ours that goes by itself; never a box, never takes the focus.
    // One with a target stands near the control that mends the trouble, and a click leads there.
    virtual void ShowHint(const std::string& text, const Target& target = {}) = 0;
    void ShowWay(const WayHint& hint) { ShowHint(hint.text, hint.target); }

    // Shows the help in a window of ours. False if it cannot be shown.
    [[nodiscard]] virtual bool ShowHelp() { return false; }

    // Serves the events that are pending.
    virtual void ServeEvents() = 0;
    // Serves events for a tenth of a second. A pause within a pause ends the outer one too.
    virtual void Pause() = 0;

    // Where the main window stands; without a place while it is not in its normal state.
    virtual WindowPlaces MainPlace() = 0;
    // Where the window of the countdowns stands; makes it if need be.
    virtual WindowPlaces::Place TimerPlace() = 0;
    virtual void HideMainWindow() = 0;
    // Ends the settings dialog, made or not: saves its place and the macro codes.
    virtual StoreResult UnloadSettings() = 0;

    // Ends the process at once; in a test it returns.
    virtual void EndProcess(int exitCode) = 0;
};

}  // namespace spellwick
