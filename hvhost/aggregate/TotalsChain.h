#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hvhost/aggregate/AggregateChain.h"

class HVLUnion;
struct ResultTable;

/// The field that tells totals from groups: how many of the keys, from the last one, a record sums
/// up. 0 for a group.
inline constexpr const char* kTotalField = "total";

/// The steps of a generated job that aggregate its records and, with totals, add a record for the
/// groups of all but the last key, and so on up to one for all records. A total follows the groups
/// that it sums up; the keys that it sums up are missing. Borrows all arguments.
class TotalsChain
{
public:
    /// The arguments are those of AggregateChain. Throws CommandFault (Usage) also if a result has
    /// the name of kTotalField.
    TotalsChain(JNIHvlProgram& program, HVLFunction& input, const RecordNames& names,
                const std::vector<std::string>& by, const std::vector<std::string>& statistics,
                const std::string& weight, bool totals);
    ~TotalsChain();
    TotalsChain(const TotalsChain&) = delete;
    TotalsChain& operator=(const TotalsChain&) = delete;

    /// The last step of the chain. The next step follows it.
    HVLFunction* last() { return _last; }
    /// The options for the outputs of the first aggregate step, in their order.
    const std::vector<std::string>& origins() const { return _levels.front()->origins(); }
    /// The options for the expressions that the chain composes.
    std::vector<JobOrigin::Expression> composed() const;

private:
    void addTotals(std::size_t keys);
    void markLevel(std::size_t level, std::size_t keys);
    void sort(std::size_t keys);
    void append(std::unique_ptr<HVLFunction> step);
    void derive(const std::string& name, const std::string& value);

    JNIHvlProgram& _program;
    std::vector<std::unique_ptr<AggregateChain>> _levels; ///< by the number of keys summed up
    std::vector<std::unique_ptr<HVLFunction>> _steps;
    HVLFunction* _last;
};

/// Replaces the keys that a total sums up by a word, and removes kTotalField, for a table as text.
void showTotals(ResultTable& table);
