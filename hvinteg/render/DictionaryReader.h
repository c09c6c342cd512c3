#pragma once

#include <jni.h>

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JsonValue.h"
#include "render/dataDictionary.h"

/// Fills a dictionary from the data model of a result document. Throws JNIException.
class DictionaryReader
{
public:
    /// `dataModel`, a Java object, is borrowed.
    DictionaryReader(dataDictionary& dictionary, jobject dataModel)
        : _dictionary(dictionary), _dataModel(dataModel)
    {
    }
    void read();

private:
    void readField(const JsonValue& json, int index);
    void readLabels(const JsonValue& json, int index, dataField& field);
    std::string labelText(const JsonValue& label, int fieldIndex, int labelIndex);

    dataDictionary& _dictionary;
    jobject _dataModel;
    JNIJSONObject _object{nullptr};
    JNIJSONArray _array{static_cast<const char*>(nullptr)};
};
