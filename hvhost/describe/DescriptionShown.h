#pragma once

#include <iosfwd>
#include <memory>
#include <string>

struct Description;
struct GroupDescription;

/// The figures of a description for programs. Keeps the text of the groups, not the groups.
class DescriptionFigures
{
public:
    virtual ~DescriptionFigures() = default;
    virtual void add(const GroupDescription& group) = 0;
    virtual void print(std::ostream& out) const = 0;
};

/// The figures in the form json, or else csv: the statistics as one table. Borrows the description.
std::unique_ptr<DescriptionFigures> makeFigures(const std::string& form,
                                                const Description& description);
