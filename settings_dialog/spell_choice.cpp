#include "settings_dialog/spell_choice.h"

#include <QApplication>
#include <QKeyEvent>

namespace spellwick {

namespace {

constexpr QLatin1String kBeforeName(" - ");

QString EntryOf(const QAbstractItemModel& entries, int row) {
    return entries.index(row, 0).data().toString();
}

QString NameOf(const QString& entry) {
    const qsizetype end = entry.indexOf(kBeforeName);
    return end < 0 ? entry : entry.mid(end + kBeforeName.size());
}

}  // namespace

int NextSpellEntry(const QAbstractItemModel& entries, int from, const QString& typed) {
    const int count = entries.rowCount();
    const auto next = [&](auto&& textOf) {
        for (int step = 0; step < count; ++step) {
            const int row = (from + step) % count;
            if (textOf(EntryOf(entries, row)).startsWith(typed, Qt::CaseInsensitive)) {
                return row;
            }
        }
        return -1;
    };
    const int named = next([](const QString& entry) { return NameOf(entry); });
    return named >= 0 ? named : next([](const QString& entry) { return entry.trimmed(); });
}

void SpellList::keyboardSearch(const QString& search) {
    const bool goesOn =
        m_since.isValid() && !m_since.hasExpired(QApplication::keyboardInputInterval());
    m_since.start();
    if (!goesOn) {
        m_typed.clear();
    }
    if (m_typed.isEmpty() && search.trimmed().isEmpty()) {
        return;  // no name begins with a blank
    }
    const bool again = m_typed == search;
    if (!again) {
        m_typed += search;
    }
    const int count = model()->rowCount();
    // The first letter, and the same once more, go on from the entry that is chosen.
    const int step = again || m_typed == search ? 1 : 0;
    const int from = currentIndex().isValid() ? currentIndex().row() + step : 0;
    const int row = count == 0 ? -1 : NextSpellEntry(*model(), from % count, m_typed);
    if (row >= 0) {
        setCurrentIndex(model()->index(row, 0));
    }
}

void SpellChoice::MakeList() {
    if (!m_hasList) {
        m_hasList = true;
        setView(new SpellList(this));
    }
}

void SpellChoice::showPopup() {
    MakeList();
    ChoiceBox::showPopup();
}

void SpellChoice::keyPressEvent(QKeyEvent* event) {
    if (!event->text().isEmpty()) {
        MakeList();
    }
    ChoiceBox::keyPressEvent(event);
}

}  // namespace spellwick
