#pragma once

#include <system_error>

/// An open file or folder of the system, closed with this object. For this folder's sources only.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes over what open() gave, be it none.
    explicit Descriptor(int number);
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int number() const { return m_number; }

    /// Closes it now, to learn what the destructor cannot tell: that something was not written.
    [[nodiscard]] std::error_code close();

private:
    int m_number = -1;
};
