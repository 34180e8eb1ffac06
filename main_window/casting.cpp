#include "main_window/casting.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>

#include "link/keystroke_string.h"
#include "model/cast_rules.h"
#include "text/number_forms.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr i16 kCtrlAlone = 2;
constexpr int kWaitMs = 100;

Macro MacroOf(const SharedState& state, i32 number) {
    return {state.MacroAlt(number), state.MacroCtrl(number), state.MacroShift(number),
            state.MacroKey(number)};
}

std::string SpellString(const SharedState& state, i32 row) {
    return SpellKeystrokes(MacroOf(state, row + 1), {.sendSpellText = state.SendSpellText,
                                                     .spellText = state.Spells(row).SpellText,
                                                     .sendSpellSuffix = state.SendSpellSuffix,
                                                     .suffix = state.SpellTextSuffix});
}

}  // namespace

Casting::Casting(const MainWindowServices& services, Parts parts, QObject* parent)
    : QObject(parent), m_services(services), m_state(services.state), m_parts(parts) {
    m_waitTimer.setObjectName(QStringLiteral("Timer1(0)"));
    m_waitTimer.setTimerType(Qt::PreciseTimer);
    m_waitTimer.setInterval(kWaitMs);
    connect(&m_waitTimer, &QTimer::timeout, &m_waitTimer, &QTimer::stop);
}

void Casting::ShowClientNotFound() {
    m_services.boxes.Show({.text = "Could not find Ultima Online.", .icon = BoxIcon::kCritical});
}

void Casting::CastSpell(int slot) {
    const i32 row = m_parts.page.SpellAtSlot(slot);
    m_state.CurrentSpell = ToI16(row);
    const std::size_t at = static_cast<std::size_t>(slot);
    if (NumericPrefix(ToText(m_parts.page.LabelChance[at]->text())) == 0.0 &&
        !WarnOfNoChance(row)) {
        return;
    }
    if (m_state.LastMouseShift == kCtrlAlone) {
        CreditSpell(row);
        return;
    }
    if (m_state.ServerName.empty() || m_state.ServerName == "?") {
        ShowClientNotFound();
        return;
    }
    if (m_state.Spellbook(row) == 1 && !AskForBook(row)) {
        return;
    }
    if (RefuseForStock(slot, row)) {
        return;
    }
    // ODDITY(shared-send-string): of two casts within one pause the second is sent twice and the
    // first not at all; kept because there is one string, and the pause is a tenth of a second.
    m_state.SendString = SpellString(m_state, row);
    CommitEntries();
    SendToClient();
    // ODDITY(debit-after-switch): when character or bag change in the pause, the new ones pay; kept
    // because the debit works on the counters as they stand after the keys.
    if (!m_state.AssistLinked) {
        DebitSpell(row);
        m_services.timers.StartTimer(row);
    }
}

// The tests for a spell that shows no chance. False when the cast ends here.
bool Casting::WarnOfNoChance(i32 row) {
    const SpellRecord& spell = m_state.Spells(row);
    if (spell.MinimumSkill > GetSkill(m_state, row)) {
        if (const auto refusal = SkillRefusal(row)) {
            m_services.boxes.Show({.text = std::string(*refusal), .icon = BoxIcon::kInformation});
        }
        return false;
    }
    if (spell.Mana > m_state.Intelligence) {
        m_services.boxes.Show(
            {.text = std::string(kIntelligenceWarning), .icon = BoxIcon::kInformation});
    }
    if (m_state.AssistLinked && spell.Mana > m_state.CurrentMana) {
        m_services.boxes.Show({.text = std::string(kManaWarning), .icon = BoxIcon::kInformation});
    }
    return true;
}

bool Casting::AskForBook(i32 row) {
    const BoxAnswer answer = m_services.boxes.Show({.text = std::string(kBookQuestion),
                                                    .icon = BoxIcon::kQuestion,
                                                    .buttons = BoxButtons::kYesNo});
    if (answer != BoxAnswer::kYes) {
        return false;
    }
    m_state.Spellbook(row) = 0;
    m_parts.page.UpdatePage();
    return true;
}

bool Casting::RefuseForStock(int slot, i32 row) {
    const QString amount = m_parts.page.LabelAmount[static_cast<std::size_t>(slot)]->text();
    if (NumericPrefix(ToText(amount)) >= 1.0 || !m_state.DisableCasting) {
        return false;
    }
    m_services.boxes.Show({.text = std::string(StockRefusal(m_state.Spells(row).School)),
                           .icon = BoxIcon::kExclamation});
    return true;
}

void Casting::CommitEntries() {
    m_parts.page.CheckCircle[0]->setFocus(Qt::OtherFocusReason);
    m_parts.purse.CommitPending();
    if (m_parts.tithes.IsEditing()) {
        m_parts.tithes.LostFocus();
    }
}

void Casting::SendToClient() {
    BringClientForward();
    m_services.keys.SendKeys(m_state.SendString, true);
}

void Casting::BringClientForward() {
    ClientWindows& clients = m_services.clients;
    const bool came = clients.SetForegroundWindow(m_state.ClientWindow);
    clients.SetFocus(m_state.ClientWindow);
    WaitTick();
    // When a box has just been answered, a desktop may give the front back to our own window only
    // now, after it was given away.
    if (came && !clients.IsForegroundWindow(m_state.ClientWindow) &&
        clients.SetForegroundWindow(m_state.ClientWindow)) {
        clients.SetFocus(m_state.ClientWindow);
        WaitTick();
    }
}

void Casting::WaitTick() {
    m_waitTimer.start();
    while (m_waitTimer.isActive()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    // An outer pause that ends with this one must not wait for one more event.
    QAbstractEventDispatcher::instance()->wakeUp();
}

void Casting::DebitSpell(i32 row) {
    RequireSpellRow(row);
    const SpellRecord& spell = m_state.Spells(row);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        m_state.UndoAmounts(reagent) = 0;
        const i32 need = spell.Reagents(reagent);
        if (const auto text = DebitCounter(need, m_parts.purse.CounterText(reagent))) {
            m_parts.purse.SetCounterText(reagent, *text);
            m_parts.purse.StoreCounter(reagent);
            m_state.UndoAmounts(reagent) = ToI16(need);
        }
    }
    // ODDITY(undo-keeps-tithes): the tithes of the last Paladin ability stay in the undo through
    // later reagent spells; kept because only the reagent cells are cleared at a debit.
    const i32 points = spell.Reagents(kTithes);
    if (points != 0 && NumericPrefix(ToText(m_parts.tithes.TxtTithes->text())) > 0.0) {
        m_state.CurrentTithing = ToI32(static_cast<double>(m_state.CurrentTithing) - points);
        m_parts.tithes.ShowEverywhere(PlainText(m_state.CurrentTithing));
        m_state.UndoAmounts(kTithes) = ToI16(points);
    }
    m_parts.page.UpdateAmounts();
}

void Casting::CreditSpell(i32 row) {
    RequireSpellRow(row);
    const SpellRecord& spell = m_state.Spells(row);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        if (spell.Reagents(reagent) != 0) {
            m_parts.purse.SetCounterText(
                reagent,
                CreditCounter(spell.Reagents(reagent), m_parts.purse.CounterText(reagent)));
            m_parts.purse.StoreCounter(reagent);
        }
    }
    // ODDITY(credit-tithes-label): a credit raises the tithes shown but not the points counted;
    // kept because the number is only a reminder until the next real write of it.
    m_parts.tithes.ShowOnLabel(
        CreditCounter(spell.Reagents(kTithes), ToText(m_parts.tithes.LabelTithes->text())));
    m_parts.page.UpdateAmounts();
}

void Casting::Undo() {
    // ODDITY(undo-again): each press adds the last debit's amounts once more; kept because the
    // button repeats the last debit in reverse and nothing else.
    // ODDITY(undo-other-bag): the amounts go to the bag in use, which need not be the one that
    // paid; kept because the button works on the counters as they stand.
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        m_parts.purse.SetCounterText(reagent, CreditCounter(m_state.UndoAmounts(reagent),
                                                            m_parts.purse.CounterText(reagent)));
        m_parts.purse.StoreCounter(reagent);
    }
    // ODDITY(undo-tithes): Undo raises the tithes shown but not the points counted; kept because
    // the label alone is written, until the next write of the points.
    m_parts.tithes.ShowOnLabel(
        CreditCounter(m_state.UndoAmounts(kTithes), ToText(m_parts.tithes.LabelTithes->text())));
    m_parts.page.UpdateAmounts();
}

void Casting::Meditate() {
    if (m_parts.watch.FindClient()) {
        BringClientForward();
        m_state.SendString = MeditationKeystrokes(MacroOf(m_state, kMeditationMacro));
        m_services.keys.SendKeys(m_state.SendString, true);
    } else {
        ShowClientNotFound();
    }
    m_parts.helpButton.setFocus(Qt::OtherFocusReason);
}

}  // namespace spellwick
