#include "components/temporal/base/DocumentPlace.h"

#include <cmath>
#include <limits>

#include "JobError.h"
#include "base/JsonDepth.h"

namespace EmbeddedHV {
namespace {

constexpr int kDeepestDocument = 50;
constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

} // namespace

DocumentPlace::DocumentPlace(const Json& value, const DocumentSource& source, const char* errorId)
    : _value(value), _source(source), _errorId(errorId)
{
}

DocumentPlace::DocumentPlace(const Json& value, const DocumentPlace& parent,
                             const std::string& step)
    : _value(value), _source(parent._source), _errorId(parent._errorId),
      _path(parent._path + "/" + step)
{
}

void DocumentPlace::refuse(const std::string& problem) const
{
    throw JobError(_errorId,
                   _source.parts((_path.empty() ? "the document" : _path) + " " + problem));
}

const Json& DocumentPlace::object() const
{
    if (!_value.is_object())
        refuse("is not an object");
    return _value;
}

DocumentPlace DocumentPlace::member(const char* key) const
{
    const auto found = object().find(key);
    if (found == _value.end())
        refuse("has no member \"" + std::string(key) + "\"");
    return {*found, *this, key};
}

std::optional<DocumentPlace> DocumentPlace::optionalMember(const char* key) const
{
    const auto found = object().find(key);
    if (found == _value.end() || found->is_null())
        return std::nullopt;
    return DocumentPlace(*found, *this, key);
}

std::size_t DocumentPlace::listSize() const
{
    if (!_value.is_array())
        refuse("is not a list");
    return _value.size();
}

DocumentPlace DocumentPlace::element(std::size_t index) const
{
    return {_value[index], *this, std::to_string(index)};
}

const std::string& DocumentPlace::text() const
{
    if (!_value.is_string())
        refuse("is not a text");
    return _value.get_ref<const std::string&>();
}

bool DocumentPlace::flag() const
{
    if (!_value.is_boolean())
        refuse("is not true or false");
    return _value.get<bool>();
}

std::int64_t DocumentPlace::integer(std::int64_t least, std::int64_t most) const
{
    const bool isWhole = _value.is_number_integer() &&
                         (!_value.is_number_unsigned() || _value.get<std::uint64_t>() <= INT64_MAX);
    if (!isWhole || _value.get<std::int64_t>() < least || _value.get<std::int64_t>() > most)
        refuse("is not a whole number from " + std::to_string(least) + " to " +
               std::to_string(most));
    return _value.get<std::int64_t>();
}

double DocumentPlace::real() const
{
    if (!_value.is_number() || !std::isfinite(_value.get<double>()))
        refuse("is not a finite number");
    return _value.get<double>();
}

double DocumentPlace::realOrMissing() const
{
    return _value.is_null() ? kMissing : real();
}

std::vector<double> DocumentPlace::realsOrMissing() const
{
    std::vector<double> numbers;
    numbers.reserve(listSize());
    for (const Json& number : _value) {
        // Lists are long: a place is made only for a message.
        const bool isReal = number.is_number() && std::isfinite(number.get<double>());
        if (!isReal && !number.is_null())
            refuse("has an element that is not a finite number");
        numbers.push_back(isReal ? number.get<double>() : kMissing);
    }
    return numbers;
}

Json parsedDocument(const std::string& text, std::size_t values, const DocumentSource& source,
                    const char* errorId)
{
    if (base::excessOf(text, {kDeepestDocument, values}))
        throw JobError(errorId,
                       source.parts("the document is nested deeper than " +
                                    std::to_string(kDeepestDocument) + " levels or has more than " +
                                    std::to_string(values) + " values"));
    try {
        return Json::parse(text);
    } catch (const Json::exception&) {
        throw JobError(errorId, source.parts("the document is not JSON, or a number in it is too "
                                             "large for a double"));
    }
}

} // namespace EmbeddedHV
