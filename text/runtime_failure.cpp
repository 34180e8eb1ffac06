#include "text/runtime_failure.h"

namespace spellwick {

const char* FailureName(FailureKind kind) {
    switch (kind) {
        case FailureKind::kOverflow:
            return "Overflow";
        case FailureKind::kSubscript:
            return "Subscript out of range";
        case FailureKind::kInvalidCall:
            return "Invalid call or argument";
        case FailureKind::kTypeMismatch:
            return "Type mismatch";
        case FailureKind::kDivision:
            return "Division by zero";
        case FailureKind::kFile:
            return "File error";
        case FailureKind::kCancelled:
            return "Cancelled";
    }
    return "Failure";
}

}  // namespace spellwick
