#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "components/temporal/base/DocumentSource.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A value in a JSON document from a file, with its place for messages. Readers throw JobError that
/// names the document and the place where a value is missing or of a wrong type.
class DocumentPlace
{
public:
    /// All arguments are borrowed.
    DocumentPlace(const Json& value, const DocumentSource& source, const char* errorId);

    DocumentPlace member(const char* key) const;
    /// Nothing if the member is absent or null.
    std::optional<DocumentPlace> optionalMember(const char* key) const;
    /// The number of elements of a list. Throws if the value is not a list.
    std::size_t listSize() const;
    DocumentPlace element(std::size_t index) const;

    const std::string& text() const;
    bool flag() const;
    /// A whole number of the range, both ends included.
    std::int64_t integer(std::int64_t least, std::int64_t most) const;
    /// A finite number.
    double real() const;
    /// A finite number; not-a-number for null.
    double realOrMissing() const;
    /// Finite numbers of a list, with not-a-number for null.
    std::vector<double> realsOrMissing() const;
    const Json& value() const { return _value; }

    [[noreturn]] void refuse(const std::string& problem) const;

private:
    DocumentPlace(const Json& value, const DocumentPlace& parent, const std::string& step);
    const Json& object() const;

    const Json& _value;
    const DocumentSource& _source;
    const char* _errorId;
    std::string _path;
};

/// The tree of a JSON text of at most `values` values. Throws JobError if it is not JSON or exceeds
/// the bounds.
Json parsedDocument(const std::string& text, std::size_t values, const DocumentSource& source,
                    const char* errorId);

} // namespace EmbeddedHV
