#include "tests/end_to_end/tool_desk.h"

#include <algorithm>
#include <sstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace spellwick::testing_support {

void ToolDesk::TearDown() {
    for (const Tool& tool : m_tools) {
        if (HasFailure() && tool.process) {
            ADD_FAILURE() << "A tool wrote: " << tool.process->Output();
        }
        close(tool.input);
    }
    m_tools.clear();
    PlayerDesk::TearDown();
}

void ToolDesk::StartTool(const std::string& role, const char* title) {
    const std::filesystem::path folder = m_desk->Session().Folder();
    const std::filesystem::path input = folder / ("tool-input-" + std::to_string(m_tools.size()));
    ASSERT_EQ(mkfifo(input.c_str(), 0600), 0);
    Tool& tool = m_tools.emplace_back();
    tool.input = open(input.c_str(), O_RDWR | O_CLOEXEC);
    constexpr const char* kCommand =
        "exec \"$0\" --game \"$1\" --tool \"$3\" --socket \"$3\""
        " -qwindowgeometry +740+300 <\"$2\"";
    tool.process = m_desk->Session().Spawn({"sh", "-c", kCommand,
                                            (Programs() / "spellwick-practice-tool").string(),
                                            (folder / "journal").string(), input.string(), role});
    ASSERT_TRUE(tool.process);
    ASSERT_TRUE(WaitTold("open ")) << tool.process->Output();
    ASSERT_NE(m_desk->WaitWindow(title), 0U);
    TellTool("idle off");
}

void ToolDesk::LeaveTool() {
    ASSERT_GT(m_tools.size(), 1U);
    std::rotate(m_tools.begin(), m_tools.end() - 1, m_tools.end());
}

void ToolDesk::TellTool(const std::string& command) {
    const std::size_t before = CountTold("done " + command);
    const std::string line = command + "\n";
    ASSERT_EQ(write(m_tools.back().input, line.data(), line.size()),
              static_cast<ssize_t>(line.size()));
    ASSERT_TRUE(WaitTold("done " + command, before + 1)) << command;
}

std::vector<std::string> ToolDesk::Told() const {
    std::istringstream output(m_tools.back().process->Output());
    std::vector<std::string> lines;
    for (std::string line; std::getline(output, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::size_t ToolDesk::CountTold(std::string_view start) const {
    const auto lines = Told();
    return static_cast<std::size_t>(std::ranges::count_if(
        lines, [start](const std::string& line) { return line.starts_with(start); }));
}

bool ToolDesk::WaitTold(std::string_view start, std::size_t times) const {
    return WaitUntil([&] { return CountTold(start) >= times; });
}

bool ToolDesk::WaitQuiet() {
    const std::size_t before = CountTold("quiet");
    TellTool("wait");
    return WaitTold("quiet", before + 1);
}

void ToolDesk::AnswerBox(std::uint32_t key) {
    const xcb_window_t box = m_desk->Session().WaitForWindow("Spellwick");
    ASSERT_NE(box, 0U);
    m_desk->RestingPicture(box);
    m_desk->Tap(key);
    ASSERT_TRUE(m_desk->WaitGone(box));
}

void ToolDesk::StartAll() {
    StartGame();
    TellGame("login 1");
    StartTool();
    StartSpellwickLinked();
}

void ToolDesk::StartSpellwickLinked() {
    const std::size_t before = CountTold("out result 1");
    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    ASSERT_TRUE(WaitTold("out result 1", before + 1));
    ASSERT_TRUE(WaitQuiet());
    // Count can be clicked only after the answer has arrived.
    m_desk->RestingPicture(Window());
}

Picture ToolDesk::CountButton() const {
    constexpr std::ptrdiff_t kBytes = 4;
    constexpr std::ptrdiff_t kHalfWidth = 24;
    constexpr std::ptrdiff_t kHalfHeight = 8;
    const Place centre = Command(3);
    const std::ptrdiff_t width = m_desk->AreaOf(Window()).width;
    const Picture whole = m_desk->PictureOf(Window());
    Picture button;
    for (auto y = centre.y - kHalfHeight; y < centre.y + kHalfHeight; ++y) {
        const auto start = whole.begin() + (y * width + centre.x - kHalfWidth) * kBytes;
        button.insert(button.end(), start, start + 2 * kHalfWidth * kBytes);
    }
    return button;
}

bool ToolDesk::WaitCountButton(const Picture& picture) const {
    return WaitUntil([&] { return CountButton() == picture; });
}

bool ToolDesk::WaitOtherCountButton(const Picture& picture) const {
    return WaitUntil([&] { return CountButton() != picture; });
}

}  // namespace spellwick::testing_support
