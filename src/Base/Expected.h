#pragma once

#include "Base/Failure.h"

#include <utility>
#include <variant>

/// What an operation gives, or why it gives nothing. Test it before the value is taken.
template <typename Value>
class [[nodiscard]] Expected
{
public:
    // Both convert: a function says `return value;` or `return Failure{...};`.
    Expected(Value value)
        : _outcome(std::in_place_index<0>, std::move(value))
    {
    }
    Expected(Failure failure)
        : _outcome(std::in_place_index<1>, std::move(failure))
    {
    }

    [[nodiscard]] explicit operator bool() const { return _outcome.index() == 0; }
    [[nodiscard]] Value& operator*() { return std::get<0>(_outcome); }
    [[nodiscard]] const Value& operator*() const { return std::get<0>(_outcome); }
    [[nodiscard]] Value* operator->() { return &std::get<0>(_outcome); }
    [[nodiscard]] const Value* operator->() const { return &std::get<0>(_outcome); }
    [[nodiscard]] const Failure& failure() const { return std::get<1>(_outcome); }
    /// Whether it failed in this way.
    [[nodiscard]] bool failedAs(Failure::Kind kind) const
    {
        return !*this && failure().kind == kind;
    }
    [[nodiscard]] Value valueOr(Value other) &&
    {
        return *this ? std::move(std::get<0>(_outcome)) : std::move(other);
    }

private:
    std::variant<Value, Failure> _outcome;
};

/// Whether something was done, or why not.
class [[nodiscard]] Status : public Expected<std::monostate>
{
public:
    Status()
        : Expected(std::monostate{})
    {
    }
    Status(Failure failure)
        : Expected(std::move(failure))
    {
    }
};
