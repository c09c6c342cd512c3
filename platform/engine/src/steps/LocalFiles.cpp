#include <sys/stat.h>

#include "datafile/InputFile.h"
#include "datafile/ParquetParts.h"
#include "steps/CsvRead.h"
#include "steps/DataFiles.h"
#include "steps/FileOutput.h"
#include "steps/ParquetRead.h"

namespace EmbeddedHV {
namespace {

class LocalFiles final : public DataFiles
{
public:
    bool exists(const std::string& path) const override
    {
        struct stat state = {};
        return stat(path.c_str(), &state) == 0;
    }
    void checkInput(const std::string& path, FileKind kind, const std::string& step) const override
    {
        if (kind == FileKind::Hvbf)
            checkParquetInput(path, step);
        else
            checkInputFile(path, step);
    }
    std::string document(const std::string& path, const std::string& step) const override
    {
        return readSmallFile(path, step);
    }
    NodePtr csv(JobContext& context, const CsvReadSettings& settings) const override
    {
        return planCsv(context, settings);
    }
    NodePtr parquet(JobContext& context, const ParquetReadSettings& settings) const override
    {
        return planParquet(context, settings);
    }
    NodePtr rows(JobContext&, RowSource& source) const override
    {
        auto node = std::make_shared<Node>();
        node->select = [select = "SELECT * FROM " + source.table()](
                           const std::vector<std::string>&) { return select; };
        return node;
    }
    WrittenFile fetched(JobContext&, const WrittenFile& file) const override { return file; }
    std::unique_ptr<Output> output(JobContext& context, const FileOutputSettings& settings,
                                   const Fields& fields) const override
    {
        return std::make_unique<FileOutput>(context, settings, fields, context.dialect);
    }
};

} // namespace

std::unique_ptr<const DataFiles> localFiles()
{
    return std::make_unique<LocalFiles>();
}

} // namespace EmbeddedHV
