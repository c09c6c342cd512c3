#include "steps/JobContext.h"

#include <algorithm>

#include "Container.h"
#include "EngineFiles.h"
#include "ErrorIds.h"
#include "JobError.h"
#include "base/NativePath.h"

namespace EmbeddedHV {

std::string JobContext::inputPath(const std::string& text) const
{
    std::string path = files.resolve(text, containers);
    if (unwritten.contains(canonicalPath(path)))
        throw NotYetWritten{};
    return path;
}

double JobContext::readShare() const
{
    double sum = 0;
    for (const auto& [name, input] : iteratorInputs)
        sum += input.source->readShare();
    return iteratorInputs.empty() ? 0 : sum / static_cast<double>(iteratorInputs.size());
}

void JobContext::announce(const std::string& path, const std::string& step)
{
    const std::string canonical = canonicalPath(path);
    if (!announced.contains(canonical) && !mayReplace(path))
        throw JobError(errors::kFileUnwritable, {.step = step,
                                                 .file = path,
                                                 .kind = kinds::kFileExists,
                                                 .what = "the file exists already"});
    announced.insert(canonical);
    unwritten.insert(canonical);
}

/// The host provides the containers and knows which files they replace.
bool JobContext::mayReplace(const std::string& path) const
{
    const bool isContainer =
        std::any_of(containers.begin(), containers.end(), [&](const Container* container) {
            return canonicalPath(nativePath(container->getAbsolutePath())) == canonicalPath(path);
        });
    return mayReplaceFiles() || plansOnly || isContainer || files.isOwn(path) ||
           !dataFiles->exists(path);
}

void JobContext::require(Feature feature, const std::string& step) const
{
    constexpr const char* kReasons[] = {
        "maps are read and drawn in the process of the host",
        "a file is sealed in the process of the host",
    };
    if (!session->offers(feature))
        throw JobError(errors::kNotAvailable,
                       {.step = step,
                        .what = std::string("is not available on a cluster: ") +
                                kReasons[static_cast<std::size_t>(feature)] +
                                "; run the job on the embedded engine"});
}

NodePtr JobContext::localTable(Fields fields, const std::string& table) const
{
    NodePtr records = tableNode(localSession().dialect(), std::move(fields), table);
    records->isLocal = isRemote();
    return records;
}

std::string JobContext::newTable(const char* prefix)
{
    return tables.emplace_back(prefix + std::to_string(++tablesNamed));
}

void JobContext::dropTables(const std::set<std::string>& kept) noexcept
{
    std::erase_if(tables, [&](const std::string& table) {
        if (kept.contains(table))
            return false;
        try {
            session->dropTable(table, TableOwner::Job);
        } catch (const std::exception&) {
            return true; // it is dropped with the connection
        }
        return true;
    });
}

} // namespace EmbeddedHV
