#include "render/OutputOrder.h"

#include "support/DottedPath.h"

struct HVINTEG_HIDDEN OutputOrder::Impl
{
    std::string title;
    std::vector<std::vector<std::string>> locations;
    std::string outlineTitle;
    std::string omsSubType;
    std::string options;
    std::string caption;
    std::string pathId;
    std::vector<std::string> hiddenRows;
    std::vector<std::string> shownRows;
    std::vector<std::string> hiddenCols;
    std::vector<std::string> shownCols;
    Type type = Pivot;
    bool needsGEO = false;
    bool translateTitle = false;
};

namespace {
/// Options and caption lines are collected over several calls.
void append(std::string& text, const char* separator, const std::string& addition)
{
    if (!text.empty())
        text += separator;
    text += addition;
}
} // namespace

OutputOrder::OutputOrder() : _impl(std::make_unique<Impl>()) {}

OutputOrder::OutputOrder(const std::string& title, const std::vector<std::string>& location,
                         Type type, const std::string& outlineTitle, const std::string& OMSSubType)
    : OutputOrder()
{
    setHeading(title).addLocation(location).setType(type).setOutlineTitle(outlineTitle, true);
    setOMSSubType(OMSSubType).setNeedsGEOJson(true);
}

OutputOrder::OutputOrder(const OutputOrder& other) : _impl(std::make_unique<Impl>(*other._impl)) {}

OutputOrder& OutputOrder::operator=(const OutputOrder& other)
{
    *_impl = *other._impl;
    return *this;
}

OutputOrder::~OutputOrder() = default;

OutputOrder& OutputOrder::setHeading(const std::string& title)
{
    _impl->title = title;
    return *this;
}

OutputOrder& OutputOrder::setOutlineTitle(const std::string& title, bool translate)
{
    _impl->outlineTitle = title;
    _impl->translateTitle = translate;
    return *this;
}

OutputOrder& OutputOrder::setOMSSubType(const std::string& subType)
{
    _impl->omsSubType = subType;
    return *this;
}

OutputOrder& OutputOrder::setPathId(const std::string& path)
{
    _impl->pathId = path;
    return *this;
}

OutputOrder& OutputOrder::setType(Type type)
{
    _impl->type = type;
    return *this;
}

OutputOrder& OutputOrder::setNeedsGEOJson(bool needed)
{
    _impl->needsGEO = needed;
    return *this;
}

OutputOrder& OutputOrder::setOptions(const std::string& options)
{
    append(_impl->options, ",", options);
    return *this;
}

OutputOrder& OutputOrder::addTextToCaption(const std::string& text)
{
    append(_impl->caption, "\n", text);
    return *this;
}

OutputOrder& OutputOrder::addLocation(const std::string& path)
{
    return addLocation(segmentsOf(path));
}

OutputOrder& OutputOrder::addLocation(const std::vector<std::string>& segments)
{
    _impl->locations.push_back(segments);
    return *this;
}

OutputOrder& OutputOrder::hideCategories(const std::vector<std::string>& categories, bool rows)
{
    (rows ? _impl->hiddenRows : _impl->hiddenCols) = categories;
    return *this;
}

OutputOrder& OutputOrder::hideAllCategoriesExcept(const std::string& category, bool rows)
{
    (rows ? _impl->shownRows : _impl->shownCols).push_back(category);
    return *this;
}

const std::string& OutputOrder::getTitle() const
{
    return _impl->title;
}

const std::string& OutputOrder::getCaption() const
{
    return _impl->caption;
}

const std::vector<std::vector<std::string>>& OutputOrder::getLocations() const
{
    return _impl->locations;
}

const std::string& OutputOrder::getOMSSubType() const
{
    return _impl->omsSubType;
}

const std::string& OutputOrder::getOptions() const
{
    return _impl->options;
}

const std::string& OutputOrder::getOutlineTitle() const
{
    return _impl->outlineTitle;
}

const std::string& OutputOrder::getPathId() const
{
    return _impl->pathId;
}

std::vector<std::string> OutputOrder::getHiddenRows() const
{
    return _impl->hiddenRows;
}

std::vector<std::string> OutputOrder::getShownRows() const
{
    return _impl->shownRows;
}

std::vector<std::string> OutputOrder::getHiddenCols() const
{
    return _impl->hiddenCols;
}

std::vector<std::string> OutputOrder::getShownCols() const
{
    return _impl->shownCols;
}

OutputOrder::Type OutputOrder::getType() const
{
    return _impl->type;
}

bool OutputOrder::needsGEO() const
{
    return _impl->needsGEO;
}

bool OutputOrder::translateTitle() const
{
    return _impl->translateTitle;
}
