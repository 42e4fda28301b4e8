#pragma once

#include <unistd.h>

#include <utility>

/// An open file descriptor, closed with the object. Negative is none.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int number)
        : _number(number)
    {
    }
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept
        : _number(other.release())
    {
    }
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        if (this != &other) {
            reset();
            _number = other.release();
        }
        return *this;
    }

    [[nodiscard]] explicit operator bool() const { return _number >= 0; }
    [[nodiscard]] int number() const { return _number; }
    /// Gives the descriptor away: somebody else closes it.
    int release() { return std::exchange(_number, -1); }

private:
    void reset()
    {
        if (_number >= 0)
            ::close(_number);
    }

    int _number = -1;
};
