#include "practice/macro_file.h"

#include <QXmlStreamReader>
#include <array>

namespace spellwick::practice {
namespace {

// In the order of the spell books.
constexpr std::array<std::string_view, 17> kNecromancy{
    "Animate Dead",   "Blood Oath",      "Corpse Skin",      "Curse Weapon",    "Evil Omen",
    "Horrific Beast", "Lich Form",       "Mind Rot",         "Pain Spike",      "Poison Strike",
    "Strangle",       "Summon Familiar", "Vampiric Embrace", "Vengeful Spirit", "Wither",
    "Wraith Form",    "Exorcism"};
constexpr std::array<std::string_view, 10> kChivalry{
    "Cleanse by Fire", "Close Wounds", "Consecrate Weapon", "Dispel Evil",  "Divine Fury",
    "Enemy of One",    "Holy Light",   "Noble Sacrifice",   "Remove Curse", "Sacred Journey"};

constexpr int kCastSpell = 15;
constexpr int kFirstMagery = 62;
constexpr int kLastMagery = 125;
constexpr int kFirstNecromancy = 126;
constexpr int kFirstChivalry = 143;

std::string_view SpellOf(int subcode) {
    if (subcode >= kFirstMagery && subcode <= kLastMagery) {
        return MagerySpell(subcode - kFirstMagery + 1);
    }
    if (subcode >= kFirstNecromancy && subcode < kFirstChivalry) {
        return kNecromancy.at(static_cast<std::size_t>(subcode - kFirstNecromancy));
    }
    const auto ability = static_cast<std::size_t>(subcode - kFirstChivalry);
    return subcode >= kFirstChivalry && ability < kChivalry.size() ? kChivalry.at(ability)
                                                                   : std::string_view();
}

// The cap of a key by SDL's number; empty for one that no macro of ours has.
std::string CapOf(int key) {
    constexpr int kF1 = 1073741882;
    constexpr int kF12 = 1073741893;
    if (key >= kF1 && key <= kF12) {
        return "F" + std::to_string(key - kF1 + 1);
    }
    if (key <= ' ' || key > '~') {
        return {};
    }
    return QString(QChar(key)).toUpper().toStdString();
}

bool IsTrue(const QXmlStreamAttributes& attributes, const char* name) {
    return attributes.value(QLatin1String(name))
               .compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

}  // namespace

std::optional<std::vector<MacroKey>> ReadMacroFile(QIODevice& file) {
    QXmlStreamReader xml(&file);
    std::vector<MacroKey> keys;
    MacroKey macro;
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("macros")) {
        return std::nullopt;
    }
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == QLatin1String("macro")) {
            macro = {{.ctrl = IsTrue(attributes, "ctrl"),
                      .alt = IsTrue(attributes, "alt"),
                      .shift = IsTrue(attributes, "shift")},
                     CapOf(attributes.value(QLatin1String("key")).toInt()),
                     {}};
        } else if (xml.name() == QLatin1String("action") && !macro.key.empty() &&
                   attributes.value(QLatin1String("code")).toInt() == kCastSpell) {
            macro.spell = SpellOf(attributes.value(QLatin1String("subcode")).toInt());
            if (!macro.spell.empty()) {
                keys.push_back(macro);
            }
        }
    }
    return xml.hasError() ? std::nullopt : std::optional(keys);
}

}  // namespace spellwick::practice
