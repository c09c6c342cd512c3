#pragma once

#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "RowDataIterator.h"

namespace EngineTest {

/// A row iterator over values in memory, with a place for surprises.
class TestRows : public EmbeddedHV::RowDataIterator
{
public:
    using Value = std::variant<std::monostate, double, std::string>;
    /// A field's name, and the word of its storage.
    struct Field
    {
        std::string name;
        std::string storage;
    };

    TestRows(std::string name, std::vector<Field> fields, std::vector<std::vector<Value>> rows)
        : _name(std::move(name)), _fields(std::move(fields)), _rows(std::move(rows))
    {
    }

    std::string getName() override { return _name; }
    std::string getDataModel() override
    {
        std::string xml = R"(<DataModel version="1">)";
        for (const Field& field : _fields)
            xml += R"(<Field name=")" + field.name + R"(" storage=")" + field.storage +
                   R"(" measure="nominal" role="input"/>)";
        return model.value_or(xml + "</DataModel>");
    }
    unsigned int nextRecord() override
    {
        ++calls;
        if (beforeRecord)
            beforeRecord(calls);
        if (status != RecordAvailable || _at == _rows.size())
            return status != RecordAvailable ? status : static_cast<unsigned int>(EndOfData);
        ++_at;
        return RecordAvailable;
    }
    unsigned int getRecordValue(unsigned long long index, void*& value,
                                unsigned long long& length) override
    {
        ++valueCalls;
        Value& held = _rows[_at - 1][index];
        if (auto* number = std::get_if<double>(&held)) {
            value = number;
            length = sizeof(double);
        } else if (auto* text = std::get_if<std::string>(&held)) {
            value = text->data();
            length = text->size();
        } else {
            value = nullptr;
            length = 0;
        }
        return RecordAvailable;
    }
    void dispose(JNIEnv*) override {}

    std::optional<std::string> model;
    unsigned int status = RecordAvailable; ///< what nextRecord answers from now on
    std::function<void(std::size_t)> beforeRecord;
    std::size_t calls = 0;
    std::size_t valueCalls = 0;

private:
    std::string _name;
    std::vector<Field> _fields;
    std::vector<std::vector<Value>> _rows;
    std::size_t _at = 0;
};

} // namespace EngineTest
