#pragma once

#include <cstdlib>
#include <optional>
#include <string>

#include "MultiByte.h"

/// Sets an environment variable during its lifetime. Without a value, unsets it.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char* name, const std::optional<std::string>& value) : _name(name)
    {
        if (const char* before = std::getenv(name))
            _before = before;
        set(value);
    }
    ~ScopedEnvironment() { set(_before); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void set(const std::optional<std::string>& value) const
    {
        if (value)
            setenv(_name, value->c_str(), 1);
        else
            unsetenv(_name);
    }

    const char* _name;
    std::optional<std::string> _before;
};

/// Sets the host's code page during its lifetime.
class ScopedCodePage
{
public:
    explicit ScopedCodePage(const std::string& name) : _before(VEXAMBDefaultCodePage())
    {
        SetDefaultCodePage(name);
    }
    ~ScopedCodePage() { SetDefaultCodePage(_before); }
    ScopedCodePage(const ScopedCodePage&) = delete;
    ScopedCodePage& operator=(const ScopedCodePage&) = delete;

private:
    const std::string _before;
};
