#pragma once

#include <stdexcept>

#include "HostExport.h"

/// There is no Java virtual machine, or it does not start.
class HOST_API VexaJVMError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
