// Start and end of the program, and the saving of what it keeps.
#include <QCoreApplication>

#include "main_window/form_main.h"
#include "model/spell_data.h"
#include "text/number_forms.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr float kTwipsPerPixel = 15.0F;
constexpr float kFarthestTwips = 40000.0F;

}  // namespace

LoadOutcome FormMain::Form_Load() {
    const std::filesystem::path spellData = m_services.folder / kSpellDataFile;
    std::error_code trouble;
    if (!std::filesystem::exists(spellData, trouble)) {
        m_services.boxes.Show({.text = "Cannot find support file: SpellData.txt",
                               .icon = BoxIcon::kCritical,
                               .title = "Missing File!"});
        return LoadOutcome::kMissingSpellData;
    }
    IgnoreFailure([&] { TakePlace(); });
    IgnoreFailure([&] {
        m_state.MainWindowHandle = static_cast<WindowHandle>(winId());
        m_state.AssistLinked = false;
        m_state.AssistRegistered = false;
    });
    IgnoreFailure([&] { m_services.assist.FindAssist(); });
    IgnoreFailure([&] { m_services.assist.HookWindow(); });
    IgnoreFailure([&] { m_page.InitCircleButtons(); });
    IgnoreFailure([&] { m_page.ClearSpellLabels(); });
    IgnoreFailure([&] { m_services.oldData.ConvertOldData(); });
    IgnoreFailure([&] { InitReagentTables(m_state); });
    if (!LoadSpellData(m_state, spellData)) {
        // While the box stands reports would work on half a table, and a failure of theirs would
        // save settings that were never loaded.
        IgnoreFailure([&] { m_services.assist.UnhookWindow(); });
        m_services.boxes.Show({.text = "Unable to load spell data file",
                               .icon = BoxIcon::kCritical,
                               .title = "Missing File"});
        return LoadOutcome::kBadSpellData;
    }
    IgnoreFailure([&] { m_state.Spellbook.Fill(1); });
    IgnoreFailure([&] { m_io.LoadGlobalSettings(); });
    IgnoreFailure([&] { m_page.UpdatePage(); });
    IgnoreFailure([&] { m_services.settings.Load(); });
    IgnoreFailure([&] { m_page.UpdateAmounts(); });
    m_watchTimer.start();
    return LoadOutcome::kReady;
}

void FormMain::Form_Activate() {
    IgnoreFailure(
        [&] { m_services.desktop.SetTopMost(m_state.MainWindowHandle, m_state.AlwaysOnTop); });
    if (m_activated) {
        return;
    }
    IgnoreFailure([&] { m_page.UpdatePage(); });
    IgnoreFailure([&] {
        if (m_state.CurrentReagentBag >= 0) {
            m_purse.ShowStock();
        }
    });
    IgnoreFailure([&] { m_page.UpdateAmounts(); });
    hide();
    RestorePlace();
    IgnoreFailure([&] {
        if (m_state.DisplayVertical) {
            LayoutVertical();
        } else {
            LayoutHorizontal();
        }
    });
    m_activated = true;
    // No caret blinks in a counter until the user puts it there.
    m_page.CheckCircle[kFirstCircleButton]->setFocus(Qt::OtherFocusReason);
    show();
}

// A window takes its place as that of its frame only if it has place and size before it has a
// handle, so it is arranged once ahead of the options that the start will read.
void FormMain::TakePlace() {
    RestorePlace();
    m_state.ShowNecroRegs = m_io.ReadSwitch("ShowNecroRegs", true);
    m_state.DisplayVertical = m_io.ReadSwitch("DisplayVertical", false);
    LayoutAgain();
}

void FormMain::RestorePlace() {
    float top = 0.0F;
    float left = 0.0F;
    const auto read = [this](float& place, std::string_view key) {
        IgnoreFailure([&] {
            const float saved = m_io.ReadPosition(key);
            place = saved >= 0.0F && saved <= kFarthestTwips ? saved : 0.0F;
        });
    };
    read(top, "WindowTop");
    read(left, "WindowLeft");
    const QPoint place(ToI32(double{left / kTwipsPerPixel}), ToI32(double{top / kTwipsPerPixel}));
    if (!testAttribute(Qt::WA_Moved) || pos() != place) {
        move(place);
    }
}

void FormMain::Form_Unload() {
    if (m_unloading) {
        return;
    }
    m_unloading = true;
    // Read before the window goes: a hidden window has lost its frame.
    const WindowPlaces places = AllPlaces();
    m_services.assist.UnhookWindow();
    hide();
    QCoreApplication::processEvents();
    ReportSave(m_services.settings.Unload());
    ReportSave(m_io.SaveGlobalSettings(places));
    m_services.process.EndProcess(0);
    m_unloading = false;
}

bool FormMain::SaveAfterFailure() {
    bool saved = true;
    m_unloading = true;
    const auto step = [&saved](auto&& work) {
        try {
            work();
        } catch (const std::exception&) {
            saved = false;
        }
    };
    WindowPlaces places;
    step([&] { places = Places(); });
    step([&] { places.timer = m_services.timers.TimerPlace(); });
    step([&] { m_services.assist.UnhookWindow(); });
    step([&] { hide(); });
    step([&] { saved = m_services.settings.Unload().ok && saved; });
    step([&] { saved = m_io.SavePlayerSettings(m_state.CurrentPlayerName).ok && saved; });
    step([&] { saved = m_io.SaveGlobalKeys(places).ok && saved; });
    return saved;
}

WindowPlaces FormMain::Places() const {
    WindowPlaces places;
    if (!isMinimized() && !isMaximized() && !isFullScreen()) {
        places.main = {.top = static_cast<float>(y()) * kTwipsPerPixel,
                       .left = static_cast<float>(x()) * kTwipsPerPixel};
    }
    return places;
}

WindowPlaces FormMain::AllPlaces() const {
    WindowPlaces places = Places();
    places.timer = m_services.timers.TimerPlace();
    return places;
}

void FormMain::ReportSave(const StoreResult& result) {
    // One box for one trouble: the watch may save each second for as long as it lasts.
    if (result.ok) {
        m_saveTroubleShown = false;
        return;
    }
    if (!m_saveTroubleShown) {
        m_saveTroubleShown = true;
        m_services.boxes.Show({.text = result.trouble, .icon = BoxIcon::kExclamation});
    }
}

void FormMain::SaveAll() {
    ReportSave(m_io.SaveGlobalSettings(AllPlaces()));
}

void FormMain::SavePlayer() {
    ReportSave(m_io.SavePlayerSettings(m_state.CurrentPlayerName));
}

void FormMain::LoadPlayer() {
    m_io.LoadPlayerSettings(m_state.CurrentPlayerName);
}

void FormMain::SaveOption(std::string_view key, const std::string& value) {
    ReportSave(m_io.SaveOption(key, value));
}

}  // namespace spellwick
