#include "data/HVOutputIteratorFetcher.h"

#include <utility>

#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIObjectManager.h"
#include "hvl/ComposedJob.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/ExecutionScope.h"
#include "runner/HVRunner.h"
#include "support/HVSimpleFile.h"
#include "support/Paths.h"
#include "support/Tracing.h"

HVOutputIteratorFetcher::HVOutputIteratorFetcher(HVRunner& runner) : _runner(runner) {}

HVOutputIteratorFetcher::~HVOutputIteratorFetcher()
{
    try {
        Finalize();
    } catch (...) { // NOLINT(bugprone-empty-catch): a destructor must not throw
    }
}

std::string HVOutputIteratorFetcher::jobText(const std::string& dataPath,
                                             const std::string& dataModelPath, HVDataFileType type,
                                             const std::vector<std::string>& fields) const
{
    JNIHvlProgram program;
    HVLRead read(&program);
    const std::string url = NormalizeHvlPathU(dataPath, "file");
    if (type != kCsv)
        read.ReadHVBF(url);
    else
        read.ReadCSV(url, false);
    if (!dataModelPath.empty())
        read.SetDataModel(NormalizeHvlPathU(dataModelPath, "file"));
    HVLFilterFields filter(&program);
    if (!fields.empty()) {
        filter.KeepFieldNames(fields);
        filter.AddPredFunction(&read);
    }
    // The engine resolves bare names in the analytic directory.
    HVLWrite write(&program);
    write.SetDataModel(_modelFile->GetFileName());
    write.WriteHVBF(_dataFile->GetFileName());
    if (fields.empty())
        write.AddPredFunction(&read);
    else
        write.AddPredFunction(&filter);
    return composedJob(program, write);
}

EmbeddedHV::RowDataIterator* HVOutputIteratorFetcher::Fetch(const std::string& dataPath,
                                                            const std::string& dataModelPath,
                                                            HVDataFileType type,
                                                            const std::vector<std::string>& fields)
{
    Finalize(); // of an earlier fetch
    _dataFile = std::make_unique<HVSimpleFile>("outitera.hvbf", true, true);
    _modelFile = std::make_unique<HVSimpleFile>("outmodel.xml", true, true);
    const std::string text = jobText(dataPath, dataModelPath, type, fields);
    traceHVLFile(text, "HvlJobText", "GetIterator");
    FetchIterator(text);
    return _iterator;
}

void HVOutputIteratorFetcher::FetchIterator(const std::string& text)
{
    _runner.prepareHVLJob(text);
    bool succeeded = false;
    try {
        succeeded = _runner.execute();
    } catch (...) {
        succeeded = false;
    }
    if (succeeded)
        _iterator = _runner.getOutputIterator(_dataFile->GetFileName());
    else
        Finalize();
}

void HVOutputIteratorFetcher::Finalize()
{
    // Move out of the members first: everything is released even if the engine throws.
    const std::unique_ptr<HVSimpleFile> dataFile = std::move(_dataFile);
    const std::unique_ptr<HVSimpleFile> modelFile = std::move(_modelFile);
    const ExecutionScope execution(_runner);
    if (auto* const rows = std::exchange(_iterator, nullptr))
        rows->dispose(JNIObjectManager::getManager()->getEnv());
    _runner.cleanExecution();
}
