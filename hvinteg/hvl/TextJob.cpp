#include "hvl/TextJob.h"

#include <algorithm>

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

std::string exportedContainer(const HVStatContainer& container)
{
    return removeBackslash(GetOutputContainerJson(container.getName(),
                                                  TransformPath(container.getAbsolutePath()), true)
                               .toString());
}

std::string importedContainer(const std::string& name, const std::string& path)
{
    return removeBackslash(GetOutputContainerJson(name, TransformPath(path), false).toString());
}

std::string iteratorReader(HVStatDataIterator& iterator)
{
    JNIJSONObject json;
    json.put("dataSource", iterator.getName().c_str());
    json.put("readErrorThreshold", -1);
    return json.toString();
}

std::string definition(const std::string& name, const std::string& value)
{
    return "val " + name + " = " + value + "\n";
}
