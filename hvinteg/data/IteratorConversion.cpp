#include "data/IteratorConversion.h"

#include <array>
#include <cstddef>
#include <cstdlib>

#include "bridge/JNIHvlProgram.h"
#include "data/HVRawDataIterator.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/ExecutionScope.h"
#include "runner/HVRunner.h"
#include "support/Conversions.h"
#include "support/Files.h"
#include "support/HVDebug.h"
#include "support/Paths.h"
#include "support/Tracing.h"

namespace {

/// A file format that an iterator can be copied to.
struct Target
{
    const char* word;
    const char* extension;
    void (*write)(HVLWrite& write, const std::string& url);
};

/// Indexed by option - 1.
constexpr std::array kTargets{
    Target{"HVBF", ".hvbf", [](HVLWrite& write, const std::string& url) { write.WriteHVBF(url); }},
    Target{"CSV", ".csv", [](HVLWrite& write, const std::string& url) { write.WriteCSV(url); }},
    Target{"SAV", ".sav",
           [](HVLWrite& write, const std::string& url) { write.WriteSAV(url, ""); }}};

int option()
{
    // Read once, so that one process does not mix file formats.
    static const int chosen = [] {
        const char* text = std::getenv("HV_STAT_ITER_OPT");
        return text ? String2Integer(text) : 0;
    }();
    return chosen;
}

// Null if no copy is requested.
const Target* target()
{
    const int chosen = option();
    return chosen >= 1 && chosen <= static_cast<int>(kTargets.size())
               ? &kTargets[static_cast<std::size_t>(chosen) - 1]
               : nullptr;
}

void tell(HVDebug* debug, const std::string& line)
{
    if (debug)
        debug->addOutputLine(line);
}

// The text of the job; empty if it cannot be generated.
std::string composeJob(const Target& target, const std::string& name, const std::string& dataPath,
                       const std::string& modelPath)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadIterator(name);
    HVLWrite write(&program);
    write.SetDataModel(NormalizeHvlPathU(modelPath, "file"));
    target.write(write, NormalizeHvlPathU(dataPath, "file"));
    write.AddPredFunction(&read);
    std::string text;
    if (write.GenerateHVL())
        program.getHvlText(text);
    return text;
}

bool execute(HVRawDataIterator& iterator, HVRunner& runner)
{
    iterator.Rewind(false);
    runner.addInputIterator(&iterator);
    try {
        return runner.execute();
    } catch (...) {
        // The caller only needs to know that the job failed.
        return false;
    }
}

bool runJob(const std::string& text, HVRawDataIterator& iterator, HVRunner& runner)
{
    traceHVLFile(text, "IteratorConversion", iterator.getName());
    const ExecutionScope execution(runner);
    if (!runner.prepareHVLJob(text))
        return false;
    const bool isDone = execute(iterator, runner);
    runner.displayAllMessages(true, true);
    runner.cleanExecution();
    return isDone;
}

} // namespace

int IteratorConversion(HVRawDataIterator* iterator, HVRunner* runner, HVDebug* debug,
                       const std::string& dataPath, const std::string& modelPath)
{
    const Target* wanted = target();
    if (!iterator)
        return -1;
    if (!wanted)
        return 0;
    if (!runner)
        return -1;
    const std::string name = iterator->getName();
    const std::string what = std::string("converting HVRawDataIterator to ") + wanted->word;
    tell(debug, "Start " + what + " " + name);
    const std::string text = composeJob(*wanted, name, dataPath, modelPath);
    const bool isDone = !text.empty() && runJob(text, *iterator, *runner);
    tell(debug, "Done " + what);
    return isDone ? option() : 0;
}

int IteratorConversion(HVRawDataIterator* iterator, HVRunner* runner, HVDebug* debug,
                       const std::string& directory, std::string& dataPath, std::string& modelPath)
{
    const Target* wanted = target();
    if (!iterator)
        return -1;
    if (!wanted)
        return 0;
    const std::string stem = directory + "hv_stats_" + iterator->getName();
    const std::string model = FormUniqueFileName(stem + ".xml");
    const std::string data = FormUniqueFileName(stem + wanted->extension);
    const int result = IteratorConversion(iterator, runner, debug, data, model);
    // Do not return paths of files that were not written.
    if (result < 1)
        return 0;
    dataPath = data;
    modelPath = model;
    return result;
}
