#include "geo/MatchJob.h"

#include <cstddef>
#include <memory>

#include "CFMetaData.h"
#include "FileServices.h"
#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlProgram.h"
#include "data/HVRawDataIterator.h"
#include "hvl/ComposedJob.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLJoin.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"

namespace {

/// Indices of the join's inputs.
constexpr std::size_t kMap = 0;
constexpr std::size_t kData = 1;

/// Returns an empty model if the copy of the map is missing, for example after a cancelled job.
CFMetaData modelOf(const HVSimpleFile& file)
{
    std::string xml;
    FetchFile::fetch(file.GetAbsolutePath(), xml);
    return xml.empty() ? CFMetaData() : CFMetaData(xml);
}

/// The builders of the job. They live until its text is generated.
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
    // On the heap: builders refer to each other by address, and the vector may reallocate.
    std::vector<std::unique_ptr<HVLExpressionFun>> _realKeys;
    HVLFunction* _map = &_readMap; ///< the last step of the map's side
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
    return composedJob(_program, write);
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

/// The host's numbers are reals, so integer keys are converted before the comparison.
void MatchJob::makeReal(const std::string& key)
{
    std::vector<JNIHvlExpression*> reference = {_program.createHvlExpressionFieldReference(key)};
    auto reclassify = std::make_unique<HVLExpressionFun>(&_program);
    reclassify->SetReclassifyField(key, _program.createHvlExpression("toReal(%s)", &reference));
    reclassify->AddPredFunction(_map);
    _map = reclassify.get();
    _realKeys.push_back(std::move(reclassify));
}

/// Reduces each side to its keys, each combination once.
void MatchJob::aggregate()
{
    for (std::size_t i = 0; i < _sides.mapKeys.size(); ++i) {
        _mapKeys.AddAggregate("key", _sides.mapKeys[i], _sides.mapKeys[i]);
        _dataKeys.AddAggregate("key", _sides.dataKeys[i], _sides.dataKeys[i]);
    }
    _mapKeys.AddPredFunction(_map);
    _dataKeys.AddPredFunction(&_readData);
}

/// A missing key matches nothing and is therefore among the unmatched. KeyReader leaves it out.
void MatchJob::join()
{
    _join.AddPredFunction(&_mapKeys, "shape");
    _join.AddPredFunction(&_dataKeys, "dataset");
    _join.SetJoinType(_wanted.unmatched ? HVLJoin::Anti : HVLJoin::Inner);
    const std::size_t side = _wanted.mapSide ? kMap : kData;
    // Write only the fields of the requested side: both sides may use the same names.
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
