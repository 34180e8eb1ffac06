#include "tests/support/companion_fixture.h"

#include <stdexcept>

#include "store/catalogue.h"

namespace spellwick {

namespace {

const char* const kStockCodes[] = {"MR", "SA", "BM", "SS", "GA", "BP", "NI",
                                   "GI", "BW", "DB", "GD", "NC", "PI"};

}  // namespace

void RecordingParts::Note(const std::string& line) {
    m_log.push_back(line);
    if (line == hooked) {
        hook();
    }
    if (line == failing) {
        throw RuntimeFailure(FailureKind::kInvalidCall, line);
    }
}

std::optional<std::string> NotingStore::Read(std::string_view section, std::string_view key) const {
    if (key == kConversionKey) {
        m_parts.Note("convert");
    }
    return MemorySettingsStore::Read(section, key);
}

SectionValues NotingStore::ReadSection(std::string_view section) const {
    if (notes) {
        m_parts.Note("load " + std::string(section));
    }
    return MemorySettingsStore::ReadSection(section);
}

StoreResult NotingStore::Apply(const std::vector<SettingChange>& changes) {
    if (notes && !changes.empty()) {
        m_parts.Note("save " + changes.front().section);
    }
    return MemorySettingsStore::Apply(changes);
}

void PrintTo(const UncaughtFailure& failure, std::ostream* out) {
    *out << FailureName(failure.kind) << " while " << failure.action;
}

void PrintTo(const Box& box, std::ostream* out) {
    *out << "[" << box.title << "] " << box.text << " (icon " << static_cast<int>(box.icon)
         << ", buttons " << static_cast<int>(box.buttons) << ")";
}

CompanionFixture::CompanionFixture() {
    std::filesystem::copy_file(SPELLWICK_SOURCE_FOLDER "/data/SpellData.txt",
                               m_folder.Path() / "SpellData.txt");
}

CompanionFixture::~CompanionFixture() = default;

void CompanionFixture::TearDown() {
    EXPECT_THAT(TakeBoxes(), testing::IsEmpty()) << "a message box that nobody asked for";
    EXPECT_THAT(TakeHints(), testing::IsEmpty()) << "a hint that nobody asked for";
    EXPECT_THAT(TakeFailures(), testing::IsEmpty()) << "a failure that nobody asked for";
}

void CompanionFixture::OnUncaughtFailure(const std::exception& failure, std::string_view action) {
    const auto* known = dynamic_cast<const RuntimeFailure*>(&failure);
    ASSERT_NE(known, nullptr) << failure.what();
    m_failures.push_back({known->Kind(), std::string(action)});
    m_log.emplace_back("failure");
}

void CompanionFixture::SavePlayer(const std::string& title) {
    SetSaved("Settings", "CurrentPlayerName", title);
    for (const char* key :
         {"EvalInt", "Magery", "Necro", "Chivalry", "SpiritSpeak", "Intelligence"}) {
        SetSaved(title, key, "100");
    }
    for (int row = 0; row <= kLastRow; ++row) {
        SetSaved(title, "Spellbook " + std::to_string(row), "0");
    }
    for (const char* code : kStockCodes) {
        SetSaved(title, std::string(code) + " 0", "50");
        SetSaved(title, std::string(code) + " 1", "20");
    }
    SetSaved(title, "CurrentTithing", " 500");
    SetSaved(title, "SendSpellText", "0");
}

void CompanionFixture::SetSaved(const std::string& section, const std::string& key,
                                const std::string& value) {
    m_store.Put(section, key, value);
}

std::string CompanionFixture::Saved(const std::string& section, const std::string& key) const {
    return m_store.MemorySettingsStore::Read(section, key).value_or("(none)");
}

void CompanionFixture::OpenClient(const std::string& title) {
    m_clients.windows.clear();
    if (!title.empty()) {
        m_clients.windows.push_back({kClient, "Ultima Online", title});
    }
}

CompanionServices CompanionFixture::Services() {
    return {.state = m_state,
            .store = m_store,
            .clients = m_games == nullptr ? static_cast<ClientWindows&>(m_clients) : *m_games,
            .keys = m_keys,
            .desktop = m_desktop,
            .boxes = m_boxes,
            .assist = *m_assist,
            .payment = m_payment,
            .link = *m_link,
            .wait = m_parts,
            .clock = m_clock,
            .failures = *this,
            .journal = m_journal,
            .games = m_games,
            .files = &m_files,
            .wineTools = &m_wineTools,
            .folder = m_folder.Path(),
            .settingsFolder = SettingsFolder()};
}

Companion& CompanionFixture::Make() {
    m_companion = std::make_unique<Companion>(Services());
    m_companion->SetForms(*this);
    return *m_companion;
}

void CompanionFixture::Start() {
    ASSERT_EQ(Program().Load(), LoadOutcome::kReady);
    Program().RefreshAtFirstActivation();
}

void CompanionFixture::StartWithMira() {
    SavePlayer(kMira);
    OpenClient(kMira);
    Make();
    Start();
    Tick(1);
    TakeLog();
    TakeChanges();
    m_store.ForgetBatches();
}

void CompanionFixture::Tick(int index) {
    if (index == 1) {
        Guarded("watching the game client", [&] { Program().WatchTick(); });
    } else {
        Guarded("starting to meditate", [&] { Program().MeditationTick(); });
    }
}

void CompanionFixture::InThePause(std::function<void()> happens) {
    m_inThePause.push_back(std::move(happens));
}

std::string CompanionFixture::Text(const char* name) {
    const Screen& screen = Shown();
    const std::string control = name;
    if (control == "LabelName") {
        return screen.name;
    }
    if (control == "LabelWords") {
        return screen.words;
    }
    if (control == "LabelMana") {
        return screen.mana;
    }
    if (control == "LabelCost") {
        return screen.cost;
    }
    if (control == "LabelCurrentMana") {
        return screen.currentMana;
    }
    if (control == "LabelTithes") {
        return screen.tithes;
    }
    if (control == "TxtTithes") {
        return screen.tithesEdit;
    }
    throw std::logic_error("no control " + control);
}

std::string CompanionFixture::Text(const char* name, int index) {
    constexpr int kCount = 3;
    const Screen& screen = Shown();
    const std::string control = name;
    if (control == "Reagent") {
        return screen.counters(index).text;
    }
    if (control == "LabelAmount") {
        return screen.spellSlots.at(static_cast<std::size_t>(index)).amount;
    }
    if (control == "LabelChance") {
        return screen.spellSlots.at(static_cast<std::size_t>(index)).chance;
    }
    if (control == "Command" && index == kCount) {
        return screen.countCaption;
    }
    throw std::logic_error("no control " + control);
}

void CompanionFixture::Guarded(const char* action, const std::function<void()>& step) {
    Guard(*this, action, step);
}

void CompanionFixture::ClickSpell(int slot, i16 shift) {
    constexpr i16 kLeft = 1;
    Guarded("pressing a spell", [&] { Program().PressSlot(slot, kLeft, shift); });
    Guarded("casting a spell", [&] { Program().ClickSlot(slot); });
}

void CompanionFixture::ShowPage(int button) {
    Guarded("choosing a page", [&] { Program().ChoosePage(button); });
}

void CompanionFixture::ClickCommand(int index) {
    switch (index) {
        case 0:
            Guarded("pressing Undo the last debit", [&] { Program().Undo(); });
            return;
        case 1:
            Guarded("pressing Help", [&] { Program().OpenHelp(); });
            return;
        case 3:
            Guarded("pressing Count the reagents", [&] { Program().Count(); });
            return;
        case 4:
            Guarded("pressing Meditate", [&] { Program().Meditate(); });
            return;
        default:
            throw std::logic_error("a button of the windows alone");
    }
}

void CompanionFixture::EnterCounter(int reagent, const std::string& text) {
    if (Shown().focusedReagent != reagent) {
        FocusPage();
    }
    Program().EnterCounter(reagent);
    Program().TypeCounter(reagent, text);
}

void CompanionFixture::Leave() {
    FocusPage();
}

void CompanionFixture::Show(const Changes& changes) {
    m_changes.push_back(changes);
    if (changes.reportedMagery) {
        m_parts.Note("skill " + std::to_string(Shown().reportedMagery));
    }
    if (changes.reportedIntelligence) {
        m_parts.Note("int " + std::to_string(Shown().reportedIntelligence));
    }
    if (changes.chances) {
        m_parts.Note("update chance");
    }
}

void CompanionFixture::FocusPage() {
    m_focus = "CheckCircle(0)";
    if (Shown().focusedReagent > 0) {
        Guarded("changing a counter", [&] { Program().LeaveCounter(Shown().focusedReagent); });
    }
    Guarded("changing the tithing points", [&] { Program().LeaveTithes(); });
    Guarded("renaming a bag", [&] { Program().LeaveBags(); });
}

void CompanionFixture::FocusCounter(i32 reagent) {
    m_focus = "Reagent(" + std::to_string(reagent) + ")";
    Program().EnterCounter(reagent);
}

void CompanionFixture::ServeEvents() {
    while (!m_inThePause.empty()) {
        const std::function<void()> happens = std::move(m_inThePause.front());
        m_inThePause.pop_front();
        happens();
    }
}

void CompanionFixture::Pause() {
    ServeEvents();
}

StoreResult CompanionFixture::UnloadSettings() {
    m_parts.Note("unload settings");
    return {};
}

}  // namespace spellwick
