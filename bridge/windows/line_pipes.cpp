#include "bridge/windows/line_pipes.h"

#include <array>

#include "bridge/bridge_line.h"

namespace spellwick::bridge {

namespace {

// Half a million reports that nobody has read.
constexpr std::size_t kMostUnwritten = std::size_t{16} << 20U;

class Lock {
  public:
    explicit Lock(CRITICAL_SECTION& section) : m_section(section) {
        EnterCriticalSection(&m_section);
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { LeaveCriticalSection(&m_section); }

  private:
    CRITICAL_SECTION& m_section;
};

}  // namespace

LinePipes::LinePipes()
    : m_lock(),
      m_input(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      m_output(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      m_written(CreateEventW(nullptr, TRUE, TRUE, nullptr)) {
    InitializeCriticalSection(&m_lock);
}

bool LinePipes::Start() {
    if (m_input == nullptr || m_output == nullptr || m_written == nullptr) {
        return false;
    }
    for (LPTHREAD_START_ROUTINE routine : {&Reader, &Writer}) {
        HANDLE thread = CreateThread(nullptr, 0, routine, this, 0, nullptr);
        if (thread == nullptr) {
            return false;
        }
        CloseHandle(thread);
    }
    return true;
}

DWORD WINAPI LinePipes::Reader(void* pipes) {
    static_cast<LinePipes*>(pipes)->ReadAll();
    return 0;
}

DWORD WINAPI LinePipes::Writer(void* pipes) {
    static_cast<LinePipes*>(pipes)->WriteAll();
    return 0;
}

void LinePipes::ReadAll() {
    HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    std::array<char, 4096> bytes{};
    std::string rest;
    DWORD count = 0;
    while (rest.size() < kLongestBridgeLine &&
           ReadFile(input, bytes.data(), bytes.size(), &count, nullptr) != FALSE && count > 0) {
        rest.append(bytes.data(), count);
        const Lock lock(m_lock);
        for (std::size_t end = rest.find('\n'); end != std::string::npos; end = rest.find('\n')) {
            m_lines.push_back(rest.substr(0, end));
            rest.erase(0, end + 1);
        }
        if (!m_lines.empty()) {
            SetEvent(m_input);
        }
    }
    End();
}

void LinePipes::WriteAll() {
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    std::string text;
    while (WaitForSingleObject(m_output, INFINITE) == WAIT_OBJECT_0) {
        for (bool more = true; more;) {
            {
                const Lock lock(m_lock);
                text.swap(m_unwritten);
                m_unwritten.clear();
                more = !text.empty();
                if (!more) {
                    SetEvent(m_written);
                }
            }
            for (std::size_t done = 0; done < text.size();) {
                DWORD count = 0;
                if (WriteFile(output, text.data() + done, static_cast<DWORD>(text.size() - done),
                              &count, nullptr) == FALSE) {
                    End();
                    SetEvent(m_written);
                    return;
                }
                done += count;
            }
            text.clear();
        }
    }
}

void LinePipes::End() {
    const Lock lock(m_lock);
    m_ended = true;
    SetEvent(m_input);
}

std::optional<std::string> LinePipes::TakeLine() {
    const Lock lock(m_lock);
    if (m_lines.empty()) {
        return std::nullopt;
    }
    std::string line = std::move(m_lines.front());
    m_lines.pop_front();
    if (m_lines.empty() && !m_ended) {
        ResetEvent(m_input);
    }
    return line;
}

bool LinePipes::Ended() {
    const Lock lock(m_lock);
    return m_ended && m_lines.empty();
}

void LinePipes::Write(const std::string& line) {
    const Lock lock(m_lock);
    m_unwritten += line;
    if (m_unwritten.size() > kMostUnwritten) {
        m_ended = true;
        m_lines.clear();
        SetEvent(m_input);
    }
    ResetEvent(m_written);
    SetEvent(m_output);
}

void LinePipes::Flush(DWORD milliseconds) {
    WaitForSingleObject(m_written, milliseconds);
}

}  // namespace spellwick::bridge
