#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <pugixml.hpp>

/// The text of a document that is being read: knows the lines, for messages, and which characters
/// may stand in it.
class DocumentText
{
public:
    /// The text is borrowed for the life of the object. What stands behind the last `</DataModel>`
    /// is left out: who cuts a model out of a larger text need not care where it ends.
    explicit DocumentText(const std::string& xml);

    std::string_view text() const { return _text; }
    /// Refuses bytes that are not UTF-8 and characters that XML has no place for, be they written
    /// as references, where the parser would let them pass or end the text.
    void checkCharacters() const;

    /// Throws CFMetaDataError, which says what is wrong and in which line.
    [[noreturn]] void fail(const std::string& what, std::ptrdiff_t offset) const;
    [[noreturn]] void fail(const std::string& what, pugi::xml_node node) const
    {
        fail(what, node.offset_debug());
    }

private:
    std::size_t afterReference(std::size_t at) const;

    std::string_view _text;
};
