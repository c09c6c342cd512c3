#include "hvhost/describe/CaseGroups.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "HostConversions.h"
#include "Journal.h"
#include "data/HVDataModel.h"
#include "data/HVSplitRawData.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/MissingTexts.h"
#include "support/Conversions.h"
#include "support/Transcoding.h"

namespace {

constexpr const char* kGroupIterator = "cases";

/// The last error that the host showed. It is the reason of the failure.
CommandFault hostFault()
{
    const auto errors = HostJournal::instance().entries(HostJournal::Kind::Error);
    HostJournal::instance().clear();
    return {ExitStatus::JobFailed,
            errors.empty() ? "the cases of a group cannot be kept" : errors.back().text};
}

/// Whether the values that are declared missing are listed separately. Dates and times only if the
/// file has a column of this type: a numeric variable in a date format may declare missing values
/// that are not dates.
bool tellsMissing(const CFField& field, CFField::StorageType inFile)
{
    if (field.GetStorage() == CFField::String)
        return true;
    return field.GetType() != CFField::Continuous &&
           (field.GetStorage() == CFField::Real || field.GetStorage() == inFile);
}

/// The library's data model truncates texts, so it cannot tell which are missing. This takes the
/// whole texts.
CFMissingValues wholeMissing(const VEXA_Variable& variable)
{
    std::vector<CFValue> values;
    for (const std::string& text : missingTexts(variable))
        values.emplace_back(CFDatum(text));
    return {CFRange(), std::move(values), true, false};
}

/// For a missing value, the value of the key is empty.
GroupKey keyOf(const VEXA_Variable& variable, const OBS* value, CFField::StorageType storage)
{
    GroupKey key{transcodeToUTF8(variable.GetName().c_str(), nullptr), {}, storage, {}};
    const char* label = nullptr;
    if (variable.GetType() > 0) {
        std::string text;
        ConvertObsValToStr(value, variable, text);
        key.value = transcodeToUTF8(text.c_str(), nullptr);
        label = variable.GetValueLabels().GetLabel(text);
    } else if (value->number != kSystemMissing) {
        key.value = numberText(NumericStorageStatToCF(value->number, storage), storage);
        label = variable.GetValueLabels().GetLabel(value->number);
    }
    key.label = transcodeToUTF8(label, nullptr);
    return key;
}

std::string keyText(const GroupKey& key)
{
    const std::string value = key.value.value_or(".");
    return key.variable + " = " + (value.empty() ? "\"\"" : value) +
           (key.label.empty() ? "" : " (" + key.label + ")");
}

} // namespace

std::string nameOf(const std::vector<GroupKey>& key)
{
    std::string name;
    for (const GroupKey& part : key)
        name += (name.empty() ? "" : ", ") + keyText(part);
    return name;
}

CaseGroups::CaseGroups(const Dataset& dataset, std::vector<int> columns,
                       const InterruptWatch& watch)
    : _dataset(dataset), _columns(std::move(columns)), _source(dataset.source(), watch)
{
    if (dataset.weight() >= 0 && placeOf(dataset.weight()) < 0)
        _columns.push_back(dataset.weight());
    if (dataset.split().empty()) {
        _active.SetDataset(&dataset.source());
        _active.SetWeightVarIndex(dataset.weight());
        _active.SetSplitVars({});
        describe(activeColumns());
        return;
    }
    // The keys come after the columns that the jobs need. Jobs do not get them.
    std::vector<int> all = _columns;
    for (const int column : dataset.split()) {
        _keyStorages.push_back(dataset.storageOf(column));
        if (placeOf(column) < 0)
            all.push_back(column);
    }
    sort(all, watch);
    describe(activeColumns());
    nameNumber();
}

CaseGroups::~CaseGroups() = default;

/// The columns in the procedure's data. In a sorted copy they are the first columns.
std::vector<int> CaseGroups::activeColumns() const
{
    std::vector<int> columns = _columns;
    if (isSplit())
        std::iota(columns.begin(), columns.end(), 0);
    return columns;
}

/// Values that are declared missing are served if they will be listed; otherwise they become
/// missing. A weight that is declared missing does not count.
void CaseGroups::describe(const std::vector<int>& columns)
{
    HVDataModel model(_active, false, _dataset.weight() >= 0, false);
    model.UpdateAnalysMetadata(columns);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        CFField field = _dataset.served(_columns[i], *model.getMetaData().GetField(i));
        const VEXA_Variable& variable = _active.GetVariable(columns[i]);
        const bool isServed = _columns[i] != _dataset.weight() &&
                              tellsMissing(field, _dataset.file().Field(_columns[i]).GetStorage());
        _validSpecs.SetExclUserMiss(static_cast<int>(i), !isServed);
        if (variable.GetType() > 0 && variable.HasMissingValues())
            field.SetMissingValues(wholeMissing(variable));
        _fields.AppendField(field);
    }
}

/// Makes the procedure read a sorted copy with only `columns`, in which each group is contiguous.
void CaseGroups::sort(const std::vector<int>& columns, const InterruptWatch& watch)
{
    const auto place = [&columns](int column) {
        return static_cast<int>(std::find(columns.begin(), columns.end(), column) -
                                columns.begin());
    };
    std::vector<int> keys;
    for (const int column : _dataset.split())
        keys.push_back(place(column));
    _chosen = std::make_unique<VEXA_CProjection>(_source, columns);
    _sorted = std::make_unique<TempFileDataStore>(*_chosen, keys);
    _watchedSorted = std::make_unique<WatchedSource>(*_sorted, watch);
    _active.SetDataset(_watchedSorted.get());
    _active.SetWeightVarIndex(_dataset.weight() < 0 ? -1 : place(_dataset.weight()));
    _active.SetSplitVars(keys);
}

int CaseGroups::placeOf(int column) const
{
    const auto found = std::find(_columns.begin(), _columns.end(), column);
    return found == _columns.end() ? -1 : static_cast<int>(found - _columns.begin());
}

HVRawDataIterator* CaseGroups::next()
{
    return isSplit() ? nextGroups() : allCases();
}

HVRawDataIterator* CaseGroups::allCases()
{
    if (_all)
        return nullptr;
    _all = std::make_unique<HVRawDataIterator>(_active, _fields, _columns, nullptr);
    _all->SetFreqWeightAdj(kWeightUnchanged);
    _all->SetVarValidSpecs(&_validSpecs);
    _all->SetName(kGroupIterator);
    _all->SetTotalRecords(_dataset.file().CaseCount());
    _groups = {CaseGroup()};
    return _all.get();
}

HVRawDataIterator* CaseGroups::nextGroups()
{
    _file.reset();
    _groups.clear();
    if (!beginGroup())
        return nullptr;
    makeFile();
    do
        addGroup();
    while (hasRoom() && beginGroup());
    if (!_file->CompleteDataFile())
        throw hostFault();
    HVRawDataIterator* const cases =
        _file->CreateHVRawDataIter(kGroupIterator, kWeightUnchanged, &_validSpecs, &_fields, false);
    if (!cases)
        throw hostFault();
    return cases;
}

/// Makes an empty file with the columns of the jobs and, last, the number of the group.
void CaseGroups::makeFile()
{
    std::vector<int> columns = activeColumns();
    std::vector<std::string> names(columns.size());
    columns.push_back(-1);
    names.push_back(_numberName);
    _file = std::make_unique<HVSplitRawData>(_active, columns, names,
                                             std::vector<MeasurementLevel>(), false);
    if (!_file->GetBufferCase())
        throw hostFault();
}

/// Moves to the first case of the next group. Returns false at the end of the cases.
bool CaseGroups::beginGroup()
{
    if (!_walk) {
        _walk.reset(_active.MakeIterator(nullptr));
        return _walk->NextCase() != 0;
    }
    auto& groups = dynamic_cast<ProcDSIterator&>(*_walk);
    if (!groups.SplitGroupEnd())
        return false;
    groups.StartNextGroup();
    return true;
}

/// The memory of a job grows with the number of groups and fields. A job of its own describes a
/// large group without sorting it.
bool CaseGroups::hasRoom() const
{
    constexpr std::size_t kMostDescriptions = 20000;
    constexpr std::size_t kMostGroups = 500;
    constexpr long long kMostCases = 100000;
    long long cases = 0;
    for (const CaseGroup& group : _groups)
        cases += group.cases;
    return _groups.size() < std::min(kMostGroups, kMostDescriptions / (_columns.size() + 1)) &&
           cases < kMostCases;
}

void CaseGroups::addGroup()
{
    const std::vector<int> columns = activeColumns();
    const auto& ends = dynamic_cast<const ProcDSIterator&>(*_walk);
    CaseGroup& group = _groups.emplace_back();
    group.key = readKey();
    group.shownValues = _active.SplitValues();
    do {
        addCase(columns);
        ++group.cases;
    } while (_walk->NextCase() != 0 && !ends.SplitGroupEnd());
    _served += group.cases;
}

void CaseGroups::addCase(const std::vector<int>& columns)
{
    VEXA_Case& composed = *_file->GetBufferCase();
    int place = 0;
    for (const int column : columns) {
        if (const int width = _active.GetVariable(column).GetType(); width > 0)
            composed.SetStringValue(place, _walk->GetStringValue(column), width);
        else
            composed.SetNumericValue(place, _walk->GetNumericValue(column));
        ++place;
    }
    composed.SetNumericValue(place, static_cast<double>(_groups.size()));
    if (!_file->AddNewCase(&composed))
        throw hostFault();
}

/// Reads the key values of the group from its first case.
std::vector<GroupKey> CaseGroups::readKey() const
{
    std::vector<GroupKey> key;
    for (std::size_t i = 0; i < _keyStorages.size(); ++i)
        key.push_back(keyOf(_dataset.source().GetVariable(_dataset.split()[i]),
                            _walk->GetObsPointer(_active.GetSplitVarIndex(static_cast<int>(i))),
                            _keyStorages[i]));
    return key;
}

double CaseGroups::partServed() const
{
    const auto all = static_cast<double>(_dataset.file().CaseCount());
    return isSplit() && all > 0 ? std::min(static_cast<double>(_served) / all, 1.0) : 1;
}

/// The jobs of some groups distinguish them by a number, because the keys may be missing.
void CaseGroups::nameNumber()
{
    _numberName = "hv_group";
    while (_active.FindVarIndex(_numberName, 0) >= 0)
        _numberName += "_";
    _fields.AppendField(CFField(_numberName, CFField::Nominal, CFField::Integer, CFField::Input));
}
