#include "CommandLog.h"

#include <array>
#include <ctime>
#include <fstream>
#include <regex>

#include "CommandFault.h"

namespace {

std::string currentTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    std::array<char, 32> buffer{};
    std::strftime(buffer.data(), buffer.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return buffer.data();
}

/// A log goes around, a job text with the password of a file had better not.
std::string withoutPasswords(const std::string& line)
{
    static const std::regex password(R"re(("dataPassword"\s*:\s*)"(\\.|[^"\\])*")re");
    return std::regex_replace(line, password, R"re($1"***")re");
}

} // namespace

void appendToLog(const std::string& file, const std::string& line)
{
    if (!file.empty())
        std::ofstream(file, std::ios::app)
            << currentTime() << ' ' << withoutPasswords(line) << '\n';
}

void checkLog(const std::string& file)
{
    if (!file.empty() && !std::ofstream(file, std::ios::app))
        throw CommandFault(ExitStatus::Usage, file + ": the log cannot be written");
}
