#pragma once

#include <stdexcept>
#include <string>

namespace datafile {

/// An error for users: the text is one sentence that names the thing; the detail is for the log.
/// FaultIds.h has the ids.
class Fault : public std::runtime_error
{
public:
    Fault(std::string id, const std::string& text, std::string detail = {})
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

/// The beginning of a message about a file, with the step that uses it, if there is one.
inline std::string placeOf(const std::string& step, const std::string& path)
{
    return (step.empty() ? "" : step + ": ") + path + ": ";
}

} // namespace datafile
