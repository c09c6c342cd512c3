#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "CFMetaData.h"
#include "RowDataIterator.h"

/// Rows of a file that a job wrote, from given numbers and texts.
class WrittenRows : public EmbeddedHV::RowDataIterator
{
public:
    using Value = std::optional<std::variant<double, std::int32_t, std::string>>;

    WrittenRows(const std::vector<CFField>& fields, std::vector<std::vector<Value>> rows)
        : _rows(std::move(rows))
    {
        for (const CFField& field : fields)
            _model.AppendField(field);
    }

    std::string getName() override { return "written"; }
    std::string getDataModel() override
    {
        std::string xml;
        _model.ExportXMLDoc(xml);
        return xml;
    }
    unsigned int nextRecord() override
    {
        return _next++ < _rows.size() ? static_cast<unsigned int>(RecordAvailable) : end;
    }
    unsigned int getRecordValue(unsigned long long field, void*& value,
                                unsigned long long& length) override
    {
        Value& cell = _rows.at(_next - 1).at(field);
        value = nullptr;
        length = 0;
        if (cell && std::holds_alternative<std::string>(*cell)) {
            value = std::get<std::string>(*cell).data();
            length = std::get<std::string>(*cell).size();
        } else if (cell && std::holds_alternative<std::int32_t>(*cell)) {
            value = &std::get<std::int32_t>(*cell);
            length = sizeof(std::int32_t);
        } else if (cell) {
            value = &std::get<double>(*cell);
            length = sizeof(double);
        }
        return RecordAvailable;
    }
    void dispose(JNIEnv*) override
    {
        ++disposals;
        if (failsToDispose)
            throw std::runtime_error("dispose");
    }
    void rewind() { _next = 0; }

    unsigned int end = EndOfData;
    int disposals = 0;
    bool failsToDispose = false;

private:
    CFMetaData _model;
    std::vector<std::vector<Value>> _rows;
    std::size_t _next = 0;
};

inline CFField realField(const std::string& name)
{
    return {name, CFField::Continuous, CFField::Real};
}

inline CFField textField(const std::string& name)
{
    return {name, CFField::Nominal, CFField::String};
}
