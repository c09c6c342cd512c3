#include <cstddef>
#include <cstdint>
#include <string>

#include "CFMetaData.h"
#include "InputParts.h"
#include "JNIException.h"
#include "ScratchFolder.h"
#include "VexaDataSource.h"
#include "bridge/JNIObjectManager.h"
#include "bridge/JNITargetMap.h"
#include "support/ZipReader.h"
#include "support/ZipWriter.h"
#include "tcm/ModelFile.h"
#include "tcm/SeriesNames.h"
#include "tcm/TsdpSettings.h"

/// Any texts as the entries of a temporal causal model: data model, network and preparation. What a
/// viewer asks of the model is answered, or refused by false or an exception that is promised.
namespace {

constexpr const char* kEntries[] = {kStatisticsEntry, kNetworkEntry, kPreparationEntry};

/// The variables that a preparation may name.
class Variables : public VEXA_DataSource
{
public:
    Variables()
    {
        for (const char* name : {"town", "store", "date", "sales"})
            _list.emplace_back(0).SetName(name);
    }
    int ColumnCount() const override { return static_cast<int>(_list.size()); }
    const VEXA_Variable& GetVariable(int column) const override
    {
        return _list.at(static_cast<std::size_t>(column));
    }
    int GetWeightVarIndex() const override { return -1; }
    int GetNSplitVars() const override { return 0; }
    int GetSplitVarIndex(int) const override { return -1; }
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor*) const override { return nullptr; }

private:
    std::vector<VEXA_Variable> _list;
};

/// Runs a question that may fail in a way that it promises.
template <class Question>
void ask(Question question)
{
    try {
        question();
    } catch (const CFMetaDataError&) { // an invalid data model
    } catch (const JNIException&) {    // an invalid or incomplete document
    }
}

void askNetwork(const std::string& network)
{
    JNITargetMap series(network);
    std::vector<std::string> ids{"4-1"};
    (void)series.GetAllTargets(ids);
    (void)series.GetAllPredictors(ids);
    (void)series.GetTargetsWithoutInput(ids);
    for (std::size_t i = 0; i < std::min<std::size_t>(ids.size(), 20); ++i) {
        (void)series.IsTarget(ids[i]);
        (void)series.IsArModelSeries(ids[i]);
    }
}

void askModel(const std::string& path)
{
    static const Variables kVariables;
    std::string text;
    ask([&] {
        ZipReader model(path);
        (void)readFullDataModel(model, text);
    });
    bool isTarget = false;
    ask([&] { (void)IsTargetSeries(path, "sales", {"town"}, {"Ulm"}, isTarget); });
    ask([&] {
        TsdpSettings settings;
        if (!settings.read(path))
            return;
        (void)settings.findVariables(kVariables, {"town"});
        int count = 0;
        (void)settings.countTimePoints(count);
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFolder folder;
    const std::vector<std::string> parts = partsOf(textOf(data, size), std::size(kEntries));
    const std::string path = folder.host("model.tcm");
    {
        ZipWriter model(path);
        for (std::size_t i = 0; i < parts.size(); ++i)
            model.AddString(kEntries[i], parts[i]);
    }
    askModel(path);
    if (parts.size() > 1)
        ask([&] { askNetwork(parts[1]); });
    JNIObjectManager& manager = *JNIObjectManager::getManager();
    manager.cleanJRef();
    require(manager.getEnv()->ExceptionCheck() == JNI_FALSE);
    return 0;
}
