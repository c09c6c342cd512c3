#pragma once

#include <string>

#include "ScoringExport.h"

/// The result of an operation. A success allocates no memory.
class SCORING_API MCStatus
{
public:
    /// Success.
    MCStatus() = default;
    /// A failure. `message` says what is wrong, UTF-8, for the log and the user.
    static MCStatus Error(const std::string& message);

    /// Whether the operation failed.
    bool IsError() const { return _error; }
    /// The message of a failure; empty for a success. The status owns the text.
    const std::string& GetMessage() const { return _message; }

private:
    bool _error = false;
    std::string _message;
};
