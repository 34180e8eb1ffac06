#include "tests/support/thrown_exceptions.h"

#include <atomic>
#include <cstdlib>

#include <dlfcn.h>

namespace spellwick::testing_support {

namespace {

std::atomic<int> g_thrown{0};

}  // namespace

int ThrownExceptions() {
    return g_thrown;
}

}  // namespace spellwick::testing_support

// What the compiler makes of `throw`. A program's own function of that name comes before that of
// the library, for all libraries of the process.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" [[noreturn]] void __cxa_throw(void* failure, void* type, void (*destroy)(void*)) {
    using Throw = void (*)(void*, void*, void (*)(void*));
    ++spellwick::testing_support::g_thrown;
    static const auto kThrower = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
    kThrower(failure, type, destroy);
    std::abort();  // it does not return
}
