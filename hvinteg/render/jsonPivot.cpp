#include "render/jsonPivot.h"

#include "bridge/JsonImage.h"
#include "render/PivotBuilder.h"
#include "render/PivotSettings.h"
#include "render/TextItems.h"

struct HVINTEG_HIDDEN jsonPivot::Impl
{
    Impl(JNIJSONObject& json, jobject object, const ProcedureDataSource* source,
         const dataDictionary& dictionary)
        : document(json), table(object), texts(source, dictionary)
    {
    }

    JNIJSONObject& document;
    jobject table;
    TextItems texts;
    PivotSettings settings;
    std::unique_ptr<TnPivotTable> pivot;
};

namespace {
CategoryFilter& filterOf(PivotSettings& settings, bool rows)
{
    return rows ? settings.rows : settings.columns;
}
} // namespace

jsonPivot::jsonPivot(JNIJSONObject& document, jobject& table, const ProcedureDataSource* source,
                     const dataDictionary& dictionary)
    : _impl(std::make_unique<Impl>(document, table, source, dictionary))
{
}

jsonPivot::~jsonPivot() = default;

void jsonPivot::setCaption(const std::string& caption)
{
    _impl->settings.caption = caption;
}

void jsonPivot::supportSplits(bool supports)
{
    _impl->settings.supportsSplits = supports;
}

void jsonPivot::translateTableStrings(bool translates)
{
    _impl->settings.translates = translates;
}

void jsonPivot::hideCategories(const std::vector<std::string>& categories, bool rows)
{
    filterOf(_impl->settings, rows).hidden = categories;
}

void jsonPivot::hideAllCategoriesExcept(const std::vector<std::string>& categories, bool rows)
{
    filterOf(_impl->settings, rows).shown = categories;
}

void jsonPivot::createPivotTable(TnHeading* heading, const std::string& outlineTitle,
                                 bool translate, const std::string& OMSSubType)
{
    if (heading == nullptr || !_impl->document.isJSONObject(_impl->table))
        return;
    const JsonImage image = JsonImage::of(_impl->document, _impl->table);
    PivotBuilder builder(image.root(), _impl->texts, _impl->settings);
    _impl->pivot = builder.build(*heading, outlineTitle, translate, OMSSubType);
}

bool jsonPivot::hasLostText() const
{
    return _impl->texts.hasLostText();
}

TnCellText* jsonPivot::getCellText(jobject item)
{
    const JsonImage image = JsonImage::of(_impl->document, item);
    return _impl->texts.cellTextOf(image.root(), _impl->settings.translates).release();
}
