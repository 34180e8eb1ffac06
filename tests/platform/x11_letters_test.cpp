// Letters that the layout in force lacks, of which there may be more than free key codes; and hands
// on the keyboard meanwhile.
#include <atomic>
#include <thread>

#include "tests/platform/x11_typing_fixture.h"
#include "text/utf8.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing_support::KeyboardState;

constexpr auto kGrace = 300ms;

// Distinct letters that neither an American nor a Russian keyboard has.
std::string Letters(int first, int count) {
    std::string text;
    for (int letter = first; letter < first + count; ++letter) {
        AppendUtf8(text, static_cast<char32_t>(0x1e00 + letter));
    }
    return text;
}

TEST_F(X11Typing, LettersOfAnotherGroup_AreTypedWithoutAChangeOfTheMap) {
    ASSERT_TRUE(session->SetLayout("us,ru"));
    // More than there are free codes.
    std::string text = "%{f1}\u0439\u0424 Abc";
    std::string typed = "<Alt+F1><Cyrillic_shorti><Shift+Cyrillic_EF> Abc";
    const std::vector<std::pair<std::string, std::string>> letters{
        {"\u0446", "tse"},  {"\u0443", "u"},   {"\u043a", "ka"},       {"\u0435", "ie"},
        {"\u043d", "en"},   {"\u0433", "ghe"}, {"\u0448", "sha"},      {"\u0449", "shcha"},
        {"\u0437", "ze"},   {"\u0445", "ha"},  {"\u044a", "hardsign"}, {"\u0444", "ef"},
        {"\u044b", "yeru"}, {"\u0432", "ve"},  {"\u0430", "a"},        {"\u043f", "pe"},
        {"\u0440", "er"},   {"\u043e", "o"},   {"\u043b", "el"},       {"\u0434", "de"},
        {"\u0436", "zhe"},  {"\u044d", "e"},   {"\u044f", "ya"},       {"\u0447", "che"}};
    for (const auto& [letter, name] : letters) {
        text += letter;
        typed += "<Cyrillic_" + name + ">";
    }
    for (const std::uint8_t group : {std::uint8_t{0}, std::uint8_t{1}}) {
        SCOPED_TRACE(int{group});
        session->LockGroup(group);
        const KeyboardState before = session->Keyboard();
        witness->ForgetKeys();
        KeystrokeSender sender(*keyboard, {8ms, 8ms}, kGrace);
        EXPECT_TRUE(sender.SendKeys(text, true, anywhere).Ok());
        EXPECT_EQ(session->Keyboard().keymap, before.keymap) << "at once, before any grace period";
        EXPECT_EQ(witness->WaitForTyped(typed), typed);
        ExpectAsBefore(before);
    }
}

TEST_F(X11Typing, MoreLettersThanFreeCodes_ArriveWhole) {
    ASSERT_TRUE(session->SetLayout("us"));
    ExpectTyped(Letters(0, 70), Letters(0, 70));
}

TEST_F(X11Typing, TwoTextsOfManyLettersAtOnce_ArriveWhole) {
    ASSERT_TRUE(session->SetLayout("us"));
    KeystrokeSender sender(*keyboard, {8ms, 8ms}, kGrace);
    EXPECT_TRUE(sender.SendKeys(Letters(0, 12), true, anywhere).Ok());
    EXPECT_TRUE(sender.SendKeys(Letters(12, 12), true, anywhere).Ok());
    EXPECT_EQ(witness->WaitForTyped(Letters(0, 24)), Letters(0, 24));
}

// Answers the pings to the test's own windows as a toolkit does, each after some time.
class Answerer {
  public:
    Answerer(const testing_support::XSession& session, std::chrono::milliseconds delay)
        : m_session(session), m_delay(delay), m_thread([this] { Answer(); }) {}
    Answerer(const Answerer&) = delete;
    Answerer& operator=(const Answerer&) = delete;
    ~Answerer() {
        m_ends = true;
        m_thread.join();
    }

  private:
    void Answer() const {
        while (!m_ends) {
            std::this_thread::sleep_for(1ms);
            while (const auto event = OwnReply(xcb_poll_for_event(m_session.Connection()))) {
                void* untyped = event.get();
                auto* message = static_cast<xcb_client_message_event_t*>(untyped);
                if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE &&
                    message->data.data32[0] == m_session.Atom("_NET_WM_PING")) {
                    std::this_thread::sleep_for(m_delay);
                    message->window = m_session.Root();
                    xcb_send_event(
                        m_session.Connection(), 0, m_session.Root(),
                        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                        static_cast<const char*>(untyped));
                    xcb_flush(m_session.Connection());
                }
            }
        }
    }

    const testing_support::XSession& m_session;
    std::chrono::milliseconds m_delay;
    std::atomic<bool> m_ends = false;
    std::thread m_thread;
};

TEST_F(X11Typing, WaitUntilRead_ReturnsWithTheAnswerOfTheProgram) {
    const auto timeOf = [this](xcb_window_t window, std::chrono::milliseconds patience, bool read) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(windows->WaitUntilRead(window, patience), read);
        return std::chrono::steady_clock::now() - start;
    };
    const xcb_window_t window = session->MakeWindow("a", "A", "one");
    // Programs that know no pings are not waited for.
    EXPECT_LT(timeOf(witness->Window(), 5s, false), 1s);
    EXPECT_LT(timeOf(window, 5s, false), 1s);
    EXPECT_LT(timeOf(0, 5s, false), 1s);
    const xcb_atom_t ping = session->Atom("_NET_WM_PING");
    xcb_change_property(session->Connection(), XCB_PROP_MODE_REPLACE, window,
                        session->Atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, 32, 1, &ping);
    session->Sync();
    {
        const Answerer answerer(*session, 50ms);
        for (int round = 0; round < 5; ++round) {
            const auto took = timeOf(window, 5s, true);
            EXPECT_GE(took, 50ms);
            EXPECT_LT(took, 2s);
        }
    }
    const auto took = timeOf(window, 200ms, false);
    EXPECT_GE(took, 200ms);
    EXPECT_LT(took, 2s);
}

// The keyboard of the session, with a hand on its Ctrl key: in the fourth pause, which is the gap
// behind the second keystroke, it presses the key, and lets go after a number of pauses more.
class WithAHand : public Keyboard {
  public:
    WithAHand(Keyboard& keyboard, const testing_support::XSession& session, int pauses)
        : m_keyboard(keyboard), m_session(session), m_lastPause(kPress + pauses) {}

    std::optional<Keymap> ReadKeymap() override { return m_keyboard.ReadKeymap(); }
    bool Bind(std::span<const SpareBinding> bindings) override { return m_keyboard.Bind(bindings); }
    bool Unbind(std::span<const SpareBinding> bindings) override {
        return m_keyboard.Unbind(bindings);
    }
    bool Press(Keycode code) override { return m_keyboard.Press(code); }
    bool Release(Keycode code) override { return m_keyboard.Release(code); }
    bool SetLocks(ModifierMask affected, ModifierMask locked) override {
        return m_keyboard.SetLocks(affected, locked);
    }
    bool SetGroup(std::uint8_t group) override { return m_keyboard.SetGroup(group); }
    std::optional<ModifierMask> HeldModifiers() override { return m_keyboard.HeldModifiers(); }
    bool Sync() override { return m_keyboard.Sync(); }
    void Pause(std::chrono::milliseconds time) override {
        m_keyboard.Pause(time);
        ++m_pauses;
        if (m_pauses == kPress || m_pauses == m_lastPause) {
            m_session.FakeKey(m_session.KeycodeOf(kControlL), m_pauses == kPress);
        }
    }
    std::chrono::steady_clock::time_point Now() const override { return m_keyboard.Now(); }

  private:
    static constexpr int kPress = 4;
    Keyboard& m_keyboard;
    const testing_support::XSession& m_session;
    int m_lastPause;
    int m_pauses = 0;
};

TEST_F(X11Typing, ModifierPressedByAHandWhileTextRuns_IsWaitedOut) {
    ASSERT_TRUE(session->SetLayout("us"));
    const KeyboardState before = session->Keyboard();
    WithAHand withAHand(*keyboard, *session, 25);
    KeystrokeSender sender(withAHand, {8ms, 8ms}, kGrace);
    const SendResult result = sender.SendKeys("abnn", true, anywhere);
    EXPECT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(witness->WaitForTyped("abnn"), "abnn");
    ExpectAsBefore(before);
}

TEST_F(X11Typing, ModifierThatAHandHoldsOn_EndsTheTyping) {
    ASSERT_TRUE(session->SetLayout("us"));
    const KeyboardState before = session->Keyboard();
    WithAHand withAHand(*keyboard, *session, 1000);
    KeystrokeSender sender(withAHand, {8ms, 8ms}, kGrace);
    const SendResult result = sender.SendKeys("abnn", true, anywhere);
    EXPECT_FALSE(result.Ok());
    EXPECT_EQ(result.strokes, 2U);
    session->FakeKey(session->KeycodeOf(kControlL), false);
    EXPECT_EQ(witness->WaitForTyped("ab"), "ab");
    ExpectAsBefore(before);
}

}  // namespace
}  // namespace spellwick
