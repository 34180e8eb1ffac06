// A locale that writes numbers with a comma, made for the test and in force for its life, for C and
// for C++ alike.
#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <locale>
#include <stdexcept>
#include <string>

namespace spellwick {

class CommaLocale {
  public:
    CommaLocale() {
        Make();
        setenv("LOCPATH", m_folder.c_str(), 1);
        if (std::setlocale(LC_NUMERIC, "comma") == nullptr) {
            throw std::runtime_error("no locale with a comma");
        }
        m_streams = std::locale::global(std::locale(std::locale::classic(), new Comma));
        std::setlocale(LC_NUMERIC, "comma");
    }
    ~CommaLocale() {
        std::locale::global(m_streams);
        std::setlocale(LC_NUMERIC, "C");
        unsetenv("LOCPATH");
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
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

    // The C library reads compiled locales alone. The compiler complains of the categories that are
    // missing, and writes this one all the same.
    void Make() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "spellwick-locale-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
        std::ofstream(m_folder / "source") << "LC_NUMERIC\n"
                                              "decimal_point \"<U002C>\"\n"
                                              "thousands_sep \"<U002E>\"\n"
                                              "grouping 3;3\n"
                                              "END LC_NUMERIC\n";
        const std::string command = "localedef -c -i " + (m_folder / "source").string() +
                                    " -f ANSI_X3.4-1968 " + (m_folder / "comma").string() + " 2>" +
                                    (m_folder / "complaints").string();
        // Complaints alone give 1.
        if (const int status = std::system(command.c_str());
            !std::filesystem::exists(m_folder / "comma" / "LC_NUMERIC")) {
            throw std::runtime_error("localedef ended with " + std::to_string(status));
        }
    }

    std::filesystem::path m_folder;
    std::locale m_streams;
};

}  // namespace spellwick
