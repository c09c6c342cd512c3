#pragma once

#include <stdexcept>

#include "HostExport.h"

/// Exception of the host's data library: a dataset cannot be opened, read or written. The text is
/// UTF-8: one sentence that names the dataset or file.
class HOST_API ErrorText : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    ~ErrorText() override;
};
