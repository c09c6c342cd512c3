#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "hvhost/base/ExitStatus.h"

/// Ends a command. The text says what is wrong and names it, for example "data.csv: no such file".
/// The hint, which may be empty, says what to do. The detail is shown with -v. A log may get
/// another text, because other people may read it.
class CommandFault : public std::runtime_error
{
public:
    CommandFault(ExitStatus status, const std::string& text, std::string hint = {},
                 std::string detail = {})
        : std::runtime_error(text), _status(status), _hint(std::move(hint)),
          _detail(std::move(detail))
    {
    }
    ExitStatus status() const { return _status; }
    const std::string& hint() const { return _hint; }
    const std::string& detail() const { return _detail; }
    std::string logText() const { return _logText.empty() ? what() : _logText; }
    void setLogText(const std::string& text) { _logText = text; }

private:
    ExitStatus _status;
    std::string _hint;
    std::string _detail;
    std::string _logText;
};
