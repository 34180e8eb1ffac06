// Any bytes as a table of clients and as titles: a table has rows or a fault, what it knows has a
// name, and a row for any window knows that window.
#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>

#include "link/client_report.h"

using spellwick::FindGameClient;
using spellwick::GameClients;
using spellwick::ReadGameClients;
using spellwick::TopLevelWindow;
using spellwick::WindowClassKind;

namespace {

GameClients Read(const std::string& text) {
    std::istringstream input(text);
    return ReadGameClients(input);
}

void Check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

}  // namespace

// The first line is a title, the rest a table.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string bytes(data, data + size);
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const std::string title = bytes.substr(0, end);
    const std::string table = bytes.substr(std::min(end + 1, bytes.size()));
    const GameClients read = Read(table);
    Check(!read.fault || read.rows.empty());
    for (const char* windowClass : {"ClassicUO", "orionuo.exe", "mine"}) {
        const TopLevelWindow window{7, windowClass, {}, title};
        const auto known = FindGameClient(read.rows, window, WindowClassKind::kX11);
        Check(!known || !known->inGame || !known->name.empty());
        const auto row = ProposeRow(read.rows, window, WindowClassKind::kX11);
        const GameClients more = Read(spellwick::WithFirstRow("x, 0", row));
        Check(!more.fault || more.fault->row == 1);
        if (!read.fault && !more.fault) {
            const GameClients all = Read(spellwick::WithFirstRow(table, row));
            Check(all.fault.has_value() || all.rows.size() == read.rows.size() + 1);
        }
    }
    return 0;
}
