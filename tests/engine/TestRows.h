#pragma once

#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "RowBlocks.h"
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

/// The same rows, which can also be read in blocks.
class TestBlocks : public TestRows, public EmbeddedHV::RowBlocks
{
public:
    using TestRows::TestRows;

    bool servesBlocks(const std::vector<std::size_t>&) override { return true; }
    unsigned int nextRecords(const std::vector<std::size_t>& fields,
                             const std::vector<double*>& columns, std::size_t most,
                             std::size_t& count) override
    {
        for (count = 0; count < most; ++count) {
            if (const unsigned int ended = nextRecord(); ended != RecordAvailable)
                return ended;
            for (std::size_t i = 0; i < fields.size(); ++i) {
                void* value = nullptr;
                unsigned long long length = 0;
                getRecordValue(fields[i], value, length);
                columns[i][count] = value ? *static_cast<double*>(value) : kMissing;
            }
        }
        ++blocks;
        return RecordAvailable;
    }

    std::size_t blocks = 0; ///< how many were read to their end
};

} // namespace EngineTest
