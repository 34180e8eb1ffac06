// The form of a window's title: fixed text, and {name}, {shard} and {any} for what changes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace spellwick {

struct TitleFields {
    std::string name;   // empty where the pattern has none
    std::string shard;  // empty where the pattern has none

    bool operator==(const TitleFields&) const = default;
};

class TitlePattern {
  public:
    struct Result;

    // Everything outside the braces is compared as it stands, case included. {name} and {shard}
    // stand once at most and are never blank; {any} may be empty. Fixed text stands between two of
    // them.
    static Result Read(std::string_view text);

    // What stands in the fields of a title of this form; nothing for any other title. Where a title
    // can be divided in more than one way, the longest name wins.
    [[nodiscard]] std::optional<TitleFields> Match(std::string_view title) const;

    // Bytes that are compared: how much a title tells that has this form.
    [[nodiscard]] std::size_t FixedText() const;

    [[nodiscard]] bool HasName() const { return m_name.has_value(); }
    [[nodiscard]] bool HasShard() const { return m_hasShard; }

  private:
    enum class Field { kName, kShard, kAny };

    static std::size_t Least(Field field) { return field == Field::kAny ? 0 : 1; }
    static bool Put(std::string_view text, Field field, TitleFields& fields);
    void Add(Field field);
    bool MatchBefore(std::size_t count, std::string_view title, std::size_t& from,
                     TitleFields& fields) const;
    bool MatchBehind(std::size_t last, std::string_view title, std::size_t from, std::size_t& to,
                     TitleFields& fields) const;

    // m_fixed[i] stands before m_fields[i], and the last behind them all.
    std::vector<std::string> m_fixed{std::string()};
    std::vector<Field> m_fields;
    std::optional<std::size_t> m_name;  // its place in m_fields
    bool m_hasShard = false;
};

struct TitlePattern::Result {
    std::optional<TitlePattern> pattern;
    std::string fault;  // why there is none, as part of a sentence
};

}  // namespace spellwick
