#pragma once

#include <string>
#include <utility>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

/// The settings that the engine starts with. All strings are UTF-8; paths are spelled as the host
/// spells them. Not synchronised.
///
/// The engine reads these properties: "ae.temp.path" (folder for spill files), "af.temp.path"
/// (folder for scratch files of the file layer) and "mmr.threads" (largest number of threads for a
/// query). "af.io.cache.size" (bytes of an I/O buffer) is for engines that buffer files themselves.
/// The engine keeps other keys and ignores them.
class ENGINE_API EHVAppSetting
{
public:
    /// `analyticRoot` is the root folder of the engine's file system, `componentsPath` the folder
    /// of its components. `locale` is the locale of its messages, for example "en_US". Nothing is
    /// checked here.
    EHVAppSetting(std::string analyticRoot, std::string componentsPath, std::string locale);
    /// Frees the settings. A service manager that was made from them does not refer to them.
    ~EHVAppSetting();

    /// Sets a property. If the key exists, the new value replaces the old one.
    void addProperty(const std::string& key, const std::string& value);

    /// The root folder of the engine's file system.
    const std::string& analyticRoot() const { return _analyticRoot; }
    /// The folder of the engine's components.
    const std::string& componentsPath() const { return _componentsPath; }
    /// The locale of the engine's messages.
    const std::string& locale() const { return _locale; }
    /// The value of a property, or null if it is not set. The pointer is valid until the next
    /// addProperty.
    const std::string* property(const std::string& key) const;
    /// All properties, in the order in which their keys were first added.
    const std::vector<std::pair<std::string, std::string>>& properties() const
    {
        return _properties;
    }

private:
    std::string _analyticRoot;
    std::string _componentsPath;
    std::string _locale;
    std::vector<std::pair<std::string, std::string>> _properties;
};

} // namespace EmbeddedHV
