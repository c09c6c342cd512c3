#pragma once

#include <future>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace datafile {

/// The system cannot start a thread. The text has the purpose of the thread, the reason and advice.
class ThreadFault : public std::runtime_error
{
public:
    ThreadFault(const std::string& work, const std::string& reason)
        : std::runtime_error("the process cannot start a thread that " + work + ": " + reason +
                             "; end other programs, or raise the limits on threads and memory")
    {
    }
};

/// Starts a thread that calls `function` without arguments. `work` describes the thread, for
/// example "watches the query". Throws ThreadFault.
template <class Function>
std::thread startedThread(const std::string& work, Function&& function)
{
    try {
        return std::thread(std::forward<Function>(function));
    } catch (const std::system_error& error) {
        throw ThreadFault(work, error.code().message());
    }
}

/// The same for a thread whose exceptions the future holds. The future's destructor waits for it.
template <class Function>
auto startedTask(const std::string& work, Function&& function)
{
    try {
        return std::async(std::launch::async, std::forward<Function>(function));
    } catch (const std::system_error& error) {
        throw ThreadFault(work, error.code().message());
    }
}

} // namespace datafile
