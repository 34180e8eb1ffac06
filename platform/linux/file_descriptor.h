// Owner of a file descriptor.
#pragma once

#include <utility>

#include <unistd.h>

namespace spellwick {

class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : m_number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { Close(); }

    // -1 for none.
    int Number() const { return m_number; }
    explicit operator bool() const { return m_number >= 0; }

    // Gives up ownership of the descriptor.
    int Release() { return std::exchange(m_number, -1); }

    void Close() {
        if (m_number >= 0) {
            close(Release());
        }
    }

  private:
    int m_number = -1;
};

}  // namespace spellwick
