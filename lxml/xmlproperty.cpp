// lxml/xmlproperty.cpp - a named, typed property of an XML node.
#include <lxml/xmlproperty.h>

#include <lxml/xml.h>

namespace lxml {

XMLProperty::XMLProperty(lstd::String const& name, lstd::String const& value)
    : lstd::String(name), mValue() {
    mValue.SetStringValue(value);
}
XMLProperty::~XMLProperty() {}

lstd::String XMLProperty::ToString() const { return XML::PropertyToString(*this); }

unsigned long XMLProperty::Hash(XMLProperty const* property) {
    return lstd::String::Hash(static_cast<lstd::String const*>(property));
}
}  // namespace lxml
