#include "hvhost/cli/Doctor.h"

#include <dlfcn.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>

#include <nlohmann/json.hpp>

#include "CFAppHost.h"
#include "EHVAppSetting.h"
#include "EngineBackend.h"
#include "EngineCluster.h"
#include "EngineException.h"
#include "EngineMaps.h"
#include "PathFactory.h"
#include "VexaJVM.h"
#include "VexaJVMError.h"
#include "base/ScopeExit.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/EngineChoice.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/base/Text.h"
#include "runner/HVRunner.h"
#include "runner/StatHVServiceManager.h"

namespace fs = std::filesystem;

namespace {

/// A part of the installation that was searched for.
struct Finding
{
    std::string name;
    std::string found; ///< empty: it is missing
    std::string problem;
    bool needed = true;
};

/// The version in the Java home of a libjvm.
std::string javaVersion(const std::string& library)
{
    const fs::path home = fs::path(library).parent_path().parent_path().parent_path();
    std::ifstream release(home / "release");
    for (std::string line; std::getline(release, line);)
        if (line.starts_with("JAVA_VERSION=")) {
            std::erase(line, '"');
            return line.substr(line.find('=') + 1);
        }
    return "of unknown version";
}

/// Asks the library that this process has loaded, not one somewhere on the disk.
Finding findDatabase()
{
    using Version = const char* (*)();
    void* const symbol = dlsym(RTLD_DEFAULT, "duckdb_library_version");
    if (symbol == nullptr)
        return {"DuckDB", {}, "the library is not loaded", true};
    return {"DuckDB", reinterpret_cast<Version>(symbol)(), {}, true};
}

/// Jobs without maps do not use these libraries, so they are not required.
std::vector<Finding> findMapLibraries()
{
    try {
        std::vector<Finding> all;
        for (const auto& [name, version, data] : EmbeddedHV::mapLibraries()) {
            std::string found = version;
            found.append(" ").append(data.empty() ? "without its data" : data);
            all.push_back({name, std::move(found), {}, false});
        }
        return all;
    } catch (const EmbeddedHV::Exception& error) {
        return {{"maps", {}, withoutLineEnds(error.getMessage()), false}};
    }
}

/// Checks a file of the installation.
Finding findFile(const char* name, const fs::path& path, bool needed)
{
    if (fs::exists(path))
        return {name, path.string(), {}, needed};
    return {name, {}, path.string() + " is not there", needed};
}

Finding findTempFolder()
{
    const std::string folder = nativePath(CFAppHost::getInstance()->getTempDirectory());
    if (access(folder.c_str(), W_OK | X_OK) == 0)
        return {"temporary folder", folder, {}, true};
    return {"temporary folder", {}, folder + " cannot be written to", true};
}

constexpr const char* kCluster = "cluster";

/// What is known of clusters once the engine has started.
struct ClusterAnswer
{
    std::string client; ///< the folder of the client; empty: it is not installed
    std::string version;
    std::string problem;
};

ClusterAnswer askCluster(JNIEnv* env, const EmbeddedHV::EHVAppSetting& settings,
                         const CommonOptions& common)
{
    ClusterAnswer answer;
    answer.client = EmbeddedHV::clusterClient(settings);
    try {
        if (!common.engine.empty())
            answer.version = EmbeddedHV::clusterVersion(env, withEngine(settings, common));
    } catch (const EmbeddedHV::Exception& error) {
        answer.problem = withoutLineEnds(error.getMessage());
    }
    return answer;
}

std::vector<Finding> clusterFindings(const ClusterAnswer& answer, const CommonOptions& common)
{
    std::vector<Finding> all{
        {"cluster client",
         answer.client.empty() ? "not installed, only --engine needs it" : answer.client,
         {},
         false}};
    if (common.engine.empty())
        return all;
    const bool answers = answer.problem.empty() && !answer.version.empty();
    all.push_back({kCluster, answers ? "Spark " + answer.version : std::string(),
                   answer.problem.empty() ? "not asked without the engine" : answer.problem, true});
    if (answers)
        all.back().problem.clear();
    return all;
}

/// Starts the Java virtual machine and the engine, as a job does.
std::vector<Finding> tryStart(const Finding& classes, const CommonOptions& common,
                              ClusterAnswer& cluster)
{
    const Finding idle{"engine", {}, "not started without Java", true};
    if (classes.found.empty())
        return {{"Java", {}, "not started without the engine's classes", true}, idle};
    try {
        const HVRunner runner;
        const std::string library = VexaJVM::GetInstance()->LibraryPath();
        const Finding java{"Java", javaVersion(library) + " " + library, {}, true};
        const EmbeddedHV::BackendFactory ask = [&](JNIEnv* env, const auto& settings) {
            cluster = askCluster(env, settings, common);
            return EmbeddedHV::makeEmbeddedBackend(env, settings);
        };
        EmbeddedHV::setBackendFactory(ask);
        const base::ScopeExit restore([] { EmbeddedHV::setBackendFactory({}); });
        StatHVServiceManager::get(false);
        return {java, {"engine", "starts", {}, true}};
    } catch (const VexaJVMError& error) {
        return {{"Java", {}, withoutLineEnds(error.what()), true}, idle};
    } catch (const EmbeddedHV::Exception& error) {
        return {{"engine", {}, error.getMessage(), true}};
    }
}

std::vector<Finding> findAll(const CommonOptions& common)
{
    const fs::path home = nativePath(PathFactory::getPathInstance()->getInstallationPath());
    const fs::path components = home / "hv" / "af" / "components";
    const Finding classes = findFile("engine's classes", components / "hvengine.jar", true);
    std::vector<Finding> all{findFile("installation", home, true), classes,
                             findFile("class archive", components / "hvengine.jsa", false)};
    ClusterAnswer cluster;
    for (Finding& finding : tryStart(classes, common, cluster))
        all.push_back(std::move(finding));
    for (Finding& finding : clusterFindings(cluster, common))
        all.push_back(std::move(finding));
    all.push_back(findDatabase());
    for (Finding& finding : findMapLibraries())
        all.push_back(std::move(finding));
    const CFAppHost& host = *CFAppHost::getInstance();
    all.push_back(findTempFolder());
    all.push_back({"locale", host.getLocale(), {}, false});
    all.push_back({"threads", std::to_string(host.getMaxCompThreads()), {}, false});
    return all;
}

void printText(const std::vector<Finding>& all)
{
    for (const Finding& finding : all) {
        const std::string padding(18 - std::min<std::size_t>(17, finding.name.size()), ' ');
        std::cout << finding.name << padding
                  << (finding.found.empty() ? "MISSING: " + finding.problem : finding.found)
                  << '\n';
    }
}

void printJson(const std::vector<Finding>& all)
{
    nlohmann::ordered_json findings = nlohmann::ordered_json::array();
    for (const Finding& finding : all)
        findings.push_back({{"name", finding.name},
                            {"found", finding.found},
                            {"problem", finding.problem},
                            {"needed", finding.needed}});
    // A path may contain any bytes.
    std::cout << nlohmann::ordered_json{{"schema", 1}, {"findings", findings}}.dump(
                     2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
              << '\n';
}

} // namespace

void doctor(const std::string& format, const CommonOptions& common)
{
    const InterruptWatch watch(std::nullopt);
    const std::vector<Finding> all = findAll(common);
    watch.check();
    if (format == "json")
        printJson(all);
    else
        printText(all);
    StatHVServiceManager::shutdown();
    for (const Finding& finding : all)
        if (finding.needed && finding.found.empty())
            throw CommandFault(ExitStatus::Engine, finding.name + ": " + finding.problem,
                               // The problem of a cluster contains its remedy.
                               finding.name == kCluster
                                   ? ""
                                   : "VEXA_HOME names the installation, JAVA_HOME a Java to use");
}
