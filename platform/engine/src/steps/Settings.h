#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>

#include <nlohmann/json.hpp>

#include "CFDatum.h"

namespace EmbeddedHV {

using Json = nlohmann::ordered_json;

/// Receives the id and the text of a message.
using MessageSink = std::function<void(const std::string& id, const std::string& text)>;

/// The configuration of a step, or an object inside of it, read setting by setting. A setting that
/// is null counts as absent. All readers throw JobError that names the step and the setting's path.
class Settings
{
public:
    /// The object is borrowed. `path` is empty for the configuration itself.
    Settings(const Json& object, std::string step, std::string path = {});

    bool has(const std::string& key) const { return find(key) != nullptr; }
    std::optional<std::string> text(const std::string& key) const;
    std::string neededText(const std::string& key) const;
    std::optional<bool> flag(const std::string& key) const;
    /// A number beyond 64 bits counts as the largest one.
    std::optional<std::int64_t> integer(const std::string& key) const;
    /// An integer datum for a whole number of 64 bits that is written without a point, else a real
    /// one.
    std::optional<CFDatum> number(const std::string& key) const;
    Settings neededObject(const std::string& key) const;
    /// The list under a key; throws if it is absent.
    const Json& neededList(const std::string& key) const;
    /// An element of a list as an object, and as a text.
    Settings objectAt(const Json& list, const std::string& key, std::size_t index) const;
    std::string textAt(const Json& list, const std::string& key, std::size_t index) const;

    /// Tells of each setting that nobody asked for: a slip of the pen, most likely.
    void reportOthers(const MessageSink& message) const;

    [[noreturn]] void refuse(const std::string& key, const std::string& problem) const;
    /// The whole path of a key.
    std::string pathOf(const std::string& key) const;
    const std::string& step() const { return _step; }

private:
    const Json* find(const std::string& key) const;
    std::string textOf(const Json& value, const std::string& key) const;
    [[noreturn]] void refuseType(const std::string& path, const char* wanted,
                                 const Json& found) const;
    [[noreturn]] void refuseMissing(const std::string& key) const;

    const Json& _object;
    std::string _step;
    std::string _path;
    mutable std::set<std::string> _asked;
};

} // namespace EmbeddedHV
