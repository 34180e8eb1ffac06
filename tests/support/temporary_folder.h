// A new folder under the system's temporary one, removed with the object.
#pragma once

#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>

namespace spellwick {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        constexpr int kTries = 100;
        std::random_device random;
        for (int tried = 0; m_path.empty(); ++tried) {
            const std::filesystem::path path =
                std::filesystem::temp_directory_path() / ("spellwick-" + std::to_string(random()));
            if (std::filesystem::create_directory(path)) {
                m_path = path;
            } else if (tried == kTries) {
                throw std::runtime_error("no temporary folder to be had");
            }
        }
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

  private:
    std::filesystem::path m_path;
};

}  // namespace spellwick
