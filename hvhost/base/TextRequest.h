#pragma once

/// What the user requests for output as text.
struct TextRequest
{
    long long width = 0; ///< 0: that of the terminal
    bool groupsDigits = false;
};
