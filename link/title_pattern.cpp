#include "link/title_pattern.h"

namespace spellwick {

namespace {

TitlePattern::Result Fault(std::string text) {
    return {std::nullopt, std::move(text)};
}

}  // namespace

TitlePattern::Result TitlePattern::Read(std::string_view text) {
    TitlePattern pattern;
    while (!text.empty()) {
        const std::size_t open = text.find_first_of("{}");
        pattern.m_fixed.back().append(text.substr(0, open));
        if (open == std::string_view::npos) {
            break;
        }
        const std::size_t close = text.find('}', open);
        if (text[open] == '}' || close == std::string_view::npos) {
            return Fault("a brace has no partner");
        }
        const std::string_view word = text.substr(open, close - open + 1);
        text.remove_prefix(close + 1);
        if (!pattern.m_fields.empty() && pattern.m_fixed.back().empty()) {
            return Fault("no fixed text stands between two braces");
        }
        if (word == "{any}") {
            pattern.Add(Field::kAny);
        } else if (word == "{name}" && !pattern.m_name) {
            pattern.m_name = pattern.m_fields.size();
            pattern.Add(Field::kName);
        } else if (word == "{shard}" && !pattern.m_hasShard) {
            pattern.m_hasShard = true;
            pattern.Add(Field::kShard);
        } else if (word == "{name}" || word == "{shard}") {
            return Fault(std::string(word) + " stands there twice");
        } else {
            return Fault("\"" + std::string(word) + "\" is none of {name}, {shard} and {any}");
        }
    }
    if (pattern.m_fields.empty() && pattern.m_fixed.back().empty()) {
        return Fault("a form of a title is empty");
    }
    return {std::move(pattern), {}};
}

void TitlePattern::Add(Field field) {
    m_fields.push_back(field);
    m_fixed.emplace_back();
}

std::size_t TitlePattern::FixedText() const {
    std::size_t bytes = 0;
    for (const std::string& fixed : m_fixed) {
        bytes += fixed.size();
    }
    return bytes;
}

// What stands before the name is taken as short as can be, what stands behind it too. That leaves
// the longest name, and needs no second try. Without a name, the first field takes its part.
std::optional<TitleFields> TitlePattern::Match(std::string_view title) const {
    if (m_fields.empty()) {
        return title == m_fixed.front() ? std::optional(TitleFields{}) : std::nullopt;
    }
    const std::size_t longest = m_name.value_or(0);
    TitleFields fields;
    std::size_t from = 0;
    std::size_t to = title.size();
    if (!MatchBefore(longest, title, from, fields) ||
        !MatchBehind(longest, title, from, to, fields)) {
        return std::nullopt;
    }
    const std::string_view middle = title.substr(from, to - from);
    return Put(middle, m_fields[longest], fields) ? std::optional(fields) : std::nullopt;
}

bool TitlePattern::Put(std::string_view text, Field field, TitleFields& fields) {
    if (field == Field::kAny) {
        return true;
    }
    (field == Field::kName ? fields.name : fields.shard) = text;
    return text.find_first_not_of(' ') != std::string_view::npos;
}

// Moves `from` behind the fixed text before the field `count`.
bool TitlePattern::MatchBefore(std::size_t count, std::string_view title, std::size_t& from,
                               TitleFields& fields) const {
    if (!title.starts_with(m_fixed.front())) {
        return false;
    }
    from = m_fixed.front().size();
    for (std::size_t index = 0; index < count; ++index) {
        const std::string& fixed = m_fixed[index + 1];
        const std::size_t place = title.find(fixed, from + Least(m_fields[index]));
        if (place == std::string_view::npos ||
            !Put(title.substr(from, place - from), m_fields[index], fields)) {
            return false;
        }
        from = place + fixed.size();
    }
    return true;
}

// Moves `to` from the end before the fixed text behind the field `last`.
bool TitlePattern::MatchBehind(std::size_t last, std::string_view title, std::size_t from,
                               std::size_t& to, TitleFields& fields) const {
    if (to < from + m_fixed.back().size() || !title.ends_with(m_fixed.back())) {
        return false;
    }
    to -= m_fixed.back().size();
    for (std::size_t index = m_fields.size() - 1; index > last; --index) {
        const std::string& fixed = m_fixed[index];
        const std::size_t least = Least(m_fields[index]);
        if (to < from + fixed.size() + least) {
            return false;
        }
        const std::size_t place = title.rfind(fixed, to - least - fixed.size());
        if (place == std::string_view::npos || place < from) {
            return false;
        }
        const std::size_t behind = place + fixed.size();
        if (!Put(title.substr(behind, to - behind), m_fields[index], fields)) {
            return false;
        }
        to = place;
    }
    return true;
}

}  // namespace spellwick
