#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <pugixml.hpp>

/// The text of a document, with its line numbers for messages and the check of its characters.
class DocumentText
{
public:
    /// The text is borrowed for the life of the object. The text behind the last `</DataModel>` is
    /// ignored, so that a caller need not cut the model exactly.
    explicit DocumentText(const std::string& xml);

    std::string_view text() const { return _text; }
    /// Refuses invalid UTF-8 and characters that XML does not allow, even as references, which the
    /// parser would accept or take as the end.
    void checkCharacters() const;

    /// Throws CFMetaDataError with the problem and the line.
    [[noreturn]] void fail(const std::string& what, std::ptrdiff_t offset) const;
    [[noreturn]] void fail(const std::string& what, pugi::xml_node node) const
    {
        fail(what, node.offset_debug());
    }

private:
    std::size_t afterReference(std::size_t at) const;

    std::string_view _text;
};
