#include "output/StringTable.h"

#include <mutex>
#include <vector>

#include <nlohmann/json.hpp>

#include "CFAppHost.h"
#include "FileServices.h"
#include "PathFactory.h"
#include "Translation.h"

std::optional<StringTable> readStringTable(const std::string& file)
{
    std::string content;
    if (!FetchFile::fetch(file, content))
        return std::nullopt;
    const auto json = nlohmann::json::parse(content, nullptr, false);
    if (!json.is_object())
        return std::nullopt;
    StringTable table;
    for (const auto& [key, text] : json.items())
        if (text.is_string())
            table.emplace(key, text.get<std::string>());
    return table;
}

namespace {

// Tables are cached by file name, because installation and locale may change. A missing or invalid
// file translates nothing: an English message is better than none.
const StringTable& tableOf(const std::string& file)
{
    static std::mutex mutex;
    static std::map<std::string, StringTable> tables;
    const std::lock_guard lock(mutex);
    const auto found = tables.find(file);
    return found != tables.end()
               ? found->second
               : tables.emplace(file, readStringTable(file).value_or(StringTable())).first->second;
}

std::vector<std::string> languages()
{
    const std::string& locale = CFAppHost::getInstance()->getLocale();
    return {locale, locale.substr(0, locale.find('_')), "en"};
}

} // namespace

std::string translate(const std::string& key)
{
    const std::string folder =
        PathFactory::getPathInstance()->getInstallationPath() + "\\strings\\";
    for (const std::string& language : languages()) {
        const StringTable& table = tableOf(folder + language + ".json");
        if (const auto found = table.find(key); found != table.end())
            return found->second;
    }
    return key;
}
