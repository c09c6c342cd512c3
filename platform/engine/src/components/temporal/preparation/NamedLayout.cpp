#include "components/temporal/preparation/NamedLayout.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/temporal/base/SeriesTable.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kFutureFlag = "$FutureFlag";
/// What a score adds to the id of a series, in the order of the output's fields.
constexpr std::array kScoreSuffixes = {"", "_predicted", "_lower", "_upper"};

/// A column that holds values of a series.
struct NamedColumn
{
    std::size_t column = 0;
    const NamedSeries::Series* series = nullptr;
    std::size_t suffix = 0; ///< a place in kScoreSuffixes
};

class LayoutMaking
{
public:
    LayoutMaking(const Fields& fields, const NamedSeries& known, bool exportsFlag,
                 const std::string& component)
        : _fields(fields), _known(known), _component(component)
    {
        _layout.hasFlag = exportsFlag;
    }

    NamedLayout run()
    {
        readColumns();
        std::set<std::vector<int>> codes;
        for (const NamedColumn& column : _columns)
            codes.insert(column.series->codes);
        // One series that was asked for needs no values beside it; prepared records have to be
        // found by them.
        _layout.hasDimensions =
            !_known.dimensions.empty() && (!_layout.flagColumn || codes.size() > 1);
        placeColumns();
        makeFields();
        return std::move(_layout);
    }

private:
    void readColumns()
    {
        std::optional<std::size_t> index;
        for (std::size_t i = 0; i < _fields.size(); ++i) {
            const CFField& field = _fields[i];
            const bool isInteger = field.GetStorage() == CFField::Integer;
            if (field.GetName() == kTimeIndexField && isInteger)
                index = i;
            else if (field.GetName() == kFutureFlag && isInteger)
                _layout.flagColumn = i;
            else
                _columns.push_back(columnOf(i));
        }
        if (!index)
            throw JobError(errors::kUnknownField,
                           {.step = _component,
                            .field = kTimeIndexField,
                            .what = std::string("the input has no integer field \"") +
                                    kTimeIndexField +
                                    "\": its records are not those of tsdp, tcm:score or tcm:ar"});
        if (_columns.empty())
            throw JobError(errors::kNotPrepared,
                           {.step = _component, .what = "the input has no series"});
        _layout.indexColumn = *index;
    }

    NamedColumn columnOf(std::size_t place) const
    {
        const std::string& name = _fields[place].GetName();
        for (std::size_t suffix = 0; suffix < kScoreSuffixes.size(); ++suffix) {
            const std::string_view ending = kScoreSuffixes[suffix];
            if (!name.ends_with(ending))
                continue;
            const auto found = _known.series.find(name.substr(0, name.size() - ending.size()));
            if (found != _known.series.end() && _fields[place].GetStorage() == CFField::Real)
                return {place, &found->second, suffix};
        }
        throw JobError(
            errors::kNotPrepared,
            {.step = _component,
             .field = name,
             .what = "the field \"" + name +
                     "\" of the input is no series of the preparation in the container"});
    }

    /// The fields of the values are those of each metric that occurs, in the order of the metrics.
    void placeColumns()
    {
        std::map<std::pair<std::size_t, std::size_t>, std::size_t> places;
        for (const NamedColumn& column : _columns)
            places[{column.series->metric, column.suffix}] = 0;
        for (auto& [key, place] : places) {
            place = _layout.valueFields.size();
            _layout.valueFields.push_back(_known.metrics[key.first] + kScoreSuffixes[key.second]);
        }
        std::map<std::vector<int>, std::size_t> combinations;
        for (const NamedColumn& column : _columns) {
            const std::vector<int>& codes = column.series->codes;
            const auto [at, isNew] = combinations.emplace(codes, _layout.combinations.size());
            if (isNew)
                _layout.combinations.push_back(
                    {codes, std::vector(places.size(), NamedLayout::kNoColumn)});
            _layout.combinations[at->second]
                .columns[places[{column.series->metric, column.suffix}]] = column.column;
        }
    }

    void makeFields()
    {
        for (const CFField& time : _known.axis.fields)
            add(time.GetName(), CFField::Ordinal, time.GetStorage());
        if (_layout.hasFlag)
            add(kFutureFlag, CFField::Flag, CFField::Integer);
        if (_layout.hasDimensions)
            for (const CFField& dimension : _known.dimensions)
                add(dimension.GetName(), CFField::Nominal, dimension.GetStorage());
        for (const std::string& name : _layout.valueFields)
            add(name, CFField::Continuous, CFField::Real);
    }

    void add(const std::string& name, CFField::FieldType type, CFField::StorageType storage)
    {
        refuseDuplicate(_layout.fields, name, _component);
        _layout.fields.emplace_back(name, type, storage);
    }

    const Fields& _fields;
    const NamedSeries& _known;
    const std::string& _component;
    std::vector<NamedColumn> _columns;
    NamedLayout _layout;
};

} // namespace

NamedLayout namedLayout(const Fields& fields, const NamedSeries& known, bool exportsFlag,
                        const std::string& component)
{
    return LayoutMaking(fields, known, exportsFlag, component).run();
}

} // namespace EmbeddedHV
