// Conversion of data that older versions saved; runs once in each start, before the spell table
// exists.
#pragma once

namespace spellwick {

class OldDataConversion {
  public:
    virtual ~OldDataConversion() = default;

    virtual void ConvertOldData() = 0;
};

}  // namespace spellwick
