#pragma once

#include <string>

/// A name in the host's encoding in a form that is the same for all its spellings in upper and
/// lower case.
std::u16string foldedName(const std::string& name);

/// A name that many are held against, letter case apart. Most are ASCII, and are compared as they
/// stand: to fold each of them for each search takes seconds where there are thousands.
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
