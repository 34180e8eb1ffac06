#include "link/assist_search.h"

#include "link/assist_messages.h"

namespace spellwick {

void AssistSearch::FindAssist() {
    m_assistWindow = 0;
    m_transport.EnumWindows([this](WindowHandle window, std::string_view title) {
        if (title.starts_with(kAssistTitleStart)) {
            m_assistWindow = window;
        }
    });
    if (m_assistWindow == 0) {
        // ODDITY(wait-stays): if the tool closes during a count, the button keeps saying "Wait.."
        // and stays disabled until a report resets it; kept because a search leaves the caption
        // alone.
        m_enable(false);
        m_state.AssistLinked = false;
        m_state.AssistRegistered = false;
        return;
    }
    m_enable(true);
    m_state.AssistLinked = true;
    // ODDITY(quick-restart): a tool that restarts within a second is not registered again and stays
    // silent; kept because only a search that finds nothing ends a registration.
    if (!m_state.AssistRegistered) {
        // If the tool still lists the window from before, the first message removes it and the
        // second adds it again.
        m_state.AssistRegistered = Register() || Register();
    }
}

bool AssistSearch::Register() {
    const i32 zero = 0;
    return m_transport.SendToWindow(m_assistWindow, kAssistRegister, m_state.MainWindowHandle,
                                    zero) == kAccepted;
}

void AssistSearch::HookWindow() {
    m_transport.Attach(m_state.MainWindowHandle, *m_receiver);
}

// ODDITY(no-unregister): after the program has ended, the tool still lists its window; kept because
// the tool has no message for signing off, and a second registration would be one too many.
void AssistSearch::UnhookWindow() {
    m_transport.Detach();
}

void AssistSearch::RequestCount() {
    const i32 zero = 0;
    // The reports tell, not the answer. The next search notices a tool that is gone.
    static_cast<void>(m_transport.SendToWindow(m_assistWindow, kAssistCount, 0, zero));
}

}  // namespace spellwick
