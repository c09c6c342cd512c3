#pragma once

#include "runtime/FileSpace.h"
#include "spark/SparkSession.h"
#include "steps/DataFiles.h"

namespace EmbeddedHV {

/// The files of a job on the cluster. The workers read HVBF files and large CSV files and write
/// HVBF folders. A path without a scheme is one of a file system that the workers and this process
/// share, or a file of this process. This process reads SAV files, CSV files of moderate size and
/// what the workers do not see, and sends the records; it writes CSV and SAV files from records
/// that the cluster returns.
class SparkFiles final : public DataFiles
{
public:
    /// Borrows both.
    SparkFiles(SparkSession& session, const FileSpace& files) : _session(session), _files(files) {}
    SparkFiles(const SparkFiles&) = delete;
    SparkFiles& operator=(const SparkFiles&) = delete;
    ~SparkFiles() override;

    bool exists(const std::string& path) const override;
    void checkInput(const std::string& path, FileKind kind, const std::string& step) const override;
    std::string document(const std::string& path, const std::string& step) const override;
    NodePtr csv(JobContext& context, const CsvReadSettings& settings) const override;
    NodePtr parquet(JobContext& context, const ParquetReadSettings& settings) const override;
    NodePtr rows(JobContext& context, RowSource& source) const override;
    /// Streams a folder of the cluster into a scratch file.
    WrittenFile fetched(JobContext& context, const WrittenFile& file) const override;
    std::unique_ptr<Output> output(JobContext& context, const FileOutputSettings& settings,
                                   const Fields& fields) const override;
    std::unique_ptr<Stage> collection(JobContext& context, const std::string& step,
                                      const Fields& fields) const override;
    NodePtr sent(NodePtr local, const std::string& step) const override;

private:
    template <class Plan>
    NodePtr planned(JobContext& context, const std::string& name, Plan plan) const;
    JobContext& edge(const JobContext& context) const;
    std::string folderOf(const std::string& path) const;
    bool isSent(const std::string& path) const;
    bool isOnlyHere(const std::string& path) const;

    SparkSession& _session;
    const FileSpace& _files;
    /// What is known about the files that this process reads. Null until it reads one.
    mutable std::shared_ptr<JobContext> _edge;
};

} // namespace EmbeddedHV
