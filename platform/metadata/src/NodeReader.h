#pragma once

#include <string>
#include <string_view>

#include "DocumentText.h"
#include "NumberText.h"

/// The text of an element without its comments.
std::string textOf(pugi::xml_node node);

/// Reads attributes of a document's elements. Throws CFMetaDataError for invalid ones.
class NodeReader
{
public:
    /// The text is borrowed for the life of the object.
    explicit NodeReader(const DocumentText& text) : _text(text) {}

    [[noreturn]] void fail(const std::string& what, pugi::xml_node node) const
    {
        _text.fail(what, node);
    }

    /// A mandatory attribute, unescaped.
    std::string required(pugi::xml_node node, const char* attribute) const;
    double requiredReal(pugi::xml_node node, const char* attribute) const;
    /// An attribute, unescaped; empty if it is missing.
    static std::string textOr(pugi::xml_node node, const char* attribute);
    bool flagOr(pugi::xml_node node, const char* attribute, bool absent) const;

    template <typename Integer>
    Integer integerOr(pugi::xml_node node, const char* attribute, Integer absent) const
    {
        const pugi::xml_attribute given = node.attribute(attribute);
        if (!given)
            return absent;
        if (const auto value = parseInteger<Integer>(given.value()))
            return *value;
        failValue(node, given, "a whole number in the range");
    }

    /// The value of an enumeration by its word in the attribute.
    template <typename Enumeration>
    Enumeration wordOr(pugi::xml_node node, const char* attribute, Enumeration absent) const
    {
        const pugi::xml_attribute given = node.attribute(attribute);
        if (!given)
            return absent;
        // No enumeration has more values. A value without a word matches nothing.
        constexpr int kMaxValues = 8;
        for (int value = 0; value < kMaxValues; ++value) {
            const char* word = WordOf(static_cast<Enumeration>(value));
            if (word && std::string_view(word) == given.value())
                return static_cast<Enumeration>(value);
        }
        failValue(node, given, "one of its words");
    }

private:
    [[noreturn]] void failValue(pugi::xml_node node, pugi::xml_attribute given,
                                const char* expected) const;

    const DocumentText& _text;
};
