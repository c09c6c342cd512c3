#include "data/HVSimpleContainer.h"

#include <cstdio>
#include <utility>

#include "ExtNameStr.h"
#include "FileServices.h"

HVSimpleContainer::HVSimpleContainer(const std::string& name, std::string path)
    : _name(name), _genericPath(std::move(path))
{
    if (_genericPath.empty()) {
        _genericPath = FormTempName("hvcontfile_");
        if (std::FILE* const file = ExtNameStr::fopen(ExtNameStr(_genericPath), "w"))
            std::fclose(file);
        _isTemp = true;
    }
    _absolutePath = ExtNameStr(_genericPath).GetU8();
}

HVSimpleContainer::~HVSimpleContainer()
{
    if (_isTemp)
        ExtNameStr::remove(ExtNameStr(_genericPath));
}
