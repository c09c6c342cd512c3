#pragma once

#include <stdexcept>
#include <string>

namespace datafile {

/// What is wrong, for a person to read: the text is one sentence that names the thing, the detail
/// is for the log. The ids stand in FaultIds.h.
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

/// How a message begins that is about a file: with the step that wants it, if there is one.
inline std::string placeOf(const std::string& step, const std::string& path)
{
    return (step.empty() ? "" : step + ": ") + path + ": ";
}

} // namespace datafile
