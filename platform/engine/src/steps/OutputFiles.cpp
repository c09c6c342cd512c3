#include "steps/OutputFiles.h"

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV {

OutputFiles::OutputFiles(const std::string& path, const std::string& modelPath,
                         const std::string& step)
    : _step(step), _data(path, step)
{
    if (modelPath.empty())
        return;
    if (canonicalPath(modelPath) == canonicalPath(path))
        throw JobError(
            errors::kSettingType,
            {.step = step,
             .what =
                 "\"dataDestination\" and \"dataModelDestination\" name the same file, " + path});
    _model.emplace(modelPath, step);
}

void OutputFiles::announce(JobContext& context) const
{
    context.announce(_data.destination(), _step);
    if (_model)
        context.announce(_model->destination(), _step);
}

void OutputFiles::commit(JobContext& context, const Fields& fields)
{
    if (_model)
        _model->write(dataModelOf(fields));
    // Compute these first: after the files have their final names, nothing may fail.
    const std::string dataName = canonicalPath(_data.destination());
    const std::string modelName = _model ? canonicalPath(_model->destination()) : std::string();
    // Both files are complete before either gets its final name.
    _data.commit();
    if (_model) {
        try {
            _model->commit();
        } catch (...) {
            _data.revoke();
            throw;
        }
        context.unwritten.erase(modelName);
    }
    context.unwritten.erase(dataName);
}

} // namespace EmbeddedHV
