#include "hvhost/job/RunJob.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <set>
#include <utility>

#include "EngineFiles.h"
#include "base/ScopeExit.h"
#include "bridge/JNIHvlProgram.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/OutputFile.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/job/RecordChain.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"

namespace {

std::string readJob(const ReadableFile& source)
{
    std::ifstream file(source.path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// NAME=FILE, split into its parts.
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

/// Reads a file into the engine's data source with this name.
void loadData(HostSession& session, const std::string& name, const InputFile& input)
{
    JNIHvlProgram program;
    RecordChain records(program, input, {});
    HVLWrite write(&program);
    write.WriteHVDatasource(name, false);
    write.AddPredFunction(records.last());
    session.run(generateJob(program, write), input.origin(), input.rows());
}

/// Writes the engine's data source with this name to a file. Errors name the option.
void saveData(HostSession& session, const std::string& option, const std::string& name,
              const OutputFile& output)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadHVDatasource(name);
    JobOrigin origin;
    origin.jobName = option;
    origin.outputs = output.origins();
    session.run(writingJob(program, read, output), origin);
    output.deliver();
}

/// Adds a word. Throws CommandFault (Usage) if it already exists.
void addOnce(std::set<std::string>& words, const std::string& word, const std::string& what)
{
    if (!words.insert(word).second)
        throw CommandFault(ExitStatus::Usage, what + " is named twice");
}

/// One form for all spellings of a file's path.
std::string canonicalPath(const std::string& file)
{
    std::error_code error;
    return file == kStandardStream
               ? file
               : std::filesystem::weakly_canonical(std::filesystem::absolute(file), error).string();
}

/// Rejects a second use of a data source, a file or a stream, because it would undo the first one.
void refuseRepeats(const RunOptions& options)
{
    std::set<std::string> sources;
    std::set<std::string> outputs;
    bool readsStream = options.job == kStandardStream;
    for (const std::string& text : options.data) {
        const Binding binding = splitBinding(text, "--data");
        addOnce(sources, binding.name, "--data " + text + ": the data source");
        if (binding.file == kStandardStream && std::exchange(readsStream, true))
            throw CommandFault(ExitStatus::Usage,
                               "--data " + text + ": standard input is read already");
    }
    for (const std::string& text : options.save)
        addOnce(outputs, canonicalPath(splitBinding(text, "--save").file),
                "--save " + text + ": the file");
}

/// The input and output files of a job, checked before anything runs.
class JobFiles
{
public:
    JobFiles(const RunOptions& options, const InterruptWatch& watch)
    {
        for (const std::string& text : options.data) {
            const Binding binding = splitBinding(text, "--data");
            InputOptions input;
            input.path = binding.file;
            input.kindOption.clear();
            input.direct = true; // the engine reads it and keeps it as a data source
            input.userMissing = options.userMissing == "exclude" ? "exclude" : "keep";
            _inputs.push_back({binding.name, binding.file,
                               std::make_unique<InputFile>(input, FileOptions::None, watch)});
        }
        for (const std::string& text : options.save) {
            const Binding binding = splitBinding(text, "--save");
            OutputOptions output;
            output.path = binding.file;
            output.force = options.force;
            _outputs.push_back({"--save " + text, binding.name,
                                std::make_unique<OutputFile>(output, FileOptions::None, watch)});
        }
    }
    /// A job must not use a value that is declared missing as a valid value, unless its user has
    /// asked for that.
    void excludeMissing(HostSession& session) const
    {
        for (const Input& input : _inputs) {
            session.introduce(*input.file);
            if (input.file->declaresMissing()) {
                session.warn(input.origin +
                             ": what it declares missing is read as system-missing; --user-missing "
                             "exclude or keep selects how they are treated");
                input.file->excludeMissing();
            }
        }
    }
    void load(HostSession& session) const
    {
        for (const Input& input : _inputs)
            loadData(session, input.name, *input.file);
    }
    void save(HostSession& session) const
    {
        for (const auto& [option, name, output] : _outputs)
            saveData(session, option, name, *output);
    }

private:
    struct Input
    {
        std::string name;
        std::string origin; ///< the user's name for the file
        std::unique_ptr<InputFile> file;
    };
    struct Output
    {
        std::string option;
        std::string name;
        std::unique_ptr<OutputFile> file;
    };
    std::vector<Input> _inputs;
    std::vector<Output> _outputs;
};

} // namespace

void runJob(const RunOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    refuseRepeats(options);
    const ReadableFile source(options.job, watch);
    const std::string job = readJob(source);
    if (options.printJob) {
        std::cout << job << (job.ends_with('\n') ? "" : "\n");
        return;
    }
    const JobFiles files(options, watch);
    HostSession session("run", common, watch);
    if (options.userMissing.empty())
        files.excludeMissing(session);
    files.load(session);
    JobOrigin origin;
    origin.jobName = source.name();
    {
        // The job replaces existing files only if the user allows it.
        EmbeddedHV::allowReplacingFiles(options.force);
        const base::ScopeExit restore([] { EmbeddedHV::allowReplacingFiles(true); });
        session.run(job, origin);
    }
    files.save(session);
    session.finish();
}
