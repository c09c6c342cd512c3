#pragma once

#include <stdexcept>

#include "HostExport.h"

/// No Java virtual machine was found, or it cannot be started.
class HOST_API VexaJVMError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
