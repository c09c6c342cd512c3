#include <utility>

#include "TnStrings.h"
#include "Translation.h"
#include "output/CompositeFormat.h"
#include "output/LiveHeadings.h"

struct TnComposite::Impl
{
    std::string format;
    bool isTableKey = false;
    std::vector<CompositePart> parts;
    bool inSublist = false;
    bool finished = false;
};

TnComposite::TnComposite(std::string format, bool stringTableKey) : _impl(std::make_unique<Impl>())
{
    _impl->format = std::move(format);
    _impl->isTableKey = stringTableKey;
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

void TnComposite::Add(const TnCellText& text)
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

TnContent TnComposite::content() const
{
    TnContent content;
    content.key = _impl->isTableKey ? _impl->format : std::string();
    content.text =
        fillComposite(_impl->isTableKey ? translate(_impl->format) : _impl->format, _impl->parts);
    return content;
}

std::unique_ptr<TnCellText> TnComposite::clone() const
{
    return std::make_unique<TnComposite>(*this);
}
