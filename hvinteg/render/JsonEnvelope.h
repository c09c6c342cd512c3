#pragma once

#include <string>

/// A JSON object with numbered members, built from JSON texts. Charts and interactive views read
/// it. Member 0 is the data model.
class JsonEnvelope
{
public:
    /// Appends a member, unless its text is empty.
    void add(std::size_t number, const std::string& json);
    std::string text() const { return "{" + _members + "}"; }

private:
    std::string _members;
};
