// lxml/xmlpropvalue.cpp - the typed value of an XML property.
#include <lxml/xmlpropvalue.h>

namespace lxml {

XMLPropValMissedTypeException::XMLPropValMissedTypeException(char const* message, char const* file,
                                                             unsigned long long const& line)
    : lstd::Exception(message, file, line) {}
XMLPropValMissedTypeException::~XMLPropValMissedTypeException() {}

XMLPropValue::XMLPropValue() : mType(T_NONE), mStrValue() { mNumValue.mUInt64 = 0; }
XMLPropValue::~XMLPropValue() {}

void XMLPropValue::SetInt32Value(long const& value) {
    mNumValue.mInt32 = value;
    mType = T_INT32;
}
void XMLPropValue::SetUInt32Value(unsigned long const& value) {
    mNumValue.mUInt32 = value;
    mType = T_UINT32;
}
void XMLPropValue::SetInt64Value(long long const& value) {
    mNumValue.mInt64 = value;
    mType = T_INT64;
}
void XMLPropValue::SetUInt64Value(unsigned long long const& value) {
    mNumValue.mUInt64 = value;
    mType = T_UINT64;
}
void XMLPropValue::SetFloat32Value(float const& value) {
    mNumValue.mFloat32 = value;
    mType = T_FLOAT32;
}
void XMLPropValue::SetFloat64Value(double const& value) {
    mNumValue.mFloat64 = value;
    mType = T_FLOAT64;
}
void XMLPropValue::SetStringValue(lstd::String const& value) {
    mStrValue = value;  // may throw NotEnoughMemoryException; the kind is set only after it
    mType = T_STRING;
}

long const& XMLPropValue::GetInt32Value() const {
    if (mType != T_INT32)
        LSTD_THROW(XMLPropValMissedTypeException, "XML property value is not T_INT32 type.");
    return mNumValue.mInt32;
}
unsigned long const& XMLPropValue::GetUInt32Value() const {
    if (mType != T_UINT32)
        LSTD_THROW(XMLPropValMissedTypeException, "XML property value is not T_UINT32 type.");
    return mNumValue.mUInt32;
}
long long const& XMLPropValue::GetInt64Value() const {
    if (mType != T_INT64)
        LSTD_THROW(XMLPropValMissedTypeException, "XML property value is not T_INT64 type.");
    return mNumValue.mInt64;
}
unsigned long long const& XMLPropValue::GetUInt64Value() const {
    if (mType != T_UINT64)
        LSTD_THROW(XMLPropValMissedTypeException, "XML property value is not T_UINT64 type.");
    return mNumValue.mUInt64;
}
float const& XMLPropValue::GetFloat32Value() const {
    if (mType != T_FLOAT32)
        LSTD_THROW(XMLPropValMissedTypeException, "XML property value is not T_FLOAT32 type.");
    return mNumValue.mFloat32;
}
double const& XMLPropValue::GetFloat64Value() const {
    if (mType != T_FLOAT64)
        LSTD_THROW(XMLPropValMissedTypeException, "XML property value is not T_FLOAT64 type.");
    return mNumValue.mFloat64;
}
lstd::String const& XMLPropValue::GetStringValue() const {
    if (mType != T_STRING)
        LSTD_THROW(XMLPropValMissedTypeException, "XML property value is not String type.");
    return mStrValue;
}
}  // namespace lxml
