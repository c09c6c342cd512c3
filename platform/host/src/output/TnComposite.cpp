#include <utility>

#include "TnOutput.h"
#include "output/CompositeFormat.h"
#include "output/CurrentProcedure.h"
#include "output/StringTable.h"

struct TnComposite::Impl
{
    std::string format;
    bool translate = false;
    std::vector<CompositePart> parts;
    bool inSublist = false;
    bool finished = false;
};

TnComposite::TnComposite(std::string format, bool translate) : _impl(std::make_unique<Impl>())
{
    _impl->format = std::move(format);
    _impl->translate = translate;
}

TnComposite::TnComposite(const TnComposite& other) : _impl(std::make_unique<Impl>(*other._impl)) {}
TnComposite::~TnComposite() = default;

void TnComposite::Sublist()
{
    if (_impl->finished)
        return;
    _impl->parts.emplace_back();
    _impl->inSublist = true;
}

void TnComposite::SplitList()
{
    if (_impl->finished || !_impl->inSublist)
        return;
    for (auto& [name, value] : currentSplitList())
        _impl->parts.back().push_back({std::move(name), std::move(value)});
}

void TnComposite::EndSublist()
{
    _impl->inSublist = false;
}

void TnComposite::Add(const TnText& text)
{
    if (_impl->finished)
        return;
    if (_impl->inSublist)
        _impl->parts.back().push_back({text.text()});
    else
        _impl->parts.push_back({{text.text()}});
}

void TnComposite::Finish()
{
    _impl->inSublist = false;
    _impl->finished = true;
}

std::string TnComposite::text() const
{
    const std::string format = _impl->translate ? ::translate(_impl->format) : _impl->format;
    return fillComposite(format, _impl->parts);
}

std::unique_ptr<TnText> TnComposite::clone() const
{
    return std::make_unique<TnComposite>(*this);
}
