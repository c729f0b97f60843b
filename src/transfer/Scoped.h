#pragma once

#include <utility>

namespace korodbc {

/// Gives a variable a value until the scope ends, however it ends, and then another one: that from before unless
/// it is named.
template <class T>
class Scoped {
public:
    Scoped(T& variable, T value) : Scoped(variable, std::move(value), variable) {}
    Scoped(T& variable, T value, T after) : m_variable(variable), m_after(std::move(after))
    {
        m_variable = std::move(value);
    }
    ~Scoped() { m_variable = std::move(m_after); }
    Scoped(const Scoped&) = delete;
    Scoped& operator=(const Scoped&) = delete;

private:
    T& m_variable;
    T m_after;
};

} // namespace korodbc
