#include "link/game_clients.h"

#include <algorithm>

#include "text/ascii_case.h"

namespace spellwick {

namespace {

// Nobody's game has such a title, and searching it would take time.
constexpr std::size_t kLongestTitle = 4096;

constexpr std::size_t kNameColumn = 0;
constexpr std::size_t kX11Class = 1;
constexpr std::size_t kWindowsClass = 2;
constexpr std::size_t kInGame = 3;
constexpr std::size_t kAtLogin = 4;
constexpr std::size_t kShard = 5;
constexpr std::size_t kEnterColumn = 6;

std::vector<TitlePattern> ReadForms(const TableRow& row, std::size_t column) {
    std::vector<TitlePattern> forms;
    for (const std::string& text : Alternatives(row[column])) {
        TitlePattern::Result read = TitlePattern::Read(text);
        if (!read.pattern) {
            throw ValueFault{column, read.fault};
        }
        if (column == kInGame && !read.pattern->HasName()) {
            throw ValueFault{column, "there is no {name} in \"" + text + "\""};
        }
        if (column == kAtLogin && (read.pattern->HasName() || read.pattern->HasShard())) {
            throw ValueFault{column, "nobody is logged in there, so only {any} has a meaning"};
        }
        forms.push_back(*std::move(read.pattern));
    }
    return forms;
}

GameClient ReadClient(const TableRow& row) {
    GameClient client;
    client.name = row[kNameColumn];
    client.x11Classes = Alternatives(row[kX11Class]);
    client.windowsClasses = Alternatives(row[kWindowsClass]);
    client.inGame = ReadForms(row, kInGame);
    client.atLogin = ReadForms(row, kAtLogin);
    client.shard = row[kShard];
    client.enterBehindMacro = row[kEnterColumn] == "yes";
    if (client.name.empty()) {
        throw ValueFault{kNameColumn, "the name is missing"};
    }
    if (client.x11Classes.empty() && client.windowsClasses.empty()) {
        throw ValueFault{kX11Class, "neither this nor the next column names a class"};
    }
    if (client.inGame.empty()) {
        throw ValueFault{kInGame, "the form of the title is missing"};
    }
    if (client.shard.empty() || client.shard == "?") {
        throw ValueFault{kShard, "the word for an unknown shard is missing"};
    }
    if (row[kEnterColumn] != "yes" && row[kEnterColumn] != "no") {
        throw ValueFault{kEnterColumn, "\"" + row[kEnterColumn] + "\" is neither yes nor no"};
    }
    return client;
}

bool SameClass(std::string_view ours, std::string_view theirs, WindowClassKind kind) {
    return kind == WindowClassKind::kWindows || EndsInExe(ours) ? SameWithoutCase(ours, theirs)
                                                                : ours == theirs;
}

const std::vector<std::string>& ClassesOf(const GameClient& client, WindowClassKind kind) {
    return kind == WindowClassKind::kX11 ? client.x11Classes : client.windowsClasses;
}

// A round bracket begins the shard in the common form.
std::string WithSquareBrackets(std::string_view text) {
    std::string changed(text);
    std::ranges::replace(changed, '(', '[');
    std::ranges::replace(changed, ')', ']');
    return changed;
}

// The best form so far of one window.
struct Best {
    std::optional<KnownTitle> known;
    std::size_t fixedText = 0;
};

void TryForms(Best& best, const GameClient& client, const std::vector<TitlePattern>& forms,
              bool inGame, std::string_view title) {
    for (const TitlePattern& form : forms) {
        if (best.known && form.FixedText() <= best.fixedText) {
            continue;
        }
        if (std::optional<TitleFields> fields = form.Match(title)) {
            best.fixedText = form.FixedText();
            best.known = {&client, inGame, std::move(fields->name), std::move(fields->shard)};
        }
    }
}

}  // namespace

GameClients ReadGameClients(std::istream& input) {
    return ReadTable<GameClient>(input, kGameClientColumns.size(), ReadClient);
}

LoadedTable<GameClient> LoadGameClients(const std::optional<std::filesystem::path>& folder) {
    return LoadTable(folder, {kGameClientsFile, kGameClientColumns, DeliveredGameClients()},
                     &ReadGameClients);
}

std::optional<KnownTitle> FindGameClient(const std::vector<GameClient>& clients,
                                         const TopLevelWindow& window, WindowClassKind kind) {
    Best best;
    if (window.title.size() > kLongestTitle) {
        return std::nullopt;
    }
    for (const GameClient& client : clients) {
        if (HasClass(client, window, kind)) {
            TryForms(best, client, client.inGame, true, window.title);
            TryForms(best, client, client.atLogin, false, window.title);
        }
    }
    return best.known;
}

bool HasClass(const GameClient& client, const TopLevelWindow& window, WindowClassKind kind) {
    return std::ranges::any_of(ClassesOf(client, kind), [&](const std::string& ours) {
        return SameClass(ours, window.windowClass, kind) ||
               (!window.instance.empty() && SameClass(ours, window.instance, kind));
    });
}

std::vector<std::string> ClassesOf(const std::vector<GameClient>& clients, WindowClassKind kind) {
    std::vector<std::string> classes;
    for (const GameClient& client : clients) {
        for (const std::string& ours : ClassesOf(client, kind)) {
            if (std::ranges::find(classes, ours) == classes.end()) {
                classes.push_back(ours);
            }
        }
    }
    return classes;
}

std::string CommonTitle(std::string_view name, std::string_view shard) {
    return "Ultima Online - " + WithSquareBrackets(name) + " (" + WithSquareBrackets(shard) + ")";
}

}  // namespace spellwick
