#pragma once

#include <stdexcept>

#include "HostExport.h"

/// What the host's data library throws: a dataset that cannot be opened, read or written. The text
/// is UTF-8, one sentence that names the thing.
class HOST_API ErrorText : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    ~ErrorText() override;
};
