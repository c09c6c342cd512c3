#include <fstream>

#include "CFMetaData.h"
#include "ErrorText.h"
#include "ExtNameStr.h"
#include "bridge/JNIJSONObject.h"
#include "descriptive/HVDescriptive.h"
#include "hvl/TextJob.h"
#include "runner/HVRunner.h"
#include "support/Tracing.h"
#include "tcm/HVInteractiveTSR.h"
#include "tcm/PreparationReplay.h"
#include "tcm/TemporalJobText.h"

// A model's data preparation, run again on a dataset.

namespace {

constexpr int kMostDistinctValues = 10000;

bool isText(HVRawDataIterator& rows, const std::string& name)
{
    if (name.empty())
        return false;
    const CFMetaData model(rows.getDataModel());
    const CFField* const field = model.GetField(name);
    return field != nullptr && field->GetStorage() == CFField::String;
}

/// If the file cannot be opened, the records keep the model that their job wrote, which has no
/// distinct values.
void replaceModel(const HVSimpleContainer& file, const CFMetaData& metadata)
{
    std::string xml;
    metadata.ExportXMLDoc(xml);
    if (xml.empty())
        return;
    std::ofstream stream;
    ExtNameStr::Open(stream, ExtNameStr(file.getGenericPath()),
                     std::ios::out | std::ios::binary | std::ios::trunc);
    stream << xml;
}

std::string preparationJob(const std::string& reader, const std::string& settings,
                           const HVSimpleContainer& jsonOutput, const RecordFile& output)
{
    return reader + outputLine("tsdpOutConf", jsonOutput) +
           definition("tsdpConf", JNIJSONObject(settings.c_str()).toString()) + writerLine(output) +
           "read(readerConf)->tsdp:tsdp(tsdpConf,_,tsdpOutConf)->write(writerConf)";
}

} // namespace

/// Opens the dataset only to look up its fields. The rows open it again.
bool HVInteractiveTSR::fitSettings(PreparationReplay& replay)
{
    try {
        const SvrDMInputDataSource source(replay.dataset, false);
        return replay.settings.read(replay.modelPath) &&
               replay.settings.findVariables(*source.operator->(), replay.dimFields);
    } catch (const ErrorText& error) { // the dataset cannot be opened
        setException(error.what());
        return false;
    }
}

/// The first job reads the rows, each further one the file of the previous job.
bool HVInteractiveTSR::prepareData(PreparationReplay& replay, const std::string& timeField)
{
    const std::set<int>& variables = replay.settings.variables();
    try {
        replay.rows = std::make_unique<HVRawDataIterator>(
            replay.dataset, std::vector<int>(variables.begin(), variables.end()),
            std::vector<MeasurementLevel>(), true, kWeightRound, true);
    } catch (const ErrorText& error) { // the dataset was closed meanwhile
        setException(error.what());
        return false;
    }
    HVRawDataIterator& rows = *replay.rows;
    rows.SetName("_activeDataset_");
    const bool isTextTime = isText(rows, timeField);
    // The conversion writes the field without quotes. Only a name cannot add steps to the job.
    if (isTextTime && !isPlainName(timeField)) {
        setException("The time field \"" + timeField +
                     "\" cannot be converted: its name needs quotes in a job.");
        return false;
    }
    const RecordFile* file = nullptr;
    if (!replay.dimFields.empty()) {
        if (!UpdateDataModel(replay.dimFields, rows, replay.described))
            return false;
        file = &replay.described;
    }
    if (isTextTime) {
        if (!(file != nullptr ? ConvertTimeStr(timeField, *file, replay.converted)
                              : ConvertTimeStr(timeField, rows, replay.converted)))
            return false;
        file = &replay.converted;
    }
    const std::string& settings = replay.settings.text();
    return file != nullptr ? RunTSDP(*file, settings, replay.output, replay.prepared)
                           : RunTSDP(rows, settings, replay.output, replay.prepared);
}

bool HVInteractiveTSR::UpdateDataModel(const std::vector<std::string>& dimFields,
                                       HVRawDataIterator& iterator, const RecordFile& output)
{
    CFMetaData metadata;
    HVDescriptive descriptive(runner(), &iterator);
    if (!descriptive.BuildMetaData(&dimFields, metadata, kMostDistinctValues, false))
        return false;
    if (iterator.Rewind(false) != EmbeddedHV::RowDataIterator::RecordAvailable)
        return false;
    const std::string job =
        readerLine(iterator) + writerLine(output) + "read(readerConf)->write(writerConf)";
    const bool isPrepared = runner().prepareHVLJob(job);
    runner().addInputIterator(&iterator);
    const bool isCopied = isPrepared && tryRunHV(runner());
    traceHVLFile(job, "SCENARIO_INFO", "INPUT_DATA");
    if (isCopied)
        replaceModel(output.model, metadata);
    return isCopied;
}

bool HVInteractiveTSR::RunTSDP(HVRawDataIterator& iterator, const std::string& settings,
                               const HVSimpleContainer& jsonOutput, const RecordFile& output)
{
    return runPreparation(preparationJob(readerLine(iterator), settings, jsonOutput, output),
                          &iterator);
}

bool HVInteractiveTSR::RunTSDP(const RecordFile& input, const std::string& settings,
                               const HVSimpleContainer& jsonOutput, const RecordFile& output)
{
    return runPreparation(preparationJob(readerLine(input), settings, jsonOutput, output), nullptr);
}

bool HVInteractiveTSR::runPreparation(const std::string& job, HVRawDataIterator* iterator)
{
    const bool isPrepared = runner().prepareHVLJob(job);
    if (iterator != nullptr)
        runner().addInputIterator(iterator);
    const bool isDone = isPrepared && tryRunHV(runner());
    traceHVLFile(job, "TCM_API", "TSDP");
    runner().displayAllMessages(true, true);
    runner().cleanJRef();
    runner().cleanExecution();
    return isDone;
}
