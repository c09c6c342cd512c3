#pragma once

#include <memory>
#include <string>

#include "TnCellText.h"
#include "bridge/JsonValue.h"
#include "render/FieldLookup.h"

/// Converts the text items of a result to texts of the host's output and to plain strings.
///
/// An item has under `text` a body of one of six kinds. A missing value, or one of a wrong type, is
/// read as empty. An item without a text gives null or an empty string.
class TextItems
{
public:
    /// Source and dictionary are borrowed; the source may be null.
    TextItems(const ProcedureDataSource* source, const dataDictionary& dictionary)
        : _fields(source, dictionary)
    {
    }

    /// `translate`: look keys up in the host's string table.
    std::unique_ptr<TnCellText> cellTextOf(const JsonValue& item, bool translate) const;
    /// UTF-8, never translated. Used by filters and captions.
    std::string cellTextString(const JsonValue& item) const;
    /// Whether an item made no text because there was no memory for it.
    bool hasLostText() const { return _hasLostText; }

private:
    using Text = std::unique_ptr<TnCellText>;
    struct Kind;
    static const Kind* kindOf(const JsonValue& body);

    Text fixedText(const JsonValue& body, bool translate) const;
    Text numberText(const JsonValue& body, bool translate) const;
    Text variableText(const JsonValue& body, bool translate) const;
    Text numberOfVariable(const JsonValue& body, bool translate) const;
    Text stringOfVariable(const JsonValue& body, bool translate) const;
    Text compositeText(const JsonValue& body, bool translate) const;

    std::string fixedString(const JsonValue& body) const;
    std::string numberString(const JsonValue& body) const;
    std::string variableString(const JsonValue& body) const;
    std::string numberOfVariableString(const JsonValue& body) const;
    std::string stringOfVariableString(const JsonValue& body) const;
    std::string compositeString(const JsonValue& body) const;

    FieldLookup _fields;
    mutable bool _hasLostText = false;
};
