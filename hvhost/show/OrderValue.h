#pragma once

#include <string>
#include <utility>
#include <vector>

#include "hvhost/base/JsonFile.h"

/// A value of an order file, and the path to it, which every error names. Borrows the file. Reading
/// throws CommandFault (Input).
class OrderValue
{
public:
    explicit OrderValue(const JsonFile& file) : OrderValue(file, file.json, {}) {}

    /// For example "order.json: objects[2].title".
    std::string origin() const;
    bool isArray() const { return _json->is_array(); }
    bool isText() const { return _json->is_string(); }

    std::string text() const;
    bool flag() const;
    /// The elements of a list. A value that is not a list is its own only element.
    std::vector<OrderValue> elements() const;
    std::vector<std::string> texts() const;
    /// The members of an object, with their keys.
    std::vector<std::pair<std::string, OrderValue>> members() const;

    [[noreturn]] void refuse(const std::string& what, const std::string& hint = {}) const;

private:
    OrderValue(const JsonFile& file, const nlohmann::ordered_json& json, std::string path)
        : _file(&file), _json(&json), _path(std::move(path))
    {
    }
    [[noreturn]] void refuseKind(const std::string& wanted) const;

    const JsonFile* _file;
    const nlohmann::ordered_json* _json;
    std::string _path;
};
