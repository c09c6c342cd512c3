#include "JvmOptions.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "CFAppHost.h"
#include "ExtNameStr.h"
#include "PathFactory.h"
#include "VexaJVMError.h"

namespace {
// The host keeps its signals. The machine only generates texts, so it is configured to start fast
// and stay small: one collector thread, the fast compiler for frequently called methods only, no
// files in the temporary directory.
constexpr const char* FixedOptions[] = {"-Xrs",
                                        "-XX:+UseSerialGC",
                                        "-XX:TieredStopAtLevel=1",
                                        "-XX:CompileThresholdScaling=10",
                                        "-Xmx1g",
                                        "-XX:-UsePerfData",
                                        "-Xshare:auto"};

std::string nativePath(const std::string& utf8)
{
    ExtNameStr name;
    name.SetU8(utf8);
    return name.GetNative();
}

std::string componentsFolder()
{
    const ExtNameStr home(PathFactory::getPathInstance()->getInstallationPath());
    return home.GetNative() + "/hv/af/components";
}

void requireJar(const std::string& jar)
{
    if (access(jar.c_str(), F_OK) != 0)
        throw VexaJVMError("The engine's jar is missing: " + jar);
    if (access(jar.c_str(), R_OK) != 0)
        throw VexaJVMError("The engine's jar cannot be read: " + jar);
    if (jar.find(':') != std::string::npos)
        throw VexaJVMError("The engine's jar cannot be on a class path, its name has a colon: " +
                           jar);
}

/// The path of the machine's crash report. It expands percent signs in the name.
std::string crashReport()
{
    std::string folder = nativePath(CFAppHost::getInstance()->getTempDirectory());
    if (!folder.empty() && folder.back() != '/')
        folder += '/';
    std::string escaped;
    for (const char character : folder) {
        escaped += character;
        if (character == '%')
            escaped += '%';
    }
    return "-XX:ErrorFile=" + escaped + "hs_err_pid%p.log";
}

void appendFromEnvironment(std::vector<std::string>& texts)
{
    const char* value = std::getenv("VEXA_JVM_OPTIONS");
    std::istringstream words(value == nullptr ? "" : value);
    for (std::string word; words >> word;)
        texts.push_back(word);
}

/// Refuses options with which the machine finishes and ends the process successfully.
void refuseOptionsThatExit(const std::vector<std::string>& texts)
{
    for (const char* option : {"-Xinternalversion", "-Xlog:help", "-Xshare:dump"})
        if (std::find(texts.begin(), texts.end(), option) != texts.end())
            throw VexaJVMError(std::string("The Java virtual machine cannot be started with ") +
                               option + ", which ends the process");
}

/// The machine requires a working directory, even if it reads nothing there.
void requireWorkingDirectory()
{
    std::error_code error;
    if (std::filesystem::current_path(error).empty())
        throw VexaJVMError("The Java virtual machine needs the working directory, which is gone or "
                           "cannot be read: " +
                           error.message());
}
} // namespace

JvmOptions jvmOptions(const std::vector<std::string>& added)
{
    const std::string components = componentsFolder();
    JvmOptions options;
    options.jar = components + "/hvengine.jar";
    requireJar(options.jar);
    requireWorkingDirectory();

    options.texts.assign(std::begin(FixedOptions), std::end(FixedOptions));
    options.texts.push_back("-Djava.class.path=" + options.jar);
    options.texts.push_back(crashReport());
    const std::string archive = components + "/hvengine.jsa";
    if (access(archive.c_str(), R_OK) == 0)
        options.texts.push_back("-XX:SharedArchiveFile=" + archive);
    // The last of contradicting options counts, so the host's follow these, and the user's follow
    // the host's.
    options.texts.insert(options.texts.end(), added.begin(), added.end());
    appendFromEnvironment(options.texts);
    refuseOptionsThatExit(options.texts);
    return options;
}
