// The desktop of a player who has an assist tool: the practice tool beside Spellwick and the game.
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

    // Starts the tool, which reports nothing unasked but what follows a registration.
    void StartTool();
    // A line of the tool's own commands; returns when the tool has obeyed it.
    void TellTool(const std::string& command);
    // All that the tool has written so far.
    std::vector<std::string> Told() const;
    // How many of these lines start so.
    std::size_t CountTold(std::string_view start) const;
    bool WaitTold(std::string_view start, std::size_t times = 1) const;
    // All reports are sent and answered.
    bool WaitQuiet();
    // Stops the tool as it stands, or lets it go on.
    void SignalTool(int number) const { m_tool->Signal(number); }
    // Presses a key in the box that comes or stands, and waits until it is gone.
    void AnswerBox(std::uint32_t key);

    // The game with Mira in it, the tool and Spellwick, which has been told all about Mira.
    void StartAll();
    // The same for a Spellwick that is started while the others stand.
    void StartSpellwickLinked();

    // The Count button as it looks now, with the mouse elsewhere.
    Picture CountButton() const;
    bool WaitCountButton(const Picture& picture) const;
    bool WaitOtherCountButton(const Picture& picture) const;

  private:
    std::unique_ptr<ChildProcess> m_tool;
    int m_toolInput = -1;
};

}  // namespace spellwick::testing_support
