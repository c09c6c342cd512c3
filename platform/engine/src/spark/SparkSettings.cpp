#include "spark/SparkSettings.h"

#include <charconv>
#include <string_view>

#include "EHVAppSetting.h"
#include "EngineBackend.h"
#include "EngineException.h"
#include "base/NativePath.h"
#include "spark/ClusterFault.h"
#include "spark/SparkClient.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kUploadBytes = std::int64_t{1} << 30;
constexpr std::int64_t kCollectBytes = std::int64_t{4} << 30;
constexpr std::string_view kScheme = "sc://";

[[noreturn]] void refuse(const std::string& problem)
{
    throw Exception("the engine does not start: " + problem);
}

std::string textOf(const EHVAppSetting& settings, const char* key)
{
    const std::string* const value = settings.property(key);
    return value ? *value : std::string();
}

std::string urlOf(const EHVAppSetting& settings)
{
    const std::string setting = std::string("the setting \"") + kUrlSetting + "\" ";
    std::string url = textOf(settings, kUrlSetting);
    if (url.empty())
        refuse(setting + "is missing; it is the address of a Spark Connect server, for example "
                         "sc://host:15002");
    if (!url.starts_with(kScheme) || url.size() == kScheme.size())
        refuse(setting + "is \"" + shownCluster(url) +
               "\", not the address of a Spark Connect server, for example sc://host:15002");
    return url;
}

std::int64_t bytesOf(const EHVAppSetting& settings, const char* key, std::int64_t byDefault)
{
    const std::string text = textOf(settings, key);
    if (text.empty())
        return byDefault;
    std::int64_t bytes = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bytes);
    if (error != std::errc() || end != text.data() + text.size() || bytes < 0)
        refuse(std::string("the setting \"") + key + "\" is \"" + text +
               "\", not a number of bytes");
    return bytes;
}

RealSums sumsOf(const EHVAppSetting& settings)
{
    const std::string text = textOf(settings, kSumsSetting);
    if (text.empty() || text == "exact")
        return RealSums::Exact;
    if (text != "double")
        refuse(std::string("the setting \"") + kSumsSetting + "\" is \"" + text +
               "\", not exact or double");
    return RealSums::Double;
}

std::vector<std::string> optionsOf(const EHVAppSetting& settings)
{
    const std::string_view prefix = kOptionPrefix;
    std::vector<std::string> options;
    for (const auto& [key, value] : settings.properties())
        if (key.starts_with(prefix)) {
            options.push_back(key.substr(prefix.size()));
            options.push_back(value);
        }
    return options;
}

std::string withoutEndSlash(std::string folder)
{
    while (folder.size() > 1 && folder.ends_with('/'))
        folder.pop_back();
    return folder;
}

} // namespace

std::string clientFolderOf(const EHVAppSetting& settings)
{
    return nativePath(settings.componentsPath()) + "/cluster";
}

SparkSettings sparkSettings(JNIEnv* env, const EHVAppSetting& settings)
{
    SparkSettings spark;
    spark.url = urlOf(settings);
    spark.scratch = withoutEndSlash(textOf(settings, kScratchSetting));
    spark.uploadBytes = bytesOf(settings, kUploadSetting, kUploadBytes);
    spark.collectBytes = bytesOf(settings, kCollectSetting, kCollectBytes);
    spark.sums = sumsOf(settings);
    spark.options = optionsOf(settings);
    spark.clientFolder = clientFolderOf(settings);
    if (!SparkLibrary(nullptr, spark.clientFolder).isInstalled())
        refuse("the client of Spark clusters is not installed: the folder " + spark.clientFolder +
               " has no jars; install the package hvinteg-cluster");
    if (env == nullptr || env->GetJavaVM(&spark.machine) != JNI_OK)
        refuse("the backend \"spark\" needs a Java virtual machine");
    return spark;
}

} // namespace EmbeddedHV
