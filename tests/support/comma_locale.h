// A locale with a decimal comma, in force for the lifetime of the object, for C and C++ alike.
#pragma once

#include <locale>
#include <stdexcept>
#include <string>

#include "tests/support/comma_for_c.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {

class CommaLocale {
  public:
    CommaLocale() {
        m_streams = std::locale::global(std::locale(std::locale::classic(), new Comma));
        if (!SetCommaForC(m_folder.Path())) {
            std::locale::global(m_streams);
            throw std::runtime_error("no locale with a comma");
        }
    }
    ~CommaLocale() {
        std::locale::global(m_streams);
        TakeCommaBack();
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    CommaLocale(CommaLocale&&) = delete;
    CommaLocale& operator=(CommaLocale&&) = delete;

  private:
    class Comma : public std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    TemporaryFolder m_folder;
    std::locale m_streams;
};

}  // namespace spellwick
