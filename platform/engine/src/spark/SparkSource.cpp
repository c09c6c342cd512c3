#include "spark/SparkSource.h"

#include <utility>

#include "spark/SparkDialect.h"
#include "spark/SparkUpload.h"

namespace EmbeddedHV {
namespace {

/// Sends the records when a statement begins that needs them. The checks of the source run on the
/// embedded database meanwhile.
class SendingCheck final : public SourceCheck
{
public:
    SendingCheck(SparkSession& session, SentRecords records, std::string view)
        : _session(session), _records(std::move(records)), _view(std::move(view))
    {
    }

    void start(Cancellation& cancellation, const Progress& progress) override
    {
        if (_isSent)
            return;
        if (inner())
            inner()->start(cancellation, progress);
        try {
            send(cancellation, progress);
        } catch (const ClusterFault& fault) {
            throw statementFailure(statementFault(fault, url()));
        } catch (const JavaFailure& failure) {
            throw statementFailure(statementFault({ClusterFaultKind::Use, failure.what()}, url()));
        } catch (const StatementFault& fault) {
            if (_records.failure)
                if (const auto failure = _records.failure())
                    throw JobError(*failure);
            if (inner())
                inner()->abandon(fault);
            throw statementFailure(fault);
        }
        _isSent = true;
    }
    void finish(Session&, Reporter& reporter) override
    {
        if (inner() && !std::exchange(_isChecked, true))
            inner()->finish(edge(), reporter);
    }
    /// The check of the source may have stopped a statement on the cluster.
    void abandon(const StatementFault& fault) override
    {
        if (inner() && !_isChecked)
            inner()->abandon(fault);
    }

private:
    SourceCheck* inner() const { return _records.relation->check.get(); }
    Session& edge() const
    {
        return _records.context ? *_records.context->session : _session.edge();
    }
    const std::string& url() const;
    static JobError statementFailure(const StatementFault& fault)
    {
        return faultOf(fault, "read", {});
    }
    void send(Cancellation& cancellation, const Progress& progress)
    {
        SparkUpload upload(_session, _records.relation->fields, _view, _records.name);
        edge().stream(_records.relation->select({}), cancellation, progress,
                      [&](RecordBatch& batch) { upload.add(batch); });
        if (!cancellation.cancelled())
            upload.finish();
    }

    SparkSession& _session;
    SentRecords _records;
    std::string _view;
    bool _isSent = false;
    bool _isChecked = false;
};

const std::string& SendingCheck::url() const
{
    return _session.url();
}

} // namespace

NodePtr sentNode(SparkSession& session, SentRecords records)
{
    const std::string view = session.newView();
    auto node = std::make_shared<Node>();
    node->fields = records.relation->fields;
    node->select = [sql = "SELECT * FROM " + sparkDialect().name(view)](
                       const std::vector<std::string>&) { return sql; };
    node->check = std::make_shared<SendingCheck>(session, std::move(records), view);
    return node;
}

} // namespace EmbeddedHV
