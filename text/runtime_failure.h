// The program's only exception: a value that does not fit, a bad subscript, a text that is not a
// number, a missing file. The guard hands an uncaught one to the end of the run.
#pragma once

#include <stdexcept>
#include <string>

namespace spellwick {

enum class FailureKind {
    kOverflow,      // a value does not fit its cell
    kSubscript,     // an index is outside its table
    kInvalidCall,   // an impossible argument, such as a negative count of characters
    kTypeMismatch,  // a text where a number is required
    kDivision,      // a division by zero
    kFile,          // a file is missing, ends too early, or cannot be opened
    kCancelled,     // a dialog was cancelled where that counts as a failure
};

// The name of a kind as an error report shows it, for example "Overflow".
const char* FailureName(FailureKind kind);

class RuntimeFailure : public std::runtime_error {
  public:
    // `what` says in words which value failed, or where.
    RuntimeFailure(FailureKind kind, const std::string& what)
        : std::runtime_error(what), m_kind(kind) {}

    FailureKind Kind() const { return m_kind; }

  private:
    FailureKind m_kind;
};

}  // namespace spellwick
