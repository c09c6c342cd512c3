#include <charconv>
#include <fstream>
#include <iostream>
#include <iterator>
#include <regex>

#include "CommandFault.h"
#include "Commands.h"
#include "DataFile.h"
#include "HostSession.h"
#include "RecordChain.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"

namespace {

std::string readJob(const std::string& path)
{
    if (path == "-")
        return {std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.is_open() || text.empty())
        throw CommandFault(ExitStatus::Input, path + ": no job text in this file");
    return text;
}

/// Reads FILE into the engine's data source NAME.
void loadData(HostSession& session, const std::string& binding)
{
    const std::size_t equals = binding.find('=');
    if (equals == std::string::npos || equals == 0)
        throw CommandFault(ExitStatus::Usage, "--data " + binding + ": no NAME=FILE");
    InputOptions options;
    options.path = binding.substr(equals + 1);
    const InputFile input(options);
    JNIHvlProgram program;
    HVLRead read(&program);
    input.configure(read);
    HVLWrite write(&program);
    write.WriteHVDatasource(binding.substr(0, equals), false);
    write.AddPredFunction(&read);
    session.run(generateJob(program, write), {input.path()});
}

/// Puts the position that a fault of the text begins with where people look for it.
std::string withPosition(const std::string& job, const std::string& text)
{
    static const std::regex position("^line ([0-9]+), column ([0-9]+): ");
    std::smatch found;
    const std::string name = job == "-" ? "standard input" : job;
    if (!std::regex_search(text, found, position))
        return name + ": " + text;
    return name + ":" + found[1].str() + ":" + found[2].str() + ": " + found.suffix().str();
}

} // namespace

void runJob(const RunOptions& options, const CommonOptions& common)
{
    const std::string job = readJob(options.job);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    HostSession session("run", common);
    for (const std::string& binding : options.data)
        loadData(session, binding);
    try {
        session.run(job, {});
    } catch (const CommandFault& fault) {
        if (fault.status() != ExitStatus::JobFailed)
            throw;
        throw CommandFault(fault.status(), withPosition(options.job, fault.what()), fault.hint(),
                           fault.detail());
    }
    session.finish();
}
