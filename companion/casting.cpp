#include "companion/casting.h"

#include <chrono>

#include "companion/client_target.h"
#include "link/keystroke_names.h"
#include "model/cast_rules.h"
#include "model/spell_lookup.h"
#include "text/log.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr i16 kCtrlAlone = 2;
constexpr std::chrono::milliseconds kSlowFrame{250};

MacroStrokes MacroOf(const SharedState& state, i32 number) {
    return {state.MacroAlt(number), state.MacroCtrl(number), state.MacroShift(number),
            state.MacroKey(number)};
}

std::string SpellString(const SharedState& state, i32 row, const EnterRules& enter) {
    return SpellKeystrokes(MacroOf(state, row + 1),
                           {.sendSpellText = state.SendSpellText,
                            .spellText = state.Spells(row).SpellText,
                            .sendSpellSuffix = state.SendSpellSuffix,
                            .suffix = state.SpellTextSuffix},
                           enter);
}

}  // namespace

BoxAnswer Casting::ShowBox(const Box& box) {
    m_parts.display.Tell();
    return m_services.boxes.Show(box);
}

void Casting::KeepPress(i16 button, i16 shift) {
    m_last.LastMouseButton = button;
    m_last.LastMouseShift = shift;
}

// Hints come last: none stands behind a box, or turns up while keys are typed.
void Casting::CastSpell(i32 slot) {
    Ways ways;
    Cast(slot, ways);
    for (const WayHint& way : ways) {
        m_parts.display.Tell();
        m_parts.display.TheForms().ShowWay(way);
    }
}

void Casting::Cast(i32 slot, Ways& ways) {
    const i32 row = m_parts.page.SpellAtSlot(slot);
    m_state.CurrentSpell = ToI16(row);
    if (NumericPrefix(Slot(slot).chance) == 0.0 && !WarnOfNoChance(row, ways)) {
        return;
    }
    if (m_last.LastMouseShift == kCtrlAlone) {
        CreditSpell(row);
        return;
    }
    if (!IsRealServer(m_state.ServerName)) {
        m_parts.player.ShowClientNotFound();
        return;
    }
    if (m_state.Spellbook(row) == 1 && !AskForBook(row)) {
        return;
    }
    if (RefuseForStock(slot, row, ways)) {
        return;
    }
    // ODDITY(shared-send-string): of two casts within one pause the second is sent twice and the
    // first not at all; kept because there is one string, and the pause is a tenth of a second.
    m_last.SendString = SpellString(m_state, row, RulesOfEnter());
    m_last.BareString = SpellKeystrokes(MacroOf(m_state, row + 1), {}, RulesOfEnter());
    CommitEntries();
    BringClientForward();
    if (!SendKeys()) {
        return;
    }
    // ODDITY(debit-after-switch): when character or bag change in the pause, the new ones pay; kept
    // because the debit works on the counters as they stand after the keys.
    const bool pays = m_services.payment.PaysAtClick();
    m_services.payment.NoteClick(row, pays);
    if (pays) {
        DebitSpell(row);
        m_parts.timers.StartTimer(row);
        m_parts.display.changes.timers = true;
    }
}

// The tests for a spell that shows no chance. False when the cast ends here.
bool Casting::WarnOfNoChance(i32 row, Ways& ways) {
    const SpellRecord& spell = m_state.Spells(row);
    if (spell.MinimumSkill > GetSkill(m_state, row)) {
        if (const auto refusal = SkillRefusal(row)) {
            ShowBox({.text = std::string(*refusal), .icon = BoxIcon::kInformation});
            ways.push_back(SkillHint(m_state, row));
        }
        return false;
    }
    if (spell.Mana > m_state.Intelligence) {
        ShowBox({.text = std::string(kIntelligenceWarning), .icon = BoxIcon::kInformation});
        ways.push_back(IntelligenceHint(row));
    }
    if (m_state.AssistLinked && spell.Mana > m_state.CurrentMana) {
        ShowBox({.text = std::string(kManaWarning), .icon = BoxIcon::kInformation});
    }
    return true;
}

bool Casting::AskForBook(i32 row) {
    const BoxAnswer answer = ShowBox({.text = std::string(kBookQuestion),
                                      .icon = BoxIcon::kQuestion,
                                      .buttons = BoxButtons::kYesNo});
    if (answer != BoxAnswer::kYes) {
        return false;
    }
    m_state.Spellbook(row) = 0;
    m_parts.page.Update();
    return true;
}

bool Casting::RefuseForStock(i32 slot, i32 row, Ways& ways) {
    if (NumericPrefix(Slot(slot).amount) >= 1.0 || !m_state.DisableCasting) {
        return false;
    }
    ShowBox({.text = std::string(StockRefusal(m_state.Spells(row).School)),
             .icon = BoxIcon::kExclamation});
    ways.push_back(StockHint(m_state, row));
    return true;
}

void Casting::CommitEntries() {
    m_parts.display.Tell();
    m_parts.display.TheForms().FocusPage();
    m_parts.purse.CommitPending();
    m_parts.tithes.Commit();
}

void Casting::BringClientForward() {
    ClientWindows& clients = m_services.clients;
    Forms& forms = m_parts.display.TheForms();
    m_parts.display.Tell();
    const bool came = clients.SetForegroundWindow(m_state.ClientWindow);
    // What became of it is looked at after the pause: the focus may only be late.
    static_cast<void>(clients.SetFocus(m_state.ClientWindow));
    forms.Pause();
    // When a message box has just been answered, a desktop may give the front back to our own
    // window only now, after it was given away.
    if (came && !ClientIsInFront() && clients.SetForegroundWindow(m_state.ClientWindow)) {
        static_cast<void>(clients.SetFocus(m_state.ClientWindow));
        forms.Pause();
    }
    // A client that draws a few frames a second learns of its focus behind the pause, and takes the
    // keys that are down then for held ones. One that does not answer gets them all the same.
    if (ClientIsInFront()) {
        static_cast<void>(clients.WaitUntilRead(m_state.ClientWindow, kSlowFrame));
    }
}

bool Casting::ClientIsInFront() {
    return m_services.clients.IsForegroundWindow(m_state.ClientWindow) &&
           m_services.clients.HasKeyboard(m_state.ClientWindow);
}

// Of the client whose window was found last.
EnterRules Casting::RulesOfEnter() const {
    const GameClient* client = m_services.games == nullptr ? nullptr : m_services.games->Current();
    return {.behindKey = client == nullptr || client->enterBehindMacro,
            .opensChat = m_state.EnterOpensChat};
}

bool Casting::SendKeys() {
    ClientTarget target(m_services.clients, m_state);
    SendResult sent;
    bool spoken = m_last.BareString != m_last.SendString;
    if (target.MayType()) {
        sent = m_services.keys.SendKeys(m_last.SendString, true, target);
        if (!sent.missing.empty() && spoken) {
            spoken = false;
            LogLine("the spoken text was left out: the keyboard has no key and no free place for " +
                        sent.missing,
                    LogTopic::kDropped);
            sent = m_services.keys.SendKeys(m_last.BareString, true, target);
        }
    } else {
        sent.stopped = true;
    }
    LogTyping(sent, spoken);
    if (sent.stopped) {
        const bool begun = sent.strokes > 0;
        m_parts.display.Tell();
        m_parts.display.TheForms().ShowHint(std::string(begun ? kUnfinishedHint : kNotInFrontHint));
        return begun;
    }
    // ODDITY(untyped-cast-pays): a cast whose keys cannot be typed, as on a keyboard without an Alt
    // key, costs its reagents all the same; kept because the program cannot tell what the game has
    // made of the keys either. The log says so.
    if (!sent.Ok()) {
        LogLine("the game's keys were not typed: " + sent.error);
    }
    return true;
}

// Never the spoken text: others may read the log.
void Casting::LogTyping(const SendResult& sent, bool spoken) const {
    LogEvent(LogTopic::kTyped, [&] {
        const std::string keys = KeystrokeNames(m_last.BareString);
        if (!sent.Ok()) {
            return "not typed: " + keys + " (" + sent.error + ")";
        }
        if (sent.stopped) {
            return sent.strokes > 0 ? "not typed to the end, the game lost the keyboard: " + keys
                                    : "not typed, the game does not have the keyboard: " + keys;
        }
        return keys + (spoken ? ", with a spoken text" : "");
    });
}

void Casting::DebitSpell(i32 row) {
    RequireSpellRow(row);
    const SpellRecord& spell = m_state.Spells(row);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        m_last.UndoAmounts(reagent) = 0;
        const i32 need = spell.Reagents(reagent);
        if (const auto text = DebitCounter(need, m_parts.purse.CounterText(reagent))) {
            m_parts.purse.WriteStock(reagent, *text);
            m_last.UndoAmounts(reagent) = ToI16(need);
        }
    }
    // ODDITY(undo-keeps-tithes): the tithes of the last Paladin ability stay in the undo through
    // later reagent spells; kept because only the reagent cells are cleared at a debit.
    const i32 points = spell.Reagents(kTithes);
    if (points != 0 && NumericPrefix(m_parts.display.screen.tithesEdit) > 0.0) {
        m_state.CurrentTithing = ToI32(static_cast<double>(m_state.CurrentTithing) - points);
        m_parts.tithes.Show(m_state.CurrentTithing);
        m_last.UndoAmounts(kTithes) = ToI16(points);
    }
    m_parts.page.UpdateAmounts();
}

void Casting::CreditSpell(i32 row) {
    RequireSpellRow(row);
    const SpellRecord& spell = m_state.Spells(row);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        if (spell.Reagents(reagent) != 0) {
            m_parts.purse.WriteStock(reagent, CreditCounter(spell.Reagents(reagent),
                                                            m_parts.purse.CounterText(reagent)));
        }
    }
    // ODDITY(credit-tithes-label): a credit raises the tithes shown but not the points counted;
    // kept because the number is only a reminder until the next real write of it.
    m_parts.tithes.CreditLabel(spell.Reagents(kTithes));
    m_parts.page.UpdateAmounts();
}

void Casting::Undo() {
    // ODDITY(undo-again): each press adds the last debit's amounts once more; kept because the
    // button repeats the last debit in reverse and nothing else.
    // ODDITY(undo-other-bag): the amounts go to the bag in use, which need not be the one that
    // paid; kept because the button works on the counters as they stand.
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        m_parts.purse.WriteStock(reagent, CreditCounter(m_last.UndoAmounts(reagent),
                                                        m_parts.purse.CounterText(reagent)));
    }
    // ODDITY(undo-tithes): Undo raises the tithes shown but not the points counted; kept because
    // the label alone is written, until the next write of the points.
    m_parts.tithes.CreditLabel(m_last.UndoAmounts(kTithes));
    m_parts.page.UpdateAmounts();
}

void Casting::Meditate() {
    if (m_parts.player.FindClient()) {
        BringClientForward();
        m_last.SendString =
            MeditationKeystrokes(MacroOf(m_state, kMeditationMacro), RulesOfEnter());
        m_last.BareString = m_last.SendString;
        static_cast<void>(SendKeys());
    } else {
        m_parts.player.ShowClientNotFound();
    }
    m_parts.display.Tell();
    m_parts.display.TheForms().FocusHelp();
}

}  // namespace spellwick
