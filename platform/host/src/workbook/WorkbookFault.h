#pragma once

#include <stdexcept>

/// A workbook cannot be read. The text has no file name.
class WorkbookFault : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
