#include "data/CaseFileFault.h"
#include "data/CaseFileSource.h"
#include "data/CsvPlainCopy.h"
#include "data/DictionaryVariables.h"
#include "data/Utf8Copy.h"
#include "datafile/CsvProfile.h"
#include "datafile/Fault.h"
#include "datafile/FieldMetadata.h"
#include "datafile/FileTables.h"
#include "datafile/SqlQuoting.h"

namespace {

/// A variable with the narrowest type of the column; a text has the width of its longest value.
VEXA_Variable variableOf(const datafile::CsvProfile& profile, std::size_t column)
{
    const CFField::StorageType storage = profile.storageOf(column);
    const int width = storage == CFField::String ? hostWidth(profile.longest(column)) : 0;
    VEXA_Variable variable(width);
    variable.SetName(utf8ToHost(profile.names()[column]));
    variable.SetFormat(formatOfStorage(storage, width));
    // A missing text can only be blank in a case.
    if (width > 0 && profile.hasGap(column))
        variable.SetMissingValues(std::vector<std::string>{" "});
    return variable;
}

/// Analyses the records of `readable`; problems are reported for `path`.
datafile::CsvProfile profileOf(const std::string& readable, const std::string& path,
                               const UserCaseFileSpec& spec)
try {
    datafile::CsvProfile profile(readable, spec.HasHeader());
    profile.measure();
    profile.read(UINT64_MAX, [&] {
        spec.Look();
        return !profile.flaw();
    });
    if (std::optional<datafile::CsvFlaw> flaw = profile.flaw()) {
        // In a copy with commas the position in the line may differ.
        if (!spec.GetCsvForm().isPlain())
            flaw->column = 0;
        throw faultOf(*flaw, path);
    }
    return profile;
} catch (const datafile::Fault& fault) {
    // Users know the file by its own name, not by that of its copy.
    datafile::FaultParts parts = fault.parts();
    parts.file = path;
    throw datafile::Fault(fault.id(), std::move(parts), fault.detail());
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
        const auto page = codePageOfFile(spec.GetCodePage());
        source.encoding = page->name();
        if (!page->isUtf8()) {
            relation->scratch = utf8Copy(path, *page, [&spec] { spec.Look(); });
            readable = relation->scratch->path();
        }
    }
    if (!spec.GetCsvForm().isPlain()) {
        relation->scratch = plainCopy(readable, path, spec);
        readable = relation->scratch->path();
    }
    const datafile::CsvProfile profile = profileOf(readable, path, spec);
    std::vector<VEXA_Variable> variables;
    for (std::size_t i = 0; i < profile.names().size(); ++i) {
        source.fields.push_back(datafile::plainField(profile.names()[i], profile.storageOf(i)));
        relation->columns.push_back(
            {datafile::quotedIdentifier(profile.names()[i]), profile.storageOf(i)});
        variables.push_back(variableOf(profile, i));
    }
    tellNamesApart(variables);
    relation->from = datafile::csvTable(
        readable, spec.HasHeader(), source.fields,
        {.hasLongRecords = profile.hasLongRecord(), .inOneThread = profile.hasQuotes()});
    source.caseCount = static_cast<long long>(profile.records());
    relation->caseCount = source.caseCount;
    source.cases = std::make_unique<TableCases>(std::move(variables), std::move(relation));
    return source;
}
