#include "Child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "Measure.h"

namespace bench {

namespace {

[[noreturn]] void fail(const std::string& what)
{
    std::fprintf(stderr, "bench: %s\n", what.c_str());
    std::exit(1);
}

std::string readAll(int descriptor)
{
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

pid_t spawn(const std::vector<std::string>& command, int output)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t child = 0;
    const int error =
        posix_spawn(&child, command.front().c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        fail("cannot start " + command.front());
    return child;
}

} // namespace

ChildResult runChild(const std::vector<std::string>& command)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        fail("no pipe");
    ChildResult result;
    const Stopwatch watch;
    const pid_t child = spawn(command, ends[1]);
    close(ends[1]);
    result.output = readAll(ends[0]);
    close(ends[0]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    result.wallMilliseconds = watch.milliseconds();
    result.peakMegabytes = static_cast<double>(usage.ru_maxrss) / 1024;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        fail(command.front() + " failed");
    return result;
}

std::string programDirectory()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
}

int compareSides(const std::string& program, const std::string& directory, const std::string& ours,
                 const std::string& baseline, const std::string& figure, double limit)
{
    const std::string self = programDirectory() + "/" + program;
    const auto run = [&](const std::string& side) {
        return std::atof(runChild({self, directory, side}).output.c_str());
    };
    const Comparison time = interleave(
        5, [&] { return run(ours); }, [&] { return run(baseline); });
    return report(figure, time, "ms", limit) ? 0 : 1;
}

int compareInChildren(const std::string& program, const std::string& directory,
                      const std::string& figure, double limit)
{
    runChild({programDirectory() + "/" + program, directory, "prepare"});
    return compareSides(program, directory, "ours", "baseline", figure, limit);
}

} // namespace bench
