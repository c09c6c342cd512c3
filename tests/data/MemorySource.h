#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "ErrorText.h"
#include "VexaDataSource.h"

/// Cases in memory, as a test writes them down.
class MemorySource : public VEXA_DataSource
{
public:
    using Value = std::variant<double, std::string>;
    using Row = std::vector<Value>;

    explicit MemorySource(std::vector<VEXA_Variable> variables, std::vector<Row> rows = {})
        : _variables(std::move(variables)), _rows(std::move(rows))
    {
    }

    int weight = -1;
    std::vector<int> split;
    /// How many iterators were made, and the most that were open at once.
    mutable int iterators = 0;
    /// After how many cases the source is lost, and whether it is already.
    std::size_t readable = SIZE_MAX;
    bool lost = false;
    /// Called before a case is read, with its number from 1, on the thread that reads.
    std::function<void(std::size_t number)> onCase;

    int ColumnCount() const override { return static_cast<int>(_variables.size()); }
    const VEXA_Variable& GetVariable(int column) const override
    {
        return _variables.at(static_cast<std::size_t>(column));
    }
    int GetWeightVarIndex() const override { return weight; }
    int GetNSplitVars() const override { return static_cast<int>(split.size()); }
    int GetSplitVarIndex(int position) const override
    {
        return split.at(static_cast<std::size_t>(position));
    }
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor*) const override
    {
        if (lost)
            throw ErrorText("the source is gone");
        ++iterators;
        return std::make_unique<Cases>(*this).release();
    }

private:
    /// Walks through the source's rows.
    class Cases : public VEXA_InputCaseIterator
    {
    public:
        explicit Cases(const MemorySource& source) : _source(source)
        {
            _units.resize(source._variables.size());
        }
        int NextCase() override
        {
            if (_next == _source._rows.size())
                return 0;
            if (_source.onCase)
                _source.onCase(_next + 1);
            if (_next >= _source.readable)
                throw ErrorText("the source is lost");
            const Row& row = _source._rows[_next++];
            for (std::size_t i = 0; i < row.size(); ++i)
                put(i, row[i]);
            return 1;
        }
        double GetNumericValue(int column) const override { return GetObsPointer(column)->number; }
        const char* GetStringValue(int column) const override
        {
            return GetObsPointer(column)->text;
        }
        const OBS* GetObsPointer(int column) const override
        {
            return _units[static_cast<std::size_t>(column)].data();
        }
        long long GetCaseCount() const override { return static_cast<long long>(_next); }

    private:
        void put(std::size_t column, const Value& value)
        {
            const auto width = static_cast<std::size_t>(_source._variables[column].GetType());
            std::vector<OBS>& units = _units[column];
            units.assign(width == 0 ? 1 : (width + 7) / 8, OBS{});
            if (width == 0) {
                units.front().number = std::get<double>(value);
                return;
            }
            std::string text = std::get<std::string>(value);
            text.resize(units.size() * sizeof(OBS), ' ');
            std::copy(text.begin(), text.end(), units.front().text);
        }

        const MemorySource& _source;
        std::vector<std::vector<OBS>> _units;
        std::size_t _next = 0;
    };

    std::vector<VEXA_Variable> _variables;
    std::vector<Row> _rows;
};

inline VEXA_Variable numeric(const std::string& name, std::uint8_t format = kFormatNumber)
{
    VEXA_Variable variable(0);
    variable.SetName(name);
    variable.SetFormat({8, format, 2});
    return variable;
}

inline VEXA_Variable text(const std::string& name, int width)
{
    VEXA_Variable variable(width);
    variable.SetName(name);
    return variable;
}
