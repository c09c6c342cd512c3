#include "hvl/TextJob.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/AsciiText.h"
#include "runner/HVStatContainer.h"
#include "runner/HVStatDataIterator.h"

std::string TransformPath(const std::string& path)
{
    std::string uri = "file:///" + path;
    std::replace(uri.begin(), uri.end(), '\\', '/');
    return uri;
}

std::string removeBackslash(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '\\'), text.end());
    return text;
}

JNIJSONObject GetOutputContainerJson(const std::string& name, const std::string& uri, bool isExport)
{
    JNIJSONObject json;
    if (isExport)
        json.put("export", true);
    json.put("name", name.c_str());
    json.put("uri", uri.c_str());
    return json;
}

std::string cleanedJson(const std::string& json)
{
    // In JSON each backslash begins an escape. Only the escape of a slash can be removed safely:
    // without its escape a quote would end the string and change the job.
    for (std::size_t at = json.find('\\'); at != std::string::npos; at = json.find('\\', at + 2))
        if (json.compare(at + 1, 1, "/") != 0)
            return json;
    return removeBackslash(json);
}

std::string exportedContainer(const HVStatContainer& container)
{
    return cleanedJson(GetOutputContainerJson(container.getName(),
                                              TransformPath(container.getAbsolutePath()), true)
                           .toString());
}

std::string importedContainer(const std::string& name, const std::string& path)
{
    return cleanedJson(GetOutputContainerJson(name, TransformPath(path), false).toString());
}

std::string iteratorReader(HVStatDataIterator& iterator)
{
    JNIJSONObject json;
    json.put("dataSource", iterator.getName().c_str());
    json.put("readErrorThreshold", -1);
    return json.toString();
}

bool isPlainName(const std::string& name)
{
    constexpr std::string_view kReserved[] = {"_", "val", "if", "else", "true", "false", "null"};
    const auto isAllowed = [](char c) {
        return base::isLetter(c) || base::isDigit(c) || c == '_' || !base::isAscii(c);
    };
    return !name.empty() && !base::isDigit(name.front()) &&
           std::all_of(name.begin(), name.end(), isAllowed) &&
           std::find(std::begin(kReserved), std::end(kReserved), name) == std::end(kReserved);
}

std::string definition(const std::string& name, const std::string& value)
{
    return "val " + name + " = " + value + "\n";
}
