#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>

#include "CommandFault.h"
#include "Commands.h"
#include "DataFile.h"
#include "HostSession.h"
#include "InterruptWatch.h"
#include "RecordChain.h"
#include "StandardStreams.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"

namespace {

std::string readJob(const std::string& path, const InterruptWatch& watch)
{
    std::string source = path;
    std::unique_ptr<HVSimpleFile> fetched;
    if (path == "-") {
        fetched = std::make_unique<HVSimpleFile>("stdin", false, true);
        source = nativePath(fetched->GetGenericPath());
        fetchStandardInput(source, watch);
    } else {
        checkReadable(path);
    }
    std::ifstream file(source, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (text.empty())
        throw CommandFault(ExitStatus::Input, path + ": no job text in this file");
    return text;
}

/// NAME=FILE in its two parts.
struct Binding
{
    std::string name;
    std::string file;
};

Binding splitBinding(const std::string& text, const std::string& option)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == text.size())
        throw CommandFault(ExitStatus::Usage, option + " " + text + ": no NAME=FILE",
                           "for example " + option + " people=people.csv");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

/// Reads a file into the engine's data source of the name.
void loadData(HostSession& session, const std::string& name, const InputFile& input)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    input.configure(read);
    HVLWrite write(&program);
    write.WriteHVDatasource(name, false);
    write.AddPredFunction(&read);
    session.run(generateJob(program, write), {{input.origin()}, {}, {}, {}});
}

/// Writes the engine's data source of the name to a file.
void saveData(HostSession& session, const std::string& name, const OutputFile& output)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadHVDatasource(name);
    HVLWrite write(&program);
    output.configure(write);
    write.AddPredFunction(&read);
    session.run(generateJob(program, write), {});
    output.deliver();
}

/// The files around a job, checked before anything runs.
class JobFiles
{
public:
    JobFiles(const RunOptions& options, const InterruptWatch& watch)
    {
        for (const std::string& text : options.data) {
            const Binding binding = splitBinding(text, "--data");
            InputOptions input;
            input.path = binding.file;
            _inputs.emplace_back(binding.name, std::make_unique<InputFile>(input, watch));
        }
        for (const std::string& text : options.save) {
            const Binding binding = splitBinding(text, "--save");
            OutputOptions output;
            output.path = binding.file;
            output.force = options.force;
            _outputs.emplace_back(binding.name, std::make_unique<OutputFile>(output, watch));
        }
    }
    void load(HostSession& session) const
    {
        for (const auto& [name, input] : _inputs)
            loadData(session, name, *input);
    }
    void save(HostSession& session) const
    {
        for (const auto& [name, output] : _outputs)
            saveData(session, name, *output);
    }

private:
    std::vector<std::pair<std::string, std::unique_ptr<InputFile>>> _inputs;
    std::vector<std::pair<std::string, std::unique_ptr<OutputFile>>> _outputs;
};

} // namespace

void runJob(const RunOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const std::string job = readJob(options.job, watch);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    const JobFiles files(options, watch);
    HostSession session("run", common, watch);
    files.load(session);
    session.run(job, {{}, {}, {}, options.job == "-" ? "standard input" : options.job});
    files.save(session);
    session.finish();
}
