// The link with the assist tool as the main window sees it.
#pragma once

namespace spellwick {

class AssistLink {
  public:
    virtual ~AssistLink() = default;

    // Looks for the tool's window and registers with it; sets the flags of the link and enables or
    // disables the Count button.
    virtual void FindAssist() = 0;

    // Attach and detach the receiver of the tool's reports.
    virtual void HookWindow() = 0;
    virtual void UnhookWindow() = 0;

    // Handles the reports that have come in, before the end: half a second at most.
    virtual void TakeReports() = 0;

    // Asks the tool to count the reagents; its reports may arrive before this returns.
    virtual void RequestCount() = 0;
};

}  // namespace spellwick
