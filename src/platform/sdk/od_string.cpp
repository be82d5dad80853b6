#include "platform/sdk/od_string.h"

#include <utility>

OdString::OdString(const wchar_t* text) : wide(text ? text : L"") {}
OdString::OdString(std::wstring text) : wide(std::move(text)) {}
OdString::OdString(const char* bytes, OdCodePageId codePage) : wide(odToWide(bytes ? bytes : "", codePage)) {}
OdString::OdString(const std::string& bytes, OdCodePageId codePage) : wide(odToWide(bytes, codePage)) {}

OdString& OdString::operator=(const wchar_t* text) { return *this = OdString(text); }
OdString& OdString::operator=(const char* bytes) { return *this = OdString(bytes); }
OdString& OdString::operator=(const std::string& bytes) { return *this = OdString(bytes); }

std::string OdString::narrow() const { return odToNarrow(wide); }
