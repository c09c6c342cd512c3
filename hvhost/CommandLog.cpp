#include "CommandLog.h"

#include <array>
#include <ctime>
#include <fstream>

#include "CommandFault.h"
#include "UserMessages.h"

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

} // namespace

void appendToLog(const std::string& file, const std::string& line)
{
    if (!file.empty())
        std::ofstream(file, std::ios::app) << currentTime() << ' ' << shownMessage(line) << '\n';
}

void checkLog(const std::string& file)
{
    if (!file.empty() && !std::ofstream(file, std::ios::app))
        throw CommandFault(ExitStatus::Usage, file + ": the log cannot be written");
}
