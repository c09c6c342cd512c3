#pragma once

#include <string>

/// Folds the letter case of a name in the host's encoding, for comparisons.
std::u16string foldedName(const std::string& name);

/// A name for comparison with many others, ignoring letter case. ASCII names are compared directly:
/// folding thousands of names for each search takes seconds.
class WantedName
{
public:
    explicit WantedName(const std::string& name);
    bool is(const std::string& other) const;

private:
    std::string _name;
    std::u16string _folded;
    bool _isAscii;
};
