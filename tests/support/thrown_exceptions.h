// Counts the exceptions that a test program throws. The count is there in programs that link
// spellwick_thrown_exceptions.
#pragma once

namespace spellwick::testing_support {

// By all threads and libraries, since the start of the program.
int ThrownExceptions();

}  // namespace spellwick::testing_support
