#include "JvmOptions.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "CFAppHost.h"
#include "ExtNameStr.h"
#include "PathFactory.h"
#include "VexaJVMError.h"

namespace {
// The host keeps its signals. The machine only generates texts, so it is configured to start fast
// and stay small: one collector thread, the fast compiler for frequently called methods only, no
// files in the temporary directory. Because of -Xrs it would make a socket there, to which tools
// can attach, and which a killed process would leave behind.
constexpr const char* FixedOptions[] = {"-Xrs",
                                        "-XX:+DisableAttachMechanism",
                                        "-XX:+UseSerialGC",
                                        "-XX:TieredStopAtLevel=1",
                                        "-XX:CompileThresholdScaling=10",
                                        "-Xmx1g",
                                        "-XX:-UsePerfData",
                                        "-Xshare:auto"};

constexpr const char* kHostVariable = "VEXA_JVM_OPTIONS";

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
    const char* value = std::getenv(kHostVariable);
    std::istringstream words(value == nullptr ? "" : value);
    for (std::string word; words >> word;)
        texts.push_back(word);
}

/// Options with which the machine prints something or writes its archive, and then ends the process
/// successfully. The last two make its debugging agent do so.
constexpr std::array<std::string_view, 7> kOptionsThatExit{
    "-Xinternalversion",      "-Xlog:help",          "-Xshare:dump",  "-XX:+DumpSharedSpaces",
    "-XX:+PrintFlagsInitial", "-agentlib:jdwp=help", "-Xrunjdwp:help"};
constexpr std::string_view kOptionsFile = "-XX:VMOptionsFile=";
/// Variables that the machine itself reads.
constexpr const char* kMachineVariables[] = {"JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS"};

void refuseOptionThatExits(const std::string& option, const std::string& source)
{
    if (std::find(kOptionsThatExit.begin(), kOptionsThatExit.end(), option) !=
        kOptionsThatExit.end())
        throw VexaJVMError("The Java virtual machine cannot be started with " + option + source +
                           ", which ends the process");
}

/// Splits a text as the machine does: at blanks, except within quotes, which are removed.
std::vector<std::string> optionsIn(std::string_view text)
{
    std::vector<std::string> options;
    bool isOpen = false; // whether the last option continues
    char quote = 0;
    for (const char character : text) {
        const bool isBlank = std::isspace(static_cast<unsigned char>(character)) != 0;
        if (quote == 0 && isBlank) {
            isOpen = false;
            continue;
        }
        if (!isOpen)
            options.emplace_back();
        isOpen = true;
        if (character == quote)
            quote = 0;
        else if (quote == 0 && (character == '"' || character == '\''))
            quote = character;
        else
            options.back() += character;
    }
    return options;
}

/// `source` follows the option in a message. The machine reads no options file within another one.
void refuseOptionsThatExit(const std::vector<std::string>& options, const std::string& source)
{
    for (const std::string& option : options) {
        refuseOptionThatExits(option, source);
        if (!option.starts_with(kOptionsFile))
            continue;
        const std::string path = option.substr(kOptionsFile.size());
        // The machine reports a file that cannot be read.
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(path, ignored))
            continue;
        std::ifstream file(path);
        std::ostringstream content;
        content << file.rdbuf();
        for (const std::string& inner : optionsIn(content.str()))
            refuseOptionThatExits(inner, " in " + path);
    }
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

std::string optionVariables()
{
    std::string found;
    for (const char* name : {kHostVariable, kMachineVariables[0], kMachineVariables[1]})
        if (const char* value = std::getenv(name); value != nullptr && *value != 0)
            found += (found.empty() ? "" : " ") + std::string(name) + "=" + value;
    return found;
}

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
    refuseOptionsThatExit(options.texts, "");
    for (const char* name : kMachineVariables)
        if (const char* value = std::getenv(name); value != nullptr)
            refuseOptionsThatExit(optionsIn(value), std::string(" in ") + name);
    return options;
}
