// Any text through the number forms and entries: only a RuntimeFailure may be thrown.
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "model/cast_rules.h"
#include "model/castable_amount.h"
#include "model/purse_entries.h"
#include "text/characters.h"
#include "text/number_forms.h"

namespace {

template <typename Action>
void Try(Action&& action) {
    try {
        action();
    } catch (const spellwick::RuntimeFailure&) {
        return;
    }
}

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace spellwick;
    const std::string text(data, data + size);
    const double number = NumericPrefix(text);
    Require(!std::isnan(number));
    Require(PlainText(number).size() < 400);
    Require(StandardText(number).size() < 400);
    Try([&] { Require(ToI16(number) == RoundHalfEven(number)); });
    Try([&] { Require(ToI32(number) == RoundHalfEven(number)); });
    Try([&] { Require(RequiredNumber(text) == number); });
    const std::size_t count = CountCharacters(text);
    Require(count <= size);
    Require(FirstCharacters(text, count) == text);
    Require(LastCharacters(text, count) == text);
    Require(SkipCharacters(text, count).empty());
    Require(FirstCharacters(text, 4).size() <= 16);
    Try([&] { CommitCounterEntry(text, 100); });
    const i32 tithes = CommitTithesEntry(text, 100);
    Require(tithes >= 0 && tithes <= 10000);
    Try([&] { StockOfCounter(text); });
    Try([&] { StockOfCounter(CreditCounter(1, text)); });
    Try([&] { StockOfCounter(DebitCounter(1, text).value_or("0")); });
    Try([&] { CounterHighlight(1, text, kYellow); });
    Try([&] { TithesHighlight(1, text, kYellow); });
    return 0;
}
