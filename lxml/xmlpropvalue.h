// lxml/xmlpropvalue.h - the typed value of an XML property, and its wrong-kind exception.
#ifndef LXML_XMLPROPVALUE_H
#define LXML_XMLPROPVALUE_H

#include <lstd/exception.h>
#include <lstd/string.h>

#include <cstdint>

namespace lxml {

/// A value was read as a kind other than the one it holds.
class XMLPropValMissedTypeException : public lstd::Exception {
public:
    /// Reading a value as a kind it does not hold: message, file and line of the throw.
    XMLPropValMissedTypeException(char const* message, char const* file,
                                  unsigned long long const& line);
    virtual ~XMLPropValMissedTypeException();
};

/// One value of one of seven kinds: six numbers sharing one 64-bit slot, or a text. A setter
/// stores its value and makes its kind the current one; a numeric setter leaves the text as
/// it was and the text setter leaves the number. There is no conversion between kinds.
class XMLPropValue {
public:
    /// The kind held. The "32" kinds take the platform's long and unsigned long, 64 bits
    /// wide here; the names are kept as they are, since callers use them.
    enum XMLPropValueType : std::int32_t {
        T_NONE = 0,
        T_INT32 = 1,
        T_UINT32 = 2,
        T_INT64 = 3,
        T_UINT64 = 4,
        T_FLOAT32 = 5,
        T_FLOAT64 = 6,
        T_STRING = 7
    };

    /// Kind T_NONE, number 0, empty text.
    XMLPropValue();
    virtual ~XMLPropValue();

    /// The kind held (a reference to it).
    XMLPropValueType const& GetType() const { return mType; }

    /// Stores value and makes its kind the one held; a numeric setter keeps the text and
    /// SetStringValue keeps the number.
    ///@{
    void SetInt32Value(long const& value);
    void SetUInt32Value(unsigned long const& value);
    void SetInt64Value(long long const& value);
    void SetUInt64Value(unsigned long long const& value);
    void SetFloat32Value(float const& value);
    void SetFloat64Value(double const& value);
    void SetStringValue(lstd::String const& value);
    ///@}

    ///@{
    /// The stored value when its kind is held; otherwise each getter throws
    /// XMLPropValMissedTypeException "XML property value is not <kind> type." ("String type"
    /// for the text) and the value is untouched.
    long const& GetInt32Value() const;
    unsigned long const& GetUInt32Value() const;
    long long const& GetInt64Value() const;
    unsigned long long const& GetUInt64Value() const;
    float const& GetFloat32Value() const;
    double const& GetFloat64Value() const;
    lstd::String const& GetStringValue() const;
    ///@}

private:
    union NumValue {
        long mInt32;
        unsigned long mUInt32;
        long long mInt64;
        unsigned long long mUInt64;
        float mFloat32;
        double mFloat64;
    };

    XMLPropValueType mType;
    NumValue mNumValue;
    lstd::String mStrValue;
};
}  // namespace lxml
#endif  // LXML_XMLPROPVALUE_H
