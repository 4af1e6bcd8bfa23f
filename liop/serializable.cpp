// liop/serializable.cpp - the marker interfaces and the do-nothing Serializable.
#include <liop/serializable.h>

#include <liop/inputstream.h>
#include <liop/iodevice.h>
#include <liop/ipersistence.h>
#include <liop/outputstream.h>

namespace liop {
IODevice::IODevice() {}
IODevice::~IODevice() {}

InputStream::InputStream() {}
InputStream::~InputStream() {}

OutputStream::OutputStream() {}
OutputStream::~OutputStream() {}

IPersistence::IPersistence() {}
IPersistence::~IPersistence() {}

ISerializable::ISerializable() {}
ISerializable::~ISerializable() {}

Serializable::Serializable() {}
Serializable::~Serializable() {}
void Serializable::WriteObject(OutputStream&) {}
void Serializable::ReadObject(InputStream&) {}
}  // namespace liop
