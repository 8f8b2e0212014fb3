#include "Descriptor.h"

#include "LocalPath.h"

#include <unistd.h>
#include <utility>

Descriptor::Descriptor(int number)
    : m_number(number)
{
}

Descriptor::~Descriptor()
{
    if (isOpen())
        ::close(m_number);
}

Descriptor::Descriptor(Descriptor&& other) noexcept
    : m_number(std::exchange(other.m_number, -1))
{
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

std::error_code Descriptor::close()
{
    return ::close(std::exchange(m_number, -1)) == 0 ? std::error_code() : lastError();
}
