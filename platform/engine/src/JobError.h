#pragma once

#include <stdexcept>
#include <string>

namespace EmbeddedHV {

/// A fault in a job: what becomes ExecutionListener::onError, or an Exception out of prepare. The
/// ids stand in ErrorIds.h and docs/hvl.md; the text is one sentence that names the step and the
/// thing; the detail is for the log.
class JobError : public std::runtime_error
{
public:
    JobError(std::string id, const std::string& text, std::string detail = {})
        : std::runtime_error(text), _id(std::move(id)), _detail(std::move(detail))
    {
    }
    const std::string& id() const { return _id; }
    std::string text() const { return what(); }
    const std::string& detail() const { return _detail; }

private:
    std::string _id;
    std::string _detail;
};

} // namespace EmbeddedHV
