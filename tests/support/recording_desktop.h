// A desktop that records what it is asked, for tests.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/desktop.h"

namespace spellwick {

class RecordingDesktop : public Desktop {
  public:
    struct TopMost {
        WindowHandle window = 0;
        bool topMost = false;

        bool operator==(const TopMost&) const = default;
    };

    // Calls add "beep", "open <file>", "browse <address>" or "top-most on/off" to `log`.
    explicit RecordingDesktop(std::vector<std::string>* log = nullptr) : m_log(log) {}

    void Beep() override {
        ++beeps;
        Log("beep");
    }
    bool OpenDocument(const std::filesystem::path& file) override {
        opened.push_back(file);
        Log("open " + file.filename().string());
        return opens;
    }
    bool HasProgramFor(const std::filesystem::path& /*file*/) override { return hasProgram; }
    bool OpenWebPage(const std::string& address) override {
        browsed.push_back(address);
        Log("browse " + address);
        return opens;
    }
    bool SetTopMost(WindowHandle window, bool topMost) override {
        topMostCalls.push_back({window, topMost});
        Log(topMost ? "top-most on" : "top-most off");
        return true;
    }
    bool LeaveTaskList(WindowHandle window) override {
        outOfTaskList.push_back(window);
        Log("leave task list");
        return true;
    }
    bool Activate(WindowHandle window) override {
        activated.push_back(window);
        return false;  // the toolkit does it
    }

    int beeps = 0;
    std::vector<std::filesystem::path> opened;
    std::vector<std::string> browsed;
    std::vector<TopMost> topMostCalls;
    std::vector<WindowHandle> outOfTaskList;
    std::vector<WindowHandle> activated;
    // The result of the next openings.
    bool opens = true;
    bool hasProgram = true;  // for every kind of file

  private:
    void Log(std::string line) {
        if (m_log != nullptr) {
            m_log->push_back(std::move(line));
        }
    }

    std::vector<std::string>* m_log;
};

}  // namespace spellwick
