// The desktop of a player with an assist tool: Spellwick, the practice game and the practice tool.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {

class ToolDesk : public PlayerDesk {
  protected:
    void TearDown() override;

    // Starts a tool, which pretends to be that one; unasked, it reports only what follows a
    // registration. All else here is about the tool that was started last.
    void StartTool(const std::string& role = "uoassist", const char* title = "UOAssist");
    // From here on the tool that was started before; the last one goes on.
    void LeaveTool();
    // Sends the tool a command and waits until it is carried out.
    void TellTool(const std::string& command);
    // The tool's output so far.
    std::vector<std::string> Told() const;
    // How many of its lines start like this.
    std::size_t CountTold(std::string_view start) const;
    bool WaitTold(std::string_view start, std::size_t times = 1) const;
    // Waits until all reports are sent and answered.
    bool WaitQuiet();
    // Freezes the tool, or lets it continue.
    void SignalTool(int number) const { m_tools.back().process->Signal(number); }
    // Presses a key in the message box that is open or about to open, and waits until it closes.
    void AnswerBox(std::uint32_t key);

    // Starts the game with Mira, the tool, and Spellwick, and waits for the reports about Mira.
    void StartAll();
    // The same for a Spellwick started while the others are running.
    void StartSpellwickLinked();

    // How the Count button looks now, with the mouse elsewhere.
    Picture CountButton() const;
    bool WaitCountButton(const Picture& picture) const;
    bool WaitOtherCountButton(const Picture& picture) const;

  private:
    struct Tool {
        std::unique_ptr<ChildProcess> process;
        int input = -1;
    };

    std::vector<Tool> m_tools;
};

}  // namespace spellwick::testing_support
