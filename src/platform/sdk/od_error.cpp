#include "platform/sdk/od_error.h"

#include "platform/sdk/od_code_page.h"
#include "platform/sdk/od_rx_object.h"

namespace {

const char* textOf(OdResult code) {
  switch (code) {
    case eOk:
      return "No error";
    case eNotApplicable:
      return "The operation does not apply to this object";
    case eInvalidInput:
      return "An argument is not valid";
    case eNotThatKindOfClass:
      return "The object is of another class";
    case eNotOpenForRead:
      return "The object is not open for reading";
    case eNotOpenForWrite:
      return "The object is not open for writing";
    case eWasOpenForWrite:
      return "The object is open for writing already";
    case eNullObjectId:
      return "The object id is null";
    case eNotInDatabase:
      return "The object is not in a drawing that is open";
    case eWasErased:
      return "The object has been erased";
    case eNoActiveTransaction:
      return "No transaction is running";
    case eFileAccessErr:
      return "The file cannot be read or written";
    case eNotADrawing:
      return "The file is not a drawing";
    case eNewerFormat:
      return "The drawing was written by a newer version";
    case eFileSharingViolation:
      return "The file is in use by another process";
    case eWriteProtected:
      return "The drawing is open for reading only";
    case eDiskFull:
      return "The disk is full";
    case eNullClass:
      return "The class is not registered";
  }
  return "Unknown error";
}

std::string nameOf(const OdRxClass* type) { return type ? odToNarrow(type->name()) : "(no class)"; }

}  // namespace

OdError::OdError(OdResult code) : std::runtime_error(textOf(code)), errorCode(code) {}
OdError::OdError(OdResult code, const std::string& description) : std::runtime_error(description), errorCode(code) {}
OdError::~OdError() = default;

OdError_NotThatKindOfClass::OdError_NotThatKindOfClass(const OdRxClass* fromClass, const OdRxClass* toClass)
    : OdError(eNotThatKindOfClass,
              "An object of class " + nameOf(fromClass) + " is not one of class " + nameOf(toClass)),
      from(fromClass),
      to(toClass) {}
OdError_NotThatKindOfClass::~OdError_NotThatKindOfClass() = default;
