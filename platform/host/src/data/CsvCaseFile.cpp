#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <system_error>

#include "ErrorText.h"
#include "FileServices.h"
#include "data/CaseFileSource.h"
#include "data/DictionaryVariables.h"
#include "datafile/CsvProfile.h"
#include "datafile/FileDescriptor.h"
#include "datafile/FileTables.h"
#include "datafile/NativePath.h"
#include "datafile/SqlQuoting.h"
#include "text/CodePage.h"

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;

/// The file in UTF-8, in a file without a name. A character never lies across a line end, so whole
/// lines are converted.
std::shared_ptr<datafile::ScratchFile> inUtf8(const std::string& path, const CodePage& page)
{
    const datafile::FileDescriptor source(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source)
        throw ErrorText(path +
                        ": the file cannot be read: " + std::generic_category().message(errno));
    auto target = std::make_shared<datafile::ScratchFile>(
        datafile::nativePath(hostToUtf8(GetVexaTempPath())));
    const auto write = [&](const std::string& text) {
        std::string converted;
        if (!page.toUtf8(text, converted))
            throw ErrorText(path + ": the file is no text in " + page.name());
        if (!target->write(converted))
            throw ErrorText(
                path + ": no copy in UTF-8 can be made: " + std::generic_category().message(errno));
    };
    std::string pending;
    std::string block(kBlock, '\0');
    ssize_t got = 0;
    while ((got = source.readUpTo(block.data(), block.size())) > 0) {
        pending.append(block.data(), static_cast<std::size_t>(got));
        const std::size_t lines = pending.rfind('\n') + 1;
        write(pending.substr(0, lines));
        pending.erase(0, lines);
    }
    if (got < 0)
        throw ErrorText(path +
                        ": the file cannot be read: " + std::generic_category().message(errno));
    write(pending);
    target->rewind();
    return target;
}

VEXA_Variable variableOf(const datafile::CsvProfile& profile, std::size_t column)
{
    const CFField::StorageType storage = profile.storageOf(column);
    const int width = storage == CFField::String ? hostWidth(profile.longest(column)) : 0;
    VEXA_Variable variable(width);
    variable.SetName(utf8ToHost(profile.names()[column]));
    variable.SetFormat(formatOfStorage(storage, width));
    // A text that is not there can only be blank in a case.
    if (width > 0 && profile.hasGap(column))
        variable.SetMissingValues(std::vector<std::string>{" "});
    return variable;
}

} // namespace

CaseFileSource openCsv(const UserCaseFileSpec& spec, const std::string& path)
{
    auto relation = std::make_shared<Relation>();
    relation->name = path;
    std::string readable = path;
    CaseFileSource source;
    source.encoding = "UTF-8";
    if (!spec.GetCodePage().empty()) {
        const auto page = CodePage::open(spec.GetCodePage());
        if (!page)
            throw ErrorText("the encoding " + spec.GetCodePage() + " is not known");
        source.encoding = page->name();
        if (!page->isUtf8()) {
            relation->scratch = inUtf8(path, *page);
            readable = relation->scratch->path();
        }
    }
    datafile::CsvProfile profile(readable, spec.HasHeader());
    profile.measure();
    profile.read(UINT64_MAX);
    if (const auto& ragged = profile.ragged())
        throw ErrorText(path + ":" + std::to_string(ragged->line) + ": the record has " +
                        std::to_string(ragged->fields) + " fields, not " +
                        std::to_string(profile.names().size()));
    std::vector<VEXA_Variable> variables;
    datafile::Fields fields;
    for (std::size_t i = 0; i < profile.names().size(); ++i) {
        fields.emplace_back(profile.names()[i], CFField::Typeless, profile.storageOf(i));
        relation->columns.push_back(
            {datafile::quotedIdentifier(profile.names()[i]), profile.storageOf(i)});
        variables.push_back(variableOf(profile, i));
        source.integers.push_back(profile.storageOf(i) == CFField::Integer);
    }
    tellNamesApart(variables);
    relation->from = datafile::csvTable(readable, spec.HasHeader(), fields, "");
    source.caseCount = static_cast<long long>(profile.records());
    source.cases = std::make_unique<TableCases>(std::move(variables), std::move(relation));
    return source;
}
