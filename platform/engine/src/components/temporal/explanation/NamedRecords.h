#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "components/temporal/explanation/ExplanationRecords.h"

namespace EmbeddedHV {

/// Records of named series, as rtsdp gives them: the time, the dimensions and the metrics. Records
/// beyond the data, by the field `$FutureFlag`, are skipped, and so are records of a combination of
/// values that the model does not know.
class NamedRecords : public ExplanationRecords
{
public:
    /// Throws JobError if a field is missing. `known` is borrowed.
    NamedRecords(const Fields& fields, const TcmModel& model, const NamedSeries& known,
                 std::string component, const MessageSink& message);

    std::string statement(const std::string& select) const override;
    void take(duck::Chunk& chunk) override;
    SeriesTable finish() override;

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// The series that have one combination of values of the dimensions.
    struct Combination
    {
        std::vector<std::size_t> series; ///< by metric: a place in _ids; kNone for no series
        std::size_t points = 0;          ///< that were taken
    };
    struct Columns;

    void checkFields(const Fields& fields);
    void findMetrics(const Fields& fields, const TcmModel& model, const MessageSink& message);
    void addMetric(const CFField& field);
    void addSeries(const ModelSeries& series);
    std::string keyOf(const std::vector<std::string_view>& values) const;
    Combination* combinationOf(const Columns& columns, std::size_t row);
    void takeRecord(const Columns& columns, std::size_t row);
    void takePoint(Combination& combination, std::string_view time);
    void checkFirst(std::string_view time) const;
    void checkLengths() const;
    [[noreturn]] void refuse(const std::string& problem, FaultParts parts = {}) const;

    const NamedSeries& _known;
    std::string _component;
    Fields _timeFields;
    bool _hasFlag = false;
    std::vector<std::string> _metrics; ///< that are fields of the input
    std::unordered_map<std::string, std::size_t>
        _metricPlaces; ///< kNone for a metric without a field
    std::vector<Combination> _combinations;
    std::unordered_map<std::string, std::size_t> _byKey; ///< places of combinations
    std::unordered_map<std::string, std::size_t> _met;   ///< the same by texts of the records
    std::vector<std::string> _ids;
    std::vector<std::vector<double>> _values; ///< of the series
    std::vector<std::string> _points;
    std::uint64_t _records = 0;
    // Members, so that a record allocates nothing.
    std::string _rawKey;
    std::vector<std::string_view> _texts;
};

} // namespace EmbeddedHV
