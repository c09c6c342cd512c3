#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>

#include <nlohmann/json.hpp>

#include "CFDatum.h"
#include "JobError.h"

namespace EmbeddedHV {

using Json = nlohmann::ordered_json;

/// Receives the id and the parts of a message. sentenceOf composes its text.
using MessageSink = std::function<void(const std::string& id, const FaultParts& parts)>;

/// The configuration of a step, or an object inside it. A setting that is null counts as absent.
/// All readers throw JobError that names the step and the path of the setting.
class Settings
{
public:
    /// Borrows the object. `path` is empty for the configuration itself.
    Settings(const Json& object, std::string step, std::string path = {});

    bool has(const std::string& key) const { return find(key) != nullptr; }
    std::optional<std::string> text(const std::string& key) const;
    std::string neededText(const std::string& key) const;
    std::optional<bool> flag(const std::string& key) const;
    /// Numbers beyond 64 bits become the largest integer.
    std::optional<std::int64_t> integer(const std::string& key) const;
    /// An integer datum for a 64-bit integer without a decimal point, otherwise a real datum.
    std::optional<CFDatum> number(const std::string& key) const;
    Settings neededObject(const std::string& key) const;
    /// The list under a key. Throws if it is absent.
    const Json& neededList(const std::string& key) const;
    /// An element of a list as an object.
    Settings objectAt(const Json& list, const std::string& key, std::size_t index) const;
    /// An element of a list as a text.
    std::string textAt(const Json& list, const std::string& key, std::size_t index) const;

    /// Reports each setting that no reader asked for. It is probably misspelled.
    void reportOthers(const MessageSink& message) const;

    /// Throws JobError about the setting. `parts` has what the caller knows beyond the setting.
    [[noreturn]] void refuse(const std::string& key, const std::string& problem,
                             FaultParts parts = {}) const;
    /// The full path of a key.
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
