#include "geo/PointJobs.h"

#include <array>

#include "CFMetaData.h"
#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlProgram.h"
#include "data/HVRawDataIterator.h"
#include "geo/CoordinateSystem.h"
#include "geo/MapExport.h"
#include "hvl/ComposedJob.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLReprojection.h"
#include "hvl/HVLUpdateDataModel.h"
#include "support/HVSimpleFile.h"

namespace {

using EmbeddedHV::RowDataIterator;

constexpr const char* kPoint = "pointCoord"; ///< the field with the list of coordinates

/// One limit of the envelope, as a field of the job that computes it.
struct Limit
{
    const char* name;
    const char* function;
    bool isOfX;
};

/// In the order of an envelope.
constexpr std::array<Limit, kEnvelopeSize> kLimits{{{"leftUpperX", "min", true},
                                                    {"leftUpperY", "max", false},
                                                    {"rightLowerX", "max", true},
                                                    {"rightLowerY", "min", false}}};

/// An expression for the coordinates of a record as a list.
JNIHvlExpression* pointOf(JNIHvlProgram& program, const std::vector<std::string>& fields)
{
    std::string pattern = "[";
    std::vector<JNIHvlExpression*> references;
    for (const std::string& field : fields) {
        references.push_back(program.createHvlExpressionFieldReference(field));
        pattern += references.size() < fields.size() ? "%s," : "%s]";
    }
    return program.createHvlExpression(pattern, &references);
}

/// Declares the list of coordinates as a point with the given envelope.
void describePoint(HVLUpdateDataModel& update, int dimensions, const CoordinateSystem* system,
                   const std::vector<double>& envelope)
{
    if (system == nullptr)
        update.Update(kPoint, CFGeo::Point, dimensions);
    else
        update.Update(kPoint, CFGeo::Point, dimensions, system->wkid, system->name,
                      system->isProjected, system->wkt, envelope[0], envelope[1], envelope[2],
                      envelope[3]);
}

} // namespace

std::string envelopeJob(HVRawDataIterator& iterator, const std::string& xField,
                        const std::string& yField, const HVSimpleFile& data,
                        const HVSimpleFile& model)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadIterator(iterator);
    HVLAggregate aggregate(&program);
    for (const Limit& limit : kLimits)
        aggregate.AddAggregate(limit.function, limit.isOfX ? xField : yField, limit.name);
    aggregate.AddPredFunction(&read);
    HVLWrite write(&program);
    write.SetDataModel(model.GetFileName());
    write.WriteCSV(data.GetFileName());
    write.AddPredFunction(&aggregate);
    return composedJob(program, write);
}

namespace {

/// Reads a number of the current record into `value`; leaves it unchanged if the number is missing.
void takeNumber(RowDataIterator& rows, const CFMetaData& model, const char* name, double& value)
{
    const int index = model.GetFieldIndex(name);
    if (index < 0 ||
        model.GetField(static_cast<std::size_t>(index))->GetStorage() == CFField::String)
        return;
    void* data = nullptr;
    unsigned long long length = 0;
    if (rows.getRecordValue(static_cast<unsigned long long>(index), data, length) ==
            RowDataIterator::RecordAvailable &&
        data != nullptr)
        value = *static_cast<const double*>(data);
}

} // namespace

std::vector<double> envelopeOf(RowDataIterator& rows)
{
    const CFMetaData model(rows.getDataModel());
    std::vector<double> envelope(kLimits.size(), 0.0);
    if (rows.nextRecord() == RowDataIterator::RecordAvailable)
        for (std::size_t i = 0; i < kLimits.size(); ++i)
            takeNumber(rows, model, kLimits[i].name, envelope[i]);
    return envelope;
}

std::string pointJob(HVRawDataIterator& iterator, const std::vector<std::string>& fields,
                     const CoordinateSystem* from, const CoordinateSystem& to,
                     const std::vector<double>& envelope, const MapExport& order)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadIterator(iterator);
    HVLExpressionFun derive(&program);
    derive.SetDeriveField(kPoint, pointOf(program, fields));
    derive.AddPredFunction(&read);
    HVLUpdateDataModel update(&program);
    describePoint(update, static_cast<int>(fields.size()), from, envelope);
    update.AddPredFunction(&derive);
    HVLReprojection reprojection(&program);
    HVLWrite write(&program);
    order.applyTo(write);
    if (from != nullptr && !to.name.empty()) {
        reprojection.SetOriCoorSystem(from->name);
        reprojection.SetDesCoorSystem(to.name);
        reprojection.AddPredFunction(&update);
        write.AddPredFunction(&reprojection);
    } else {
        write.AddPredFunction(&update);
    }
    return composedJob(program, write);
}
