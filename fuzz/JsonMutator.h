#pragma once

#include <random>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

/// Changes a JSON text at one place so that it stays one. Bytes that are changed at random hardly
/// ever are one again, and then nothing behind the parser is tried.
class JsonMutator
{
public:
    explicit JsonMutator(unsigned seed) : _random(seed) {}
    /// Empty if the text is no JSON, or so deep that it is better left to changes of bytes.
    std::string mutate(const std::string& text);

private:
    using Json = nlohmann::json;

    void collect(Json& value);
    void change(Json& value);
    void changeScalar(Json& value);
    void changeText(std::string& text);
    void removeFrom(Json& container);
    void addTo(Json& container);
    std::size_t below(std::size_t count) { return _random() % count; }
    Json& any() { return *_values[below(_values.size())]; }

    std::minstd_rand _random;
    std::vector<Json*> _values;
    std::vector<std::string> _keys;
};
