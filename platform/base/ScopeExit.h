#pragma once

#include <utility>

namespace base {

/// Calls a function on every exit from a scope, for example to restore what the scope changed. The
/// function must not throw.
///
///     const base::ScopeExit restore([&] { --_depth; });
template <class Function>
class [[nodiscard]] ScopeExit
{
public:
    explicit ScopeExit(Function function) : _function(std::move(function)) {}
    ~ScopeExit() { _function(); }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

private:
    Function _function;
};

} // namespace base
