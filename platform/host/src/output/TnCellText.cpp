#include "TnCellText.h"

#include "TnAnnotation.h"
#include "output/KeptTexts.h"

TnCellText::~TnCellText() = default;

long TnCellText::Replicate() const
{
    return keepText(clone());
}

TnHandle& TnHandle::operator=(TnHandle&& other) noexcept
{
    std::swap(_number, other._number);
    return *this;
}

TnHandle::~TnHandle()
{
    if (_number != kNone)
        releaseText(_number);
}

const TnCellText* TnHandle::text() const
{
    return keptText(_number);
}
