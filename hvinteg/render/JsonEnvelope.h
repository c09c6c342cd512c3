#pragma once

#include <string>

/// A JSON object of numbered members, put together from texts that are JSON already: what charts
/// and interactive views take. Member 0 is the data model.
class JsonEnvelope
{
public:
    /// Appends a member; one without text is left out.
    void add(std::size_t number, const std::string& json);
    std::string text() const { return "{" + _members + "}"; }

private:
    std::string _members;
};
