#include "geo/MatchJob.h"

#include <cstddef>
#include <memory>

#include "CFMetaData.h"
#include "FileServices.h"
#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlProgram.h"
#include "data/HVRawDataIterator.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLJoin.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"

namespace {

/// The inputs of the join.
constexpr std::size_t kMap = 0;
constexpr std::size_t kData = 1;

/// None if the copy of the map is not there, as after a job that was cancelled.
CFMetaData modelOf(const HVSimpleFile& file)
{
    std::string xml;
    FetchFile::fetch(file.GetAbsolutePath(), xml);
    return xml.empty() ? CFMetaData() : CFMetaData(xml);
}

/// The builders of the job, which live until its text is there.
class MatchJob
{
public:
    MatchJob(const MatchSides& sides, const MatchedValues& wanted) : _sides(sides), _wanted(wanted)
    {
    }

    std::string text(const HVSimpleFile& data, const HVSimpleFile& model);

private:
    void readMap();
    void makeReal(const std::string& key);
    void aggregate();
    void join();

    const MatchSides& _sides;
    const MatchedValues& _wanted;
    JNIHvlProgram _program;
    HVLRead _readMap{&_program};
    HVLRead _readData{&_program};
    // Each on the heap: builders know each other by address, and the list grows.
    std::vector<std::unique_ptr<HVLExpressionFun>> _realKeys;
    HVLFunction* _map = &_readMap; ///< the last step of the map's side so far
    HVLAggregate _mapKeys{&_program};
    HVLAggregate _dataKeys{&_program};
    HVLJoin _join{&_program};
};

std::string MatchJob::text(const HVSimpleFile& data, const HVSimpleFile& model)
{
    readMap();
    _readData.ReadIterator(_sides.iterator);
    aggregate();
    join();
    HVLWrite write(&_program);
    write.WriteCSV(data.GetFileName());
    write.SetDataModel(model.GetFileName());
    write.AddPredFunction(&_join);
    write.GenerateHVL();
    std::string text;
    _program.getHvlText(text);
    return text;
}

void MatchJob::readMap()
{
    _readMap.ReadHVBF(_sides.mapData.GetFileName());
    _readMap.SetDataModel(_sides.mapModel.GetFileName());
    const CFMetaData model = modelOf(_sides.mapModel);
    for (const std::string& key : _sides.mapKeys) {
        const CFField* const field = model.GetField(key);
        if (field != nullptr && field->GetStorage() == CFField::Integer)
            makeReal(key);
    }
}

/// The host's numbers are real ones, so keys are compared as such.
void MatchJob::makeReal(const std::string& key)
{
    std::vector<JNIHvlExpression*> reference = {_program.createHvlExpressionFieldReference(key)};
    auto reclassify = std::make_unique<HVLExpressionFun>(&_program);
    reclassify->SetReclassifyField(key, _program.createHvlExpression("toReal(%s)", &reference));
    reclassify->AddPredFunction(_map);
    _map = reclassify.get();
    _realKeys.push_back(std::move(reclassify));
}

/// Keys alone make each side small, and count what is there several times once.
void MatchJob::aggregate()
{
    for (std::size_t i = 0; i < _sides.mapKeys.size(); ++i) {
        _mapKeys.AddAggregate("key", _sides.mapKeys[i], _sides.mapKeys[i]);
        _dataKeys.AddAggregate("key", _sides.dataKeys[i], _sides.dataKeys[i]);
    }
    _mapKeys.AddPredFunction(_map);
    _dataKeys.AddPredFunction(&_readData);
}

/// Missing keys match nothing, and so stand among the unmatched ones; who reads them leaves them
/// out.
void MatchJob::join()
{
    _join.AddPredFunction(&_mapKeys, "shape");
    _join.AddPredFunction(&_dataKeys, "dataset");
    _join.SetJoinType(_wanted.unmatched ? HVLJoin::Anti : HVLJoin::Inner);
    const std::size_t side = _wanted.mapSide ? kMap : kData;
    // Both sides may use one name, so only the fields of the side that is asked for are written.
    _join.SetOutputFieldNames(side, keysOf(_sides, _wanted));
    if (_wanted.unmatched)
        _join.AddNonMatchingSource(side);
    for (std::size_t i = 0; i < _sides.mapKeys.size(); ++i)
        _join.AddMatchField(kMap, _sides.mapKeys[i], kData, _sides.dataKeys[i]);
}

} // namespace

const std::vector<std::string>& keysOf(const MatchSides& sides, const MatchedValues& wanted)
{
    return wanted.mapSide ? sides.mapKeys : sides.dataKeys;
}

std::string matchJob(const MatchSides& sides, const MatchedValues& wanted, const HVSimpleFile& data,
                     const HVSimpleFile& model)
{
    return MatchJob(sides, wanted).text(data, model);
}
