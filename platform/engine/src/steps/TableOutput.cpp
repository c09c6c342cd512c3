#include "steps/TableOutput.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/StorageWords.h"

namespace EmbeddedHV {

TableOutput::TableOutput(JobContext& context, std::string name, bool append, Fields fields)
    : _context(context), _name(std::move(name)), _fields(std::move(fields))
{
    const auto known = _context.dataSources.find(_name);
    _insert = append && known;
    if (_insert)
        checkFields(known->fields);
    _table = _insert ? known->table : _context.dataSources.newTable();
}

TableOutput::~TableOutput()
{
    if (_adding) {
        try {
            _context.session->undoAddition();
        } catch (const std::exception&) {
            // The database has already ended the transaction, or has no memory to do so.
        }
    }
    if (_unfinished)
        drop(_table);
}

void TableOutput::checkFields(const Fields& known) const
{
    const auto refuse = [this](const std::string& problem) {
        throw JobError(errors::kAppendMismatch,
                       {.step = "write",
                        .what = "the records cannot be appended to " + target() + ": " + problem});
    };
    const FieldIndex ours(_fields);
    const FieldIndex theirs(known);
    for (const CFField& field : known) {
        const auto place = ours.place(field.GetName());
        const CFField* offered = place ? &_fields[*place] : nullptr;
        if (!offered)
            refuse("they lack the field \"" + field.GetName() + "\"");
        if (offered->GetStorage() != field.GetStorage())
            refuse("the field \"" + field.GetName() + "\" is " + typeWordOf(offered->GetStorage()) +
                   ", not " + typeWordOf(field.GetStorage()));
    }
    for (const CFField& field : _fields)
        if (!theirs.place(field.GetName()))
            refuse("it has no field \"" + field.GetName() + "\"");
}

std::string TableOutput::statement(const std::string& select)
{
    Session& session = *_context.session;
    if (_insert) {
        std::string statement = session.beginAddition(_table, select);
        _adding = true;
        return statement;
    }
    _unfinished = true;
    return _context.dialect.newTable(session.tableName(_table, TableOwner::Service), select);
}

void TableOutput::endAddition()
{
    _adding = false;
    try {
        _context.session->endAddition();
    } catch (const StatementFault& error) {
        throw JobError(errors::kQueryFailed,
                       {.step = "write", .what = "the records cannot be added to " + target()},
                       error.what());
    }
}

void TableOutput::commit()
{
    _context.unwritten.erase(_name);
    if (_insert)
        return endAddition();
    const auto replaced = _context.dataSources.publish(_name, {_table, _fields});
    _unfinished = false;
    if (replaced)
        drop(replaced->table);
}

void TableOutput::drop(const std::string& table)
{
    try {
        _context.session->dropTable(table, TableOwner::Service);
    } catch (const std::exception&) {
        // Another job still reads it. The table has no name any more and is dropped with the
        // service.
        return;
    }
}

} // namespace EmbeddedHV
