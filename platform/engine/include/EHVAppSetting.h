#pragma once

#include <string>
#include <utility>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

/// What the engine is started with. Paths are UTF-8 in the host's spelling.
///
/// Properties that the engine reads: "ae.temp.path" (spill files), "af.temp.path" (scratch files of
/// the file layer), "mmr.threads" (most threads of a query). "af.io.cache.size" (bytes of an I/O
/// buffer) is for engines that buffer files themselves. Other keys are kept and ignored, too.
class ENGINE_API EHVAppSetting
{
public:
    /// The root of the engine's file system, the folder of its components, and the locale of its
    /// messages, as in "en_US".
    EHVAppSetting(std::string analyticRoot, std::string componentsPath, std::string locale);
    ~EHVAppSetting();

    void addProperty(const std::string& key, const std::string& value);

    const std::string& analyticRoot() const { return _analyticRoot; }
    const std::string& componentsPath() const { return _componentsPath; }
    const std::string& locale() const { return _locale; }
    /// The value of a property, or null. A later value of a key replaces an earlier one.
    const std::string* property(const std::string& key) const;
    /// All properties in the order of their first addition.
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
