// The drawing SDK's exceptions.
#pragma once

#include <stdexcept>
#include <string>

#include "drawing_sdk_export.h"

class OdRxClass;

/// Result codes of the SDK that this project uses.
enum OdResult : int {
  eOk = 0,
  eNotApplicable = 4,
  eInvalidInput = 5,
  eNotThatKindOfClass = 6,
  eNotOpenForRead = 80,
  eNotOpenForWrite = 81,
  eWasOpenForWrite = 82,
  eNullObjectId = 83,
  eNotInDatabase = 84,
  eWasErased = 85,
  eNoActiveTransaction = 86,
  eFileAccessErr = 90,
  eNotADrawing = 91,
  eNewerFormat = 92,
  eFileSharingViolation = 93,
  eWriteProtected = 94,
  eDiskFull = 95,
  eNullClass = 255
};

/// An error of the SDK: a code and one line of text that says what is wrong.
class DRAWING_SDK_EXPORT OdError : public std::runtime_error {
 public:
  /// With the code's own text.
  explicit OdError(OdResult code);
  OdError(OdResult code, const std::string& description);
  OdError(const OdError&) = default;
  OdError& operator=(const OdError&) = default;
  ~OdError() override;

  OdResult code() const { return errorCode; }

 private:
  OdResult errorCode;
};

/// An object isn't of the class that it was taken for.
class DRAWING_SDK_EXPORT OdError_NotThatKindOfClass : public OdError {
 public:
  OdError_NotThatKindOfClass(const OdRxClass* fromClass, const OdRxClass* toClass);
  OdError_NotThatKindOfClass(const OdError_NotThatKindOfClass&) = default;
  OdError_NotThatKindOfClass& operator=(const OdError_NotThatKindOfClass&) = default;
  ~OdError_NotThatKindOfClass() override;

  const OdRxClass* fromClass() const { return from; }
  const OdRxClass* toClass() const { return to; }

 private:
  const OdRxClass* from;
  const OdRxClass* to;
};
