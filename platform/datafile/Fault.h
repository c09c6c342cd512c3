#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "datafile/FaultParts.h"

namespace datafile {

/// An error for users: the text is one sentence that names the thing; the detail is for the log.
/// FaultIds.h has the ids. The parts are for programs, which must not search the text.
class Fault : public std::runtime_error
{
public:
    /// An error without a place.
    Fault(std::string id, const std::string& text, std::string detail = {})
        : Fault(std::move(id), FaultParts{.what = text}, std::move(detail))
    {
    }
    /// Composes the text from the parts, see sentenceOf.
    Fault(std::string id, FaultParts parts, std::string detail = {})
        : std::runtime_error(sentenceOf(parts)), _id(std::move(id)), _parts(std::move(parts)),
          _detail(std::move(detail))
    {
    }
    const std::string& id() const { return _id; }
    std::string text() const { return what(); }
    const FaultParts& parts() const { return _parts; }
    const std::string& detail() const { return _detail; }

private:
    std::string _id;
    FaultParts _parts;
    std::string _detail;
};

} // namespace datafile
