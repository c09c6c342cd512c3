#include "spark/SparkCollection.h"

#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "duckdb/DuckDialect.h"
#include "spark/PipedWriter.h"
#include "spark/SparkEngine.h"
#include "spark/SparkOutputs.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kValueBytes = 8;

bool isText(const CFField& field)
{
    return field.GetStorage() == CFField::String || field.GetStorage() == CFField::Unknown;
}

class CollectedRecords final : public Stage
{
public:
    CollectedRecords(SparkSession& session, JobContext& context, std::string step, Fields fields)
        : _session(session), _context(context), _step(std::move(step)), _fields(std::move(fields)),
          _table(context.newTable("hv_collected_")),
          _writer(session, _fields, *context.cancellation)
    {
    }

    std::string target() const override { return "the records for " + _step; }
    std::string statement(const std::string& select) override
    {
        return typedSelect(_fields, select);
    }
    bool takesRecords() const override { return true; }
    void take(RecordBatch& batch) override
    {
        countBytes(batch);
        start();
        _writer.put(batch);
    }
    void commit() override
    {
        start();
        try {
            _writer.finish();
        } catch (const StatementFault& fault) {
            throw faultOf(fault, _step, target());
        }
        _records = _context.localTable(_fields, _table);
    }
    NodePtr records() override { return _records; }

private:
    /// Not before the first batch: until then the edge session may still read what is sent to the
    /// cluster.
    void start()
    {
        if (std::exchange(_isStarted, true))
            return;
        DuckSession& edge = _session.edge();
        _writer.start(duckDialect().newTemporaryTable(edge.tableName(_table, TableOwner::Job),
                                                      _writer.select()),
                      "collects " + target(), &edge);
    }
    void countBytes(const RecordBatch& batch)
    {
        for (std::size_t i = 0; i < _fields.size(); ++i) {
            _bytes += static_cast<std::int64_t>(batch.rows() * kValueBytes);
            if (!isText(_fields[i]))
                continue;
            const BatchColumn texts = batch.column(i);
            for (std::size_t row = 0; row < batch.rows(); ++row)
                if (!texts.isMissing(row))
                    _bytes += static_cast<std::int64_t>(texts.textAt(row).size());
        }
        const std::int64_t most = _session.engine().settings().collectBytes;
        if (_bytes > most)
            throw JobError(errors::kTooMuchToCollect,
                           {.step = _step,
                            .limit = most,
                            .what = "the cluster's records for the step have more than " +
                                    std::to_string(most) +
                                    " bytes, which the setting \"engine.collect.bytes\" allows to "
                                    "collect; aggregate or sample the records before the step, or "
                                    "raise the setting"});
    }

    SparkSession& _session;
    JobContext& _context;
    std::string _step;
    Fields _fields;
    std::string _table;
    PipedWriter _writer; ///< ends before what it borrows
    bool _isStarted = false;
    std::int64_t _bytes = 0;
    NodePtr _records;
};

} // namespace

std::unique_ptr<Stage> collectedRecords(SparkSession& session, JobContext& context,
                                        const std::string& step, const Fields& fields)
{
    return std::make_unique<CollectedRecords>(session, context, step, fields);
}

} // namespace EmbeddedHV
