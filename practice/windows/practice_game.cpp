// spellwick-practice-game for Windows: a window of the client's class that shows what is typed into
// it. Its menu logs characters in and out. `--client NAME` plays another client.
#include <array>
#include <bit>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include <windows.h>

#include "practice/clients.h"
#include "practice/roster.h"
#include "practice/windows/program.h"

namespace spellwick::practice {
namespace {

constexpr UINT kLogOut = 100;
constexpr UINT kLogIn = 101;  // and the following ones, in the order of the roster
// Tells a watching program how many keystrokes have arrived.
constexpr UINT kKeystrokesMessage = WM_APP;
constexpr std::size_t kLines = 14;
constexpr UINT kStatisticsMilliseconds = 1000;
constexpr int kMostHits = 100;

class Game {
  public:
    explicit Game(Client client) : m_client(client) {}

    void LogIn(HWND window, std::size_t character) {
        m_character = &kRoster.at(character);
        ShowTitle(window);
    }
    void LogOut(HWND window) {
        m_character = nullptr;
        ShowTitle(window);
    }
    void ChangeStatistics(HWND window) {
        m_hits = m_hits > 1 ? m_hits - 1 : kMostHits;
        ShowTitle(window);
    }

    void AddKeystroke(HWND window, const std::wstring& name) {
        ++m_keystrokes;
        AddLine(window, L"key:  " + name);
    }

    void AddCharacter(HWND window, wchar_t character) {
        ++m_keystrokes;
        if (character == L'\r') {
            const bool isKey =
                m_speech.empty() && EmptyEnterOf(m_client, false) == EmptyEnter::kKey;
            AddLine(window, isKey ? L"key:  Enter" : L"say:  " + m_speech);
            m_speech.clear();
        } else if (character >= L' ') {
            m_speech.push_back(character);
            InvalidateRect(window, nullptr, TRUE);
        }
    }

    void Paint(HWND window) const {
        constexpr int kLineHeight = 20;
        constexpr int kMargin = 10;
        PAINTSTRUCT paint{};
        HDC device = BeginPaint(window, &paint);
        SetBkMode(device, TRANSPARENT);
        int top = kMargin;
        const auto show = [&](const std::wstring& text) {
            TextOutW(device, kMargin, top, text.data(), static_cast<int>(text.size()));
            top += kLineHeight;
        };
        show(L"What is typed into this window:");
        for (const std::wstring& line : m_lines) {
            show(line);
        }
        if (!m_speech.empty()) {
            show(L"...   " + m_speech);
        }
        EndPaint(window, &paint);
    }

    int Keystrokes() const { return m_keystrokes; }

  private:
    void ShowTitle(HWND window) const {
        const std::string title = m_character == nullptr ? LoginTitleOf(m_client)
                                                         : TitleOf(m_client, *m_character, m_hits);
        SetWindowTextW(window, Wide(title).c_str());
    }

    void AddLine(HWND window, const std::wstring& line) {
        m_lines.push_back(line);
        if (m_lines.size() > kLines) {
            m_lines.pop_front();
        }
        InvalidateRect(window, nullptr, TRUE);
    }

    Client m_client;
    const Character* m_character = nullptr;  // null at the login
    int m_hits = kMostHits;
    std::deque<std::wstring> m_lines;
    std::wstring m_speech;
    int m_keystrokes = 0;
};

bool IsHeld(int virtualKey) {
    return GetKeyState(virtualKey) < 0;
}

// The name of a key pressed with Alt or Ctrl, or of one that gives no character; else empty.
std::wstring NameOfKeystroke(WPARAM virtualKey, LPARAM flags) {
    const bool function = virtualKey >= VK_F1 && virtualKey <= VK_F16;
    const bool held = IsHeld(VK_MENU) || IsHeld(VK_CONTROL);
    const bool modifier =
        virtualKey == VK_MENU || virtualKey == VK_CONTROL || virtualKey == VK_SHIFT;
    if (modifier || (!function && !held)) {
        return {};
    }
    std::array<wchar_t, 64> key{};
    GetKeyNameTextW(static_cast<LONG>(flags), key.data(), static_cast<int>(key.size()));
    std::wstring name;
    if (IsHeld(VK_CONTROL)) {
        name += L"Ctrl+";
    }
    if (IsHeld(VK_MENU)) {
        name += L"Alt+";
    }
    if (IsHeld(VK_SHIFT)) {
        name += L"Shift+";
    }
    return name + key.data();
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* game = std::bit_cast<Game*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (game == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            if (const std::wstring name = NameOfKeystroke(wParam, lParam); !name.empty()) {
                game->AddKeystroke(window, name);
            }
            // Leave Alt+F4 and the menu's keys to the system.
            return DefWindowProcW(window, message, wParam, lParam);
        case WM_CHAR:
            // A key with Ctrl has already been shown.
            if (!IsHeld(VK_CONTROL)) {
                game->AddCharacter(window, static_cast<wchar_t>(wParam));
            }
            return 0;
        case WM_SYSCHAR:
            return 0;
        case WM_COMMAND:
            if (const UINT command = LOWORD(wParam); command == kLogOut) {
                game->LogOut(window);
            } else if (command >= kLogIn && command - kLogIn < kRoster.size()) {
                game->LogIn(window, command - kLogIn);
            }
            return 0;
        case WM_TIMER:
            game->ChangeStatistics(window);
            return 0;
        case WM_PAINT:
            game->Paint(window);
            return 0;
        case kKeystrokesMessage:
            return game->Keystrokes();
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

// The client that the command line names, the classic one without a name; nothing for one that is
// not known.
std::optional<Client> NamedClient() {
    if (__argc == 1) {
        return Client::kClassic;
    }
    std::string name;
    if (__argc == 3 && std::wstring_view(__wargv[1]) == L"--client") {
        for (const wchar_t* letter = __wargv[2]; *letter != 0; ++letter) {
            name.push_back(static_cast<char>(*letter));
        }
    }
    return ClientOfName(name);
}

}  // namespace
}  // namespace spellwick::practice

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*before*/, PWSTR /*line*/, int show) {
    using namespace spellwick::practice;
    const std::optional<Client> client = NamedClient();
    if (!client) {
        MessageBoxW(nullptr, L"--client takes classic, orion, crossuo, classicuo or tazuo.",
                    L"Practice game", MB_ICONERROR);
        return 1;
    }
    Game game(*client);
    const std::wstring windowClass = Wide(WindowsClassOf(*client));
    RegisterWindowClass(instance, windowClass, &Procedure, COLOR_WINDOW);

    HMENU menu = CreateMenu();
    HMENU characters = CreatePopupMenu();
    AppendMenuW(characters, MF_STRING, kLogOut, L"Log out");
    for (std::size_t i = 0; i < kRoster.size(); ++i) {
        AppendMenuW(characters, MF_STRING, kLogIn + i,
                    (L"Log in " + Wide(kRoster.at(i).name)).c_str());
    }
    AppendMenuW(menu, MF_POPUP, std::bit_cast<UINT_PTR>(characters), L"Character");

    HWND window = CreateWindowExW(0, windowClass.c_str(), L"", WS_OVERLAPPEDWINDOW, 60, 220, 520,
                                  400, nullptr, menu, instance, nullptr);
    if (window == nullptr) {
        return 1;
    }
    SetWindowLongPtrW(window, GWLP_USERDATA, std::bit_cast<LONG_PTR>(&game));
    game.LogIn(window, 0);
    if (ShowsStatistics(*client)) {
        SetTimer(window, 1, kStatisticsMilliseconds, nullptr);
    }
    ShowWindow(window, show);
    RunMessages(nullptr);
    return 0;
}
