#pragma once

#include <string>

#include "ScoringExport.h"

/// How an operation ended. One that succeeded allocates nothing.
class SCORING_API MCStatus
{
public:
    /// Success.
    MCStatus() = default;
    /// A failure; the message says what is wrong, for the log and the user.
    static MCStatus Error(const std::string& message);

    bool IsError() const { return _error; }
    /// Empty for a success.
    const std::string& GetMessage() const { return _message; }

private:
    bool _error = false;
    std::string _message;
};
