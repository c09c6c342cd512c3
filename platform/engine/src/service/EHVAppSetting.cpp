#include "EHVAppSetting.h"

#include <algorithm>

namespace EmbeddedHV {

EHVAppSetting::EHVAppSetting(std::string analyticRoot, std::string componentsPath,
                             std::string locale)
    : _analyticRoot(std::move(analyticRoot)), _componentsPath(std::move(componentsPath)),
      _locale(std::move(locale))
{
}

EHVAppSetting::~EHVAppSetting() = default;

void EHVAppSetting::addProperty(const std::string& key, const std::string& value)
{
    const auto found = std::find_if(_properties.begin(), _properties.end(),
                                    [&key](const auto& property) { return property.first == key; });
    if (found != _properties.end())
        found->second = value;
    else
        _properties.emplace_back(key, value);
}

const std::string* EHVAppSetting::property(const std::string& key) const
{
    const auto found = std::find_if(_properties.begin(), _properties.end(),
                                    [&key](const auto& property) { return property.first == key; });
    return found == _properties.end() ? nullptr : &found->second;
}

} // namespace EmbeddedHV
