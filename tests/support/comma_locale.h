// A locale that writes numbers with a comma, in force for the life of the object, for C and for C++
// alike.
#pragma once

#include <clocale>
#include <cstdlib>
#include <fstream>
#include <locale>
#include <stdexcept>
#include <string>

#include "tests/support/temporary_folder.h"

namespace spellwick {

class CommaLocale {
  public:
    CommaLocale() {
        m_streams = std::locale::global(std::locale(std::locale::classic(), new Comma));
        if (!SetForC()) {
            std::locale::global(m_streams);
            throw std::runtime_error("no locale with a comma");
        }
    }
    ~CommaLocale() {
        std::locale::global(m_streams);
        std::setlocale(LC_NUMERIC, "C");
#ifndef _WIN32
        unsetenv("LOCPATH");
#endif
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

#ifdef _WIN32
    static bool SetForC() {
        return std::setlocale(LC_NUMERIC, "German_Germany.1252") != nullptr;
    }
#else
    // The C library reads compiled locales alone, and a system need not have one with a comma. The
    // compiler complains of the categories that are missing, and writes this one all the same.
    bool SetForC() {
        const std::filesystem::path source = m_folder.Path() / "source";
        std::ofstream(source) << "LC_NUMERIC\n"
                                 "decimal_point \"<U002C>\"\n"
                                 "thousands_sep \"<U002E>\"\n"
                                 "grouping 3;3\n"
                                 "END LC_NUMERIC\n";
        const std::string command = "localedef -c -f ANSI_X3.4-1968 -i " + source.string() + " " +
                                    (m_folder.Path() / "comma").string() + " 2>" +
                                    (m_folder.Path() / "complaints").string();
        const int status = std::system(command.c_str());
        setenv("LOCPATH", m_folder.Path().c_str(), 1);
        return status != -1 && std::setlocale(LC_NUMERIC, "comma") != nullptr;
    }

    TemporaryFolder m_folder;
#endif
    std::locale m_streams;
};

}  // namespace spellwick
