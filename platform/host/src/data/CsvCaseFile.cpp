#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <system_error>

#include "FileServices.h"
#include "base/FileDescriptor.h"
#include "base/NativePath.h"
#include "data/CaseFileFault.h"
#include "data/CaseFileSource.h"
#include "data/CsvPlainCopy.h"
#include "data/DictionaryVariables.h"
#include "datafile/CsvProfile.h"
#include "datafile/Fault.h"
#include "datafile/FieldMetadata.h"
#include "datafile/FileTables.h"
#include "datafile/SqlQuoting.h"
#include "text/CodePage.h"

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;

/// Copies the file to UTF-8, in a file without a name.
class Utf8Copy
{
public:
    Utf8Copy(const UserCaseFileSpec& spec, const std::string& path, const CodePage& page)
        : _spec(spec), _path(path), _page(page),
          _target(std::make_shared<datafile::ScratchFile>(
              base::nativePath(hostToUtf8(GetVexaTempPath()))))
    {
    }

    /// Returns the copy, positioned at its start. Throws CaseFileError.
    std::shared_ptr<datafile::ScratchFile> make();

private:
    /// Appends complete lines.
    void write(std::string_view lines);
    [[noreturn]] void refuse(std::string_view lines) const;
    const UserCaseFileSpec& _spec;
    const std::string& _path;
    const CodePage& _page;
    std::shared_ptr<datafile::ScratchFile> _target;
    std::ptrdiff_t _lines = 0; ///< number of lines written
    std::string _converted;
};

/// Converts complete lines, because no character spans a line end.
std::shared_ptr<datafile::ScratchFile> Utf8Copy::make()
{
    const base::FileDescriptor source(open(_path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source)
        failToRead(_path);
    std::string pending;
    std::string block(kBlock, '\0');
    ssize_t got = 0;
    while ((got = source.readUpTo(block.data(), block.size())) > 0) {
        _spec.Look();
        pending.append(block.data(), static_cast<std::size_t>(got));
        const std::size_t lines = pending.rfind('\n') + 1;
        write(std::string_view(pending).substr(0, lines));
        pending.erase(0, lines);
    }
    if (got < 0)
        failToRead(_path);
    write(pending);
    _target->rewind();
    return std::move(_target);
}

void Utf8Copy::write(std::string_view lines)
{
    if (!_page.toUtf8(lines, _converted))
        refuse(lines);
    if (!_target->write(_converted))
        failToCopy(_path, "in UTF-8");
    _lines += std::count(lines.begin(), lines.end(), '\n');
}

/// Reports the line that cannot be converted.
void Utf8Copy::refuse(std::string_view lines) const
{
    std::ptrdiff_t line = _lines + 1;
    std::string converted;
    for (std::size_t end = lines.find('\n');
         end != std::string_view::npos && _page.toUtf8(lines.substr(0, end), converted);
         end = lines.find('\n')) {
        lines.remove_prefix(end + 1);
        ++line;
    }
    throw CaseFileError(_path,
                        ":" + std::to_string(line) + ": the file is not text in " + _page.name(),
                        CaseFileError::kNotInEncoding);
}

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
        const auto page = CodePage::open(spec.GetCodePage());
        if (!page)
            throw CaseFileError({}, "the encoding " + spec.GetCodePage() + " is not known",
                                CaseFileError::kUnknownEncoding);
        source.encoding = page->name();
        if (!page->isUtf8()) {
            relation->scratch = Utf8Copy(spec, path, *page).make();
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
    relation->from = datafile::csvTable(readable, spec.HasHeader(), source.fields, "");
    source.caseCount = static_cast<long long>(profile.records());
    relation->caseCount = source.caseCount;
    source.cases = std::make_unique<TableCases>(std::move(variables), std::move(relation));
    return source;
}
