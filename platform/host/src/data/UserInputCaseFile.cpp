#include <algorithm>
#include <system_error>

#include "UserCaseFile.h"
#include "base/NativePath.h"
#include "data/CaseFileFault.h"
#include "data/CaseFileSource.h"
#include "data/CaseText.h"
#include "datafile/InputFile.h"
#include "datafile/ParquetParts.h"
#include "text/CodePage.h"

namespace {

CaseFileSource openCaseFile(const UserCaseFileSpec& spec)
{
    const std::string path = base::nativePath(hostToUtf8(spec.GetName()));
    try {
        if (spec.GetKind() == CaseFileKind::Parquet)
            datafile::checkParquetInput(path, "");
        else
            datafile::checkInputFile(path, "");
        return spec.GetKind() == CaseFileKind::Csv ? openCsv(spec, path) : openParquet(spec, path);
    } catch (const datafile::Fault& fault) {
        throw errorTextOf(fault);
    } catch (const datafile::SealedFileError& error) {
        throw errorTextOf(path, error);
    } catch (const datafile::duck::QueryError& error) {
        throw errorTextOf(path, "the file cannot be read", error);
    } catch (const std::system_error& error) {
        throw CaseFileError(path, std::string(": the file cannot be read: ") + error.what());
    }
}

} // namespace

int hostWidth(std::size_t utf8Bytes)
{
    // Only GB18030 can need more bytes than UTF-8: four instead of two.
    const bool mayGrow = hostCodePage()->name() == "GB18030";
    return static_cast<int>(
        std::clamp<std::size_t>(mayGrow ? 2 * utf8Bytes : utf8Bytes, 1, kWidestText));
}

struct UserInputCaseFile::Impl
{
    CaseFileSource source;
    ProcedureDataSource* procedure = nullptr;
};

UserInputCaseFile::UserInputCaseFile(const UserCaseFileSpec& spec, ProcedureDataSource* procedure)
    : _impl(std::make_unique<Impl>())
{
    if (spec.GetName().empty() || spec.IsForOutput())
        return;
    _impl->source = openCaseFile(spec);
    _impl->source.cases->setMonitor(spec.GetMonitor());
    _impl->procedure = procedure;
    if (procedure)
        procedure->SetDataset(_impl->source.cases.get());
}

UserInputCaseFile::~UserInputCaseFile()
{
    if (_impl->procedure)
        _impl->procedure->SetDataset(nullptr);
}

const VEXA_DataSource* UserInputCaseFile::DataSource() const
{
    return _impl->source.cases.get();
}

long long UserInputCaseFile::CaseCount() const
{
    return _impl->source.caseCount;
}

const CFField& UserInputCaseFile::Field(int column) const
{
    if (column < 0 || static_cast<std::size_t>(column) >= _impl->source.fields.size())
        throw ErrorText("the file has no column " + std::to_string(column));
    return _impl->source.fields[static_cast<std::size_t>(column)];
}

const std::vector<std::string>& UserInputCaseFile::Documents() const
{
    return _impl->source.documents;
}

const std::string& UserInputCaseFile::Encoding() const
{
    return _impl->source.encoding;
}
