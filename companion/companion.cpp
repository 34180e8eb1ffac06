#include "companion/companion.h"

#include "companion/link_report.h"
#include "link/profile_folder.h"
#include "model/cast_rules.h"
#include "model/skill_entries.h"
#include "text/log.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr i16 kRightButton = 2;
constexpr const char* kHelpFile = "ReadMe.wri";

}  // namespace

Companion::Companion(const CompanionServices& services)
    : m_services(services),
      m_state(services.state),
      m_timers(m_state, m_services.clock),
      m_player(m_services,
               {.display = m_display, .page = m_page, .purse = m_purse, .tithes = m_tithes}),
      m_casting(m_services, {.display = m_display,
                             .page = m_page,
                             .purse = m_purse,
                             .tithes = m_tithes,
                             .player = m_player,
                             .timers = m_timers}),
      m_dispatcher(m_state, *this, m_services.assist, m_services.failures) {
    m_player.SetBeforeSwitch([this] { PayForReports(true); });
    if (m_services.files != nullptr) {
        m_data.emplace(PlayerData::Parts{.state = m_state,
                                         .store = m_player.Store(),
                                         .clock = m_services.clock,
                                         .files = *m_services.files,
                                         .saveAll = [this] { return SaveWhatIsInMemory(); },
                                         .reload = [this] { ReloadAll(); }});
    }
}

void Companion::WatchTick() {
    m_services.keys.Tick();
    m_display.Act([&] { PayForReports(false); });
    m_display.Act([&] {
        m_player.Tick();
        ShowLink();
    });
    m_display.Act([&] {
        m_timers.Update();
        m_display.changes.timers = true;
    });
}

void Companion::MeditationTick() {
    Screen& screen = m_display.screen;
    if (screen.meditationTag != kMeditateTag) {
        return;
    }
    screen.meditationTag.clear();
    m_display.changes.meditation = true;
    Meditate();
}

void Companion::ChoosePage(i32 button) {
    m_display.Act([&] { m_page.Choose(button); });
}

void Companion::UpdatePage() {
    m_display.Act([&] { m_page.Update(); });
}

void Companion::UpdateChances() {
    m_display.Act([&] { m_page.UpdateChances(); });
}

void Companion::UpdateAmounts() {
    m_display.Act([&] { m_page.UpdateAmounts(); });
}

void Companion::HoverSlot(i32 slot) {
    m_display.Act([&] {
        const i32 row = SpellAtSlot(slot);
        const SpellRecord& spell = m_state.Spells(row);
        m_display.screen.hoveredRow = row;
        m_purse.Highlight(spell);
        m_tithes.Highlight(spell);
        m_page.ShowSpell(slot);
        m_tithes.Commit();
    });
}

void Companion::LeaveSlots() {
    m_display.Act([&] {
        m_display.screen.hoveredRow = -1;
        m_purse.ClearHighlight();
    });
}

std::optional<i32> Companion::PressSlot(i32 slot, i16 button, i16 shift) {
    m_casting.KeepPress(button, shift);
    return button == kRightButton ? std::optional(SpellAtSlot(slot)) : std::nullopt;
}

void Companion::ClickSlot(i32 slot) {
    if (m_casting.Last().LastMouseButton != kRightButton) {
        m_display.Act([&] { m_casting.CastSpell(slot); });
    }
}

void Companion::OpenHelp() {
    // ODDITY(help-fails): a help text that is not there, or that neither a program nor our own
    // window can show, ends the run; kept because the start of the opener is not looked after, and
    // the data are saved all the same.
    const std::filesystem::path file = m_services.folder / kHelpFile;
    if (m_services.desktop.HasProgramFor(file) && m_services.desktop.OpenDocument(file)) {
        return;
    }
    std::error_code trouble;
    if (!std::filesystem::is_regular_file(file, trouble) || !m_display.TheForms().ShowHelp()) {
        throw RuntimeFailure(FailureKind::kFile, "The help text ReadMe.wri cannot be opened.");
    }
}

void Companion::Count() {
    m_display.Act([&] {
        m_services.assist.FindAssist();
        if (m_state.AssistLinked) {
            EnableCount(false);
            CaptionCount("Wait..");
            m_display.Tell();
            m_services.assist.RequestCount();
        } else {
            m_display.Tell();
            m_services.boxes.Show({.text = "Could not find UO Assist. Without UO Assist the count "
                                           "function does not work.",
                                   .icon = BoxIcon::kInformation});
        }
        if (m_player.FindClient()) {
            // The count goes on behind other windows too.
            static_cast<void>(m_services.clients.SetForegroundWindow(m_state.ClientWindow));
            m_display.Tell();
            m_display.TheForms().ServeEvents();
        } else {
            m_player.ShowClientNotFound();
        }
    });
}

void Companion::Meditate() {
    m_display.Act([&] { m_casting.Meditate(); });
}

void Companion::ShowCaption() {
    m_display.Act([&] { m_player.ShowCaption(); });
}

void Companion::ParseClientTitle() {
    m_display.Act([&] { m_player.ParseClientTitle(); });
}

std::string Companion::CharacterInGame() const {
    const bool isThere = m_state.ClientWindow != 0 && IsRealServer(m_state.ServerName);
    return isThere ? m_state.CharacterName : std::string();
}

std::filesystem::path Companion::CharacterFolder() {
    std::optional<TitleNames> names;
    IgnoreFailure([&] { names = ParseTitle(m_state.CurrentPlayerName); });
    if (!names) {
        return {};
    }
    // A macro file is best changed behind a logout, when the window may be gone.
    if (m_state.ClientWindow != 0) {
        const auto folders = m_services.clients.ProgramFolders(m_state.ClientWindow);
        if (!folders.empty()) {
            m_clientFolders = folders;
        }
    }
    // The shard of a title may be a word for none.
    for (const std::string& shard : {names->server, std::string()}) {
        if (const auto profile = NewestProfile(m_clientFolders, names->character, shard)) {
            return profile->path;
        }
    }
    return {};
}

void Companion::Arrange(bool vertical) {
    m_state.DisplayVertical = vertical;
    m_display.Act([&] { m_display.changes.layout = true; });
}

void Companion::SavePlayer() {
    m_display.Act([&] {
        PayForReports(true);
        m_player.Save();
    });
}

void Companion::LoadPlayer() {
    m_display.Act([&] { m_player.Load(); });
}

void Companion::SaveAll() {
    m_display.Act([&] { m_player.SaveAll(AllPlaces()); });
}

void Companion::SaveOption(std::string_view key, const std::string& value) {
    m_display.Act([&] { m_player.SaveOption(key, value); });
}

StoreResult Companion::SaveMacros(const std::optional<WindowPlaces::Place>& dialog) {
    return m_player.Io().SaveMacros(dialog);
}

void Companion::ReportSave(const StoreResult& result) {
    m_display.Act([&] { m_player.ReportSave(result); });
}

void Companion::EnableCount(bool enabled) {
    // A tool that never answers a count would leave the button at "Wait..".
    const bool answers = m_services.link.kind.countsOnRequest;
    m_display.screen.countEnabled = enabled && answers;
    m_display.screen.countReason =
        answers ? std::string() : m_services.link.tool + " does not count when it is asked to";
    m_display.changes.countButton = true;
}

void Companion::CaptionCount(const std::string& caption) {
    m_display.screen.countCaption = caption;
    m_display.changes.countButton = true;
}

void Companion::ShowCounter(i32 reagent, i32 count) {
    m_display.WriteCounter(reagent, PlainText(count));
}

void Companion::StartTimer(i32 row) {
    m_timers.StartTimer(row);
    m_display.changes.timers = true;
}

void Companion::SetTimerMode(i32 mode) {
    m_display.Act([&] {
        m_timers.SetMode(mode);
        m_display.changes.timers = true;
    });
}

void Companion::ArmMeditation() {
    m_display.screen.meditationTag = kMeditateTag;
    m_display.changes.meditation = true;
}

void Companion::ShowReportedMagery(i32 points) {
    m_display.screen.reportedMagery = points;
    m_display.changes.reportedMagery = true;
    if (!m_state.Updating) {
        // ODDITY(magery-report-group): while the skills tab is on Necromancy or Chivalry, a report
        // of Magery gives that skill the same value; kept because the edit of the character's skill
        // takes a report as it takes an entry, and the tool's next list of skills sets it right.
        SetSkillOfGroup(m_state, m_display.screen.skillGroup, SkillEntryOf(points));
    }
}

void Companion::ShowReportedIntelligence(i32 points) {
    m_display.screen.reportedIntelligence = points;
    m_display.changes.reportedIntelligence = true;
    if (!m_state.Updating) {
        // ODDITY(report-ceiling): Intelligence above 125 is cut down to 125 when the tool reports
        // it, as Magery is; kept because the edit that shows it takes a report as it takes an
        // entry.
        m_state.Intelligence = SkillEntryOf(points);
    }
}

void Companion::DebitSpell(i32 row) {
    RequireSpellRow(row);
    if (!m_services.payment.HoldDebit(row)) {
        m_casting.DebitSpell(row);
    }
}

void Companion::PayForReports(bool all) {
    for (const i32 row : m_services.payment.TakeDueDebits(all)) {
        m_casting.DebitSpell(row);
    }
}

void Companion::EndReport() {
    ShowLink();
    m_display.Tell();
}

void Companion::ShowLink() {
    const bool pays = !m_services.payment.PaysAtClick();
    std::string text = LinkText(m_services.link, !pays);
    Screen& screen = m_display.screen;
    if (text != screen.linkText || pays != screen.linkPays) {
        screen.linkText = std::move(text);
        screen.linkPays = pays;
        LogEvent(LogTopic::kLinked, [&] { return screen.linkText; });
        m_display.changes.link = true;
    }
}

std::string Companion::LinkReport() const {
    return spellwick::LinkReport(m_services.link, m_services.payment.PaysAtClick(),
                                 m_services.clock);
}

void Companion::ShowBox(const std::string& text) {
    m_display.Tell();
    m_services.boxes.Show({.text = text});
}

void Companion::YieldEvents() {
    m_display.Tell();
    m_display.TheForms().ServeEvents();
}

}  // namespace spellwick
