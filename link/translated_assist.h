// Today's assist tools, put into the one form that the search and the dispatcher understand: their
// windows have the title that is looked for, and their reports mean what such a tool's mean.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/assist_tools.h"
#include "link/cast_payment.h"
#include "link/link_status.h"
#include "model/shared_state.h"
#include "platform/assist_transport.h"

namespace spellwick {

class TranslatedAssist : public AssistTransport, private MessageReceiver {
  public:
    using WallClock = std::function<std::chrono::system_clock::time_point()>;

    // All references outlive it.
    TranslatedAssist(AssistTransport& real, SharedState& state, CastPayment& payment,
                     std::vector<AssistToolRow> tools, WallClock now);

    // Takes other rows; before the first search.
    void SetTools(std::vector<AssistToolRow> tools);

    // The tool in use, and what it has reported.
    const LinkStatus& Status() const { return m_status; }

    // Windows of the title that is looked for stand as they are; without one, one window of a tool
    // that is known stands for it, and is kept as long as it is there.
    void EnumWindows(const WindowVisitor& visit) override;
    [[nodiscard]] i32 SendToWindow(WindowHandle window, std::uint32_t number, std::uint32_t wParam,
                                   const i32& word) override;
    void Attach(WindowHandle own, MessageReceiver& receiver) override;
    void Detach() override { m_real.Detach(); }
    int Descriptor() const override { return m_real.Descriptor(); }
    void Service() override { m_real.Service(); }
    void ServePending() override { m_real.ServePending(); }

  private:
    struct Found {
        WindowHandle window = 0;
        std::string title;
        const AssistToolRow* row = nullptr;  // null for a tool of the title that is looked for
    };

    std::vector<Found> FindTools(bool& lastOneStillThere);
    const Found* Choose(const std::vector<Found>& found) const;
    void Use(const Found& found);
    void UseNone();

    std::optional<i32> OnMessage(const WindowMessage& message) override;
    std::optional<WindowMessage> Translate(const WindowMessage& message);
    std::optional<WindowMessage> TranslateCast(const WindowMessage& message);
    std::optional<WindowMessage> TranslateStats(const WindowMessage& message) const;
    void NoteReport(const WindowMessage& message);

    AssistTransport& m_real;
    SharedState& m_state;
    CastPayment& m_payment;
    std::vector<AssistToolRow> m_tools;
    WallClock m_now;
    LinkStatus m_status;
    MessageReceiver* m_receiver = nullptr;
    WindowHandle m_window = 0;             // of the tool in use
    const AssistToolRow* m_row = nullptr;  // of the tool in use; null for one that needs none
};

}  // namespace spellwick
