#include "hvhost/base/CommandLog.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "base/AsciiText.h"
#include "base/CivilTime.h"
#include "base/FileDescriptor.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/UserMessages.h"

namespace {

std::string currentTime()
{
    const std::int64_t now = std::time(nullptr) * base::kMicrosecondsPerSecond;
    return base::isoDate(base::floorDivided(now, base::kMicrosecondsPerDay)) + "T" +
           base::isoClock(base::floorRest(now, base::kMicrosecondsPerDay)) + "Z";
}

/// Whether a file has content that does not begin like a log. Such a file belongs to the user, for
/// example the command's own input, and must not be changed.
bool isForeign(const std::string& file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return false;
    std::string form = currentTime();
    std::string begin(form.size(), '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(begin.data(), static_cast<std::streamsize>(begin.size()));
    if (stream.gcount() == 0)
        return false;
    const auto withoutDigits = [](std::string& text) {
        std::replace_if(text.begin(), text.end(), base::isDigit, '0');
    };
    withoutDigits(form);
    withoutDigits(begin);
    return begin != form;
}

} // namespace

void appendToLog(const std::string& file, const std::string& line, LogWait wait)
{
    // The command may have written its output there in the meantime.
    if (file.empty() || isForeign(file))
        return;
    constexpr mode_t kAnyNewFile = 0666; // reduced by the umask of the process
    const int flags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC;
    const base::FileDescriptor log(
        open(file.c_str(), wait == LogWait::Never ? flags | O_NONBLOCK : flags, kAnyNewFile));
    const std::string text = currentTime() + ' ' + shownMessage(line) + '\n';
    if (log)
        log.writeAll(text.data(), text.size());
}

void checkLog(const std::string& file)
{
    if (!file.empty() && isForeign(file))
        throw CommandFault(ExitStatus::Usage, file + ": this file is not a log",
                           "--log appends to a new file, or to a log of an earlier command");
    if (!file.empty() && !std::ofstream(file, std::ios::app))
        throw CommandFault(ExitStatus::JobFailed, file + ": the log cannot be written: " +
                                                      std::generic_category().message(errno));
}
